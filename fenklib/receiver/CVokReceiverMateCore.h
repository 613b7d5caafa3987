#pragma once
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "fenklib/receiver/CReceiverEnumWrapper.h"
#include "fenklib/receiver/ParamCatalogue.h"
#include "fenklib/receiver/VokTypes.h"
#include "platform/basekit/CCommException.h"
#include "platform/basekit/CEvent.h"
#include "platform/basekit/CWinException.h"
#include "platform/devio/IReceiver.h"

namespace devio {

using basekit::ustring;

// The command layer over an open receiver: formats a command, issues it, waits with a time-out
// derived from the line rate (or until the abort event), and turns failures into exceptions:
// basekit::CCommException for error replies, basekit::CWinException for everything else.
class CVokReceiverMateCore {
public:
    CVokReceiverMateCore(CSmartPtr<IReceiver> receiver, basekit::CEvent* abortEvent);
    explicit CVokReceiverMateCore(CSmartPtr<IReceiver> receiver);
    CVokReceiverMateCore(const CVokReceiverMateCore&) = delete;
    CVokReceiverMateCore& operator=(const CVokReceiverMateCore&) = delete;
    virtual ~CVokReceiverMateCore() = default;

    // One command and its reply. timeoutMs 0 takes GetCommandTimeout(1000).
    ustring ExecuteCommand(const ustring& command, bool trimReply = false, unsigned timeoutMs = 0,
                           bool sendFlag = true, bool sendOption = false);

    void UpdateBaudRate();
    unsigned LineRate() const { return m_lineRate; }
    unsigned GetCommandTimeout(unsigned bytes) const;
    static unsigned CalcTransferTime(unsigned lineRate, unsigned bytes);
    basekit::CEvent& AbortEvent() const { return *m_abort; }
    const CSmartPtr<IReceiver>& Receiver() const { return m_receiver; }

    void SendRawString(const ustring& text);

    // Reply functions.
    static bool ExtractBracedText(const ustring& reply, bool keepBraces, ustring& out);
    static void SplitTopLevelList(const ustring& text, std::vector<ustring>& list);
    static ustring FormatOnOff(bool on) { return on ? L"on" : L"off"; }
    static bool ParseOnOff(const ustring& reply) { return reply.find(L"on") != ustring::npos; }

    vok::EDev GetCurrentTerminal();
    // Who answers at this link: model, serial number and main firmware, each waited for at most
    // timeoutMs (a host's probe on connect must not wait for a dead line's full time-out).
    void Identify(unsigned timeoutMs, ustring& model, ustring& serial, ustring& firmware);
    void InitParameters();
    void InitNvram();
    void ResetReceiver();
    bool IsExtFamilyModel();

    // The catalogue's alike rows: Get(par::RcvModel), Set(par::LogRotMode, true),
    // Get(par::PortRate, vok::DEV_SER_A) ...
    template <typename Conv, typename... Args>
    typename Conv::Value Get(const Param<Conv>& param, const Args&... args) {
        const ustring reply = ExecuteCommand(L"print," + param.Path(args...), Conv::kTrim);
        return Conv::Parse(reply);
    }
    template <typename Conv, typename... Args>
    void Set(const Param<Conv>& param, const typename Conv::Value& value, const Args&... args) {
        ExecuteCommand(L"set," + param.Path(args...) + L"," + Conv::Format(value));
    }

    // An enumeration row read as its exact member: nothing for a keyword outside the table or
    // an error reply, so a window can leave its choice empty.
    template <typename E, typename... Args>
    std::optional<E> GetMember(const Param<conv::Enum<E>>& param, const Args&... args) {
        try {
            return vok::MemberOf<E>(ExecuteCommand(L"print," + param.Path(args...), true));
        } catch (const basekit::CCommException&) {
            return std::nullopt;
        }
    }

    template <typename... Args>
    void Do(const Action& action, const Args&... args) {
        if constexpr (sizeof...(Args) == 0) ExecuteCommand(action.command);
        else ExecuteCommand(ustring::Format(action.command, conv::Arg(args)...));
    }

    // Catalogue rows with a shape of their own (CVokReceiverMateCatalogue.cpp).
    ustring GetPowerBoardFirmware();
    std::vector<ustring> GetPowerSwitches();
    // The numbers of the power switches the receiver has, from the same listing.
    std::vector<int> ListPowerSwitches();
    // The ports with an output elevation mask: the serial, USB, TCP and modem ports listed.
    std::vector<vok::EDev> ListOutputPorts();
    // The reply of a receiver that does not know the parameter at all (an extension-board
    // group on a receiver without the board).
    static bool IsUnknownParameter(const basekit::CCommException& e);
    // The escape text that takes the Bluetooth module out of its data mode, written raw.
    void SendBluetoothEscape();
    std::vector<vok::SAT_LOCK> GetSatLocks(const ustring& system);        // "waas" or "qzss"
    void SetSatLocks(const ustring& system, const std::vector<vok::SAT_LOCK>& locks);
    bool GetGpsL5Lock();
    void SetGpsL5Lock(bool on);
    void GetLogImp(bool& first, bool& second);
    void SetLogImp(bool first, bool second);
    ustring GetCurrentFile(wchar_t channel);                              // L'a' or L'b'
    void SetCurrentFile(wchar_t channel, const ustring& name);
    std::vector<int> GetFsInitState();
    ustring GetFileList(unsigned timeoutMs);
    // The same list taken apart, oldest first as the receiver gives it; a malformed entry is skipped.
    std::vector<vok::LOG_FILE> ListLogFiles(unsigned timeoutMs);
    static std::vector<vok::LOG_FILE> ParseFileList(const ustring& reply);
    // The receiver's complete settings listing: the parameter dump, then the flash block count
    // and block size listings, joined by CR LF (always, even around an empty reply).
    // onReply(bytes so far, replies so far, replies in all) after each reply.
    ustring ReadSettingsListing(const std::function<void(std::uint64_t, int, int)>& onReply = {});
    // A receiver file read in blocks (file copies): its size, and length bytes from offset.
    std::uint64_t GetFileSize(const ustring& path);
    std::string ReadFileBlock(const ustring& path, std::uint64_t offset, std::uint64_t length);
    // A receiver file written in blocks (uploads): each block at its offset, then the size check
    // that makes the whole file appear at once; a cancelled upload discards its staged blocks.
    void WriteFileBlock(const ustring& path, std::uint64_t offset, std::string_view bytes);
    void CommitFileUpload(const ustring& path, std::uint64_t size);
    void DiscardFileUpload(const ustring& path);
    void SetReferencePosition(const wchar_t* which, const vok::POS_GEO& pos);   // which: "arp" or "pos"
    void SetReferencePosition(const wchar_t* which, const vok::POS_XYZ& pos);
    vok::POS_GEO GetReferenceGeo(const wchar_t* which);
    vok::POS_XYZ GetReferenceXyz(const wchar_t* which);
    void SetCurrentPointPosition(const wchar_t* which, const vok::POS_GEO& pos);
    void SetCurrentPointPosition(const wchar_t* which, const vok::POS_XYZ& pos);
    vok::POS_GEO GetCurrentPointGeo(const wchar_t* which);
    vok::POS_XYZ GetCurrentPointXyz(const wchar_t* which);
    vok::POS_GEO GetStoredPointGeo(int index, const wchar_t* which);
    vok::POS_XYZ GetStoredPointXyz(int index, const wchar_t* which);
    void SetSerialParameters(vok::EDev port, vok::EBaudRate rate, vok::ERtsControl rts, vok::EStopBits stops,
                             vok::EParity parity, vok::EByteSize bits);
    std::vector<ustring> GetPortScriptList(vok::EDev port, const wchar_t* which);   // "scripts" or "profiles"
    std::vector<ustring> GetPortScriptList(vok::ECom port, const wchar_t* which);
    ustring GetScriptVariableName(const ustring& port, int index);
    void SendEvent(const ustring& name, const ustring& value);
    std::vector<vok::EDev> ListPorts(const ustring& portClass);
    std::vector<vok::ECom> ListScriptPorts();   // the "com" class, each port once
    std::vector<ustring> ListParameterNames(const ustring& portClass);
    std::vector<ustring> ListAntennaIds();
    std::vector<ustring> ListMessages(const ustring& group);                // "def", "nmea", ...
    void EnableMessages(vok::EDev port, const ustring& list);
    void EnableMessage(vok::EDev port, const vok::MSG& msg);
    void DisableMessages(vok::EDev port);
    std::vector<vok::MSG> GetPortMessages(vok::EDev port);
    // A port's whole output list: "dm" for the port, then one "em" per message in list order.
    void SetPortMessages(vok::EDev port, const std::vector<vok::MSG>& messages);
    // The messages a live view reads (position, DOPs, satellites, time, errors, data links) at
    // 1 Hz, unless the port already outputs something: a schedule the user set stands. Gives
    // true when it enabled them.
    bool StartLiveOutput(vok::EDev port);
    vok::MSG GetDefaultSchedule(const ustring& name);
    void SetDefaultSchedule(const vok::MSG& msg);
    void InitItem(const ustring& item);
    void CreateItem(const ustring& item);
    void RemoveItem(const ustring& item);

    // Texts of the W84 coordinate forms.
    static ustring FormatW84(const vok::POS_GEO& pos);
    static ustring FormatW84(const vok::POS_XYZ& pos);
    static vok::POS_GEO ParseW84Geo(const ustring& reply);
    static vok::POS_XYZ ParseW84Xyz(const ustring& reply);
    static vok::MSG ParseSchedule(const ustring& name, const ustring& braced, bool& ok);
    static ustring FormatSchedule(const vok::MSG& msg);

private:
    // While alive, the bytes of each reply in flight are reported as they arrive.
    class CReplyBytesScope {
    public:
        CReplyBytesScope(CVokReceiverMateCore& mate, std::function<void(std::uint64_t)> onBytes) : m_mate(mate) {
            m_mate.m_replyBytes = std::move(onBytes);
        }
        ~CReplyBytesScope() { m_mate.m_replyBytes = nullptr; }
        CReplyBytesScope(const CReplyBytesScope&) = delete;
        CReplyBytesScope& operator=(const CReplyBytesScope&) = delete;

    private:
        CVokReceiverMateCore& m_mate;
    };

    // Issues, waits and checks; the reply as received (bytes and text).
    CCommandReply::Result Exchange(const ustring& command, unsigned timeoutMs, bool sendFlag, bool sendOption);
    basekit::WaitResult WaitForReply(const CCommandReply& reply, unsigned timeoutMs);

    CSmartPtr<IReceiver> m_receiver;
    COverlapped m_completion;
    CSmartPtr<INotice> m_completionNotice = INotice::CreateInstance(m_completion);
    basekit::CEvent m_ownEvent{basekit::CEvent::Mode::Auto};
    basekit::CEvent* m_abort;
    unsigned m_lineRate = 0;
    std::function<void(std::uint64_t)> m_replyBytes;
};

}  // namespace devio
