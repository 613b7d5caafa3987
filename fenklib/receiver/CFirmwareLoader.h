#pragma once
#include <cstdint>
#include <functional>

#include "fenklib/receiver/CVokReceiverMateCore.h"
#include "platform/devio/firmware/CFirmwareImageFile.h"
#include "platform/devio/ymodem/YmodemTransfer.h"

namespace devio {

class CReceiverByteStream;

// Loads a firmware image into a receiver: reads who is there, switches the running firmware
// into its boot loader ("init,/dev/boot"), sends the image over the same link with YMODEM,
// waits for the loader to check it and restart, reconnects when the restart took the link
// down, and reads the new version ("print,rcv/ver/main"). Runs on a worker; the abort event
// stops it between blocks.
//
// Whatever fails after the loader was entered, the receiver keeps its old firmware and waits in
// its loader; Probe() then reports it there and Upload() starts again from the transfer.
class CFirmwareLoader {
public:
    enum class EStage { Probing, EnteringLoader, Sending, Restarting, Done };
    // stage, and within Sending the bytes of the image sent and in all.
    using Progress = std::function<void(EStage stage, std::uint64_t done, std::uint64_t total)>;
    // A new receiver object over the same link, once the old one lost it; null when it cannot
    // be opened yet.
    using Reopen = std::function<CSmartPtr<IReceiver>()>;

    struct RECEIVER_STATE {
        bool inLoader = false;   // a boot loader asks for an image; model and version unknown
        ustring model;
        ustring version;
    };
    struct TIMING {
        unsigned probeMs = 3000;      // for an answer or a loader's request (it asks once a second)
        unsigned restartMs = 30000;   // from the end of the transfer to the first answer
        unsigned answerMs = 1000;     // for each question while the receiver restarts
        YMODEM_TIMING ymodem;
    };

    CFirmwareLoader(CSmartPtr<IReceiver> receiver, basekit::CEvent* abort, Reopen reopen = {});
    void SetTiming(const TIMING& timing) { m_timing = timing; }
    void SetProgress(Progress progress) { m_progress = std::move(progress); }

    RECEIVER_STATE Probe();
    // The whole load; gives the version the receiver runs afterwards. An image for another
    // model than a running receiver's is refused before anything is sent.
    ustring Upload(const FIRMWARE_IMAGE& image);

    // The steps, for callers that take them one by one.
    void EnterLoader();
    // Sends image bytes as they are: the loader checks them itself.
    void SendImage(const std::string& name, std::string_view bytes);
    ustring WaitForRestart();

    // The receiver now in use: another object than the one given after a reconnect.
    const CSmartPtr<IReceiver>& Receiver() const { return m_receiver; }
    // Bytes that crossed the line in the last transfer, YMODEM framing and repeats included.
    std::uint64_t WireBytes() const { return m_wireBytes; }

    // The file name the image travels under in block 0.
    static std::string TransferName(const firmware::FIRMWARE_IMAGE_INFO& info);

private:
    void Report(EStage stage, std::uint64_t done = 0, std::uint64_t total = 0) const;
    bool ReopenLink();
    void Send(CReceiverByteStream& stream, const std::string& name, std::string_view bytes);

    CSmartPtr<IReceiver> m_receiver;
    basekit::CEvent* m_abort;
    Reopen m_reopen;
    TIMING m_timing;
    Progress m_progress;
    std::uint64_t m_wireBytes = 0;
};

}  // namespace devio
