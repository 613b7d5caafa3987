#pragma once
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/basekit/CEvent.h"
#include "platform/basekit/CWinException.h"
#include "platform/devio/ymodem/CYmodemReceiveMachine.h"
#include "platform/devio/ymodem/IByteStream.h"

namespace devio {

// How long each end waits and how often it tries again.
struct YMODEM_TIMING {
    unsigned startTimeoutMs = 60000;    // for the other end to begin
    unsigned answerTimeoutMs = 10000;   // for the answer to a block, or for a whole block
    unsigned maxTries = 10;             // sends of one block (errors in a row, receiving)

    // Answers take at least twice a long block's time on the wire at this rate, plus two
    // seconds for the far end to act.
    static YMODEM_TIMING ForLineRate(unsigned bitsPerSecond);
};

// Why a transfer ended early. The exception's code says the same coarsely (1223 cancelled,
// 1460 no answer, 1236 link lost, 13 refused).
enum class EYmodemFailure {
    NoStart,          // the other end never began
    NoAnswer,         // a block was not answered within the tries
    Rejected,         // a block was refused (NAK) on every try: a noisy line
    PeerCancelled,    // the other end sent CAN CAN
    FileRefused,      // the receiver refused the whole file at its end
    Cancelled,        // our abort event
    LinkLost,
    TooManyErrors,    // receiving: bad blocks or silence in a row
    OutOfSequence,    // receiving
    TooLarge,         // receiving
};

class CYmodemException : public basekit::CWinException {
public:
    CYmodemException(int line, EYmodemFailure failure, basekit::ustring text);
    EYmodemFailure Failure() const { return m_failure; }

private:
    EYmodemFailure m_failure;
};

using YmodemProgress = std::function<void(std::uint64_t done, std::uint64_t total)>;

// Sends one file as a YMODEM batch: block 0 with name and size, 1024-byte blocks (a short tail
// goes in a 128-byte one), the EOT handshake, the empty block 0. The abort event is looked at
// between blocks: a cancel sends CAN CAN, then throws 1223.
class CYmodemSender {
public:
    CYmodemSender(IByteStream& stream, YMODEM_TIMING timing = {}, const basekit::CEvent* abort = nullptr)
        : m_stream(stream), m_timing(timing), m_abort(abort) {}
    void SetProgress(YmodemProgress progress) { m_progress = std::move(progress); }
    // Throws CYmodemException.
    void Send(const std::string& name, std::string_view data);
    // Bytes written, framing and repeats included.
    std::uint64_t WireBytes() const { return m_wireBytes; }
    std::uint64_t Repeats() const { return m_repeats; }

private:
    enum class EAnswer { Ack, Nak, Request, Timeout };
    void WaitForRequest(unsigned timeoutMs, std::uint64_t block);
    void Deliver(std::uint64_t block, const std::string& frame);
    void FinishFile(std::uint64_t block);
    EAnswer ReadAnswer(unsigned timeoutMs, std::uint64_t block);
    EAnswer AnswerTo(std::uint64_t block);
    void Purge();
    void Write(std::string_view bytes, std::uint64_t block);
    void CheckAbort(std::uint64_t done, std::uint64_t total);
    [[noreturn]] void Throw(int line, EYmodemFailure failure, basekit::ustring text);

    IByteStream& m_stream;
    const YMODEM_TIMING m_timing;
    const basekit::CEvent* m_abort;
    YmodemProgress m_progress;
    std::uint64_t m_wireBytes = 0;
    std::uint64_t m_repeats = 0;
    bool m_lastWasCan = false;
};

// Receives a YMODEM batch (1024- and 128-byte blocks, CRC-16). The abort event is looked at
// between blocks: a cancel sends CAN CAN, then throws 1223.
class CYmodemReceiver {
public:
    struct RECEIVED_FILE {
        std::string name;
        std::string data;
    };
    CYmodemReceiver(IByteStream& stream, YMODEM_TIMING timing = {}, const basekit::CEvent* abort = nullptr,
                    ymodem::CYmodemReceiveMachine::LIMITS limits = {})
        : m_stream(stream), m_timing(timing), m_abort(abort), m_limits(limits) {}
    void SetProgress(YmodemProgress progress) { m_progress = std::move(progress); }
    // The files of the batch; throws CYmodemException.
    std::vector<RECEIVED_FILE> Receive();

private:
    void Write(std::string_view bytes);

    IByteStream& m_stream;
    const YMODEM_TIMING m_timing;
    const basekit::CEvent* m_abort;
    const ymodem::CYmodemReceiveMachine::LIMITS m_limits;
    YmodemProgress m_progress;
};

}  // namespace devio
