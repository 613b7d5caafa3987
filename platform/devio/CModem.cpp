#include "platform/devio/CModem.h"

#include <poll.h>

#include <chrono>

#include "platform/basekit/CWinException.h"
#include "platform/devio/CLinkFactory.h"

namespace devio {

namespace {

constexpr const char* kSource = "Modem";
constexpr unsigned kNonSerialRate = 9600;
constexpr unsigned kRawWriteTimeoutMs = 5000;
// A line longer than any modem answer is noise that never ended.
constexpr std::size_t kMaxLine = 4096;

unsigned RateOf(const CSmartPtr<IPortAddr>& address) {
    if (!address || address->GetType() != PortSerial) return kNonSerialRate;
    const QVariant rate = address->GetProperties()->GetProperty(L"BaudRate");
    return rate.isValid() && rate.toUInt() > 0 ? rate.toUInt() : kNonSerialRate;
}

// Modems answer in printable ASCII; anything else on a line is noise picked up by the line.
bool IsNoise(std::string_view line) {
    for (const unsigned char c : line)
        if ((c < 0x20 && c != '\t') || c >= 0x7F) return true;
    return false;
}

bool StartsWith(std::wstring_view text, std::wstring_view prefix) { return text.substr(0, prefix.size()) == prefix; }

}  // namespace

CSmartPtr<CModem> CModem::Open(const CSmartPtr<IPortAddr>& address) {
    return CSmartPtr<CModem>(new CModem(CLinkFactory::Open(address)));
}

CModem::CModem(std::unique_ptr<CLink> link) : m_link(std::move(link)), m_lineRate(RateOf(m_link->Address())) {
    const QVariant log = m_link->Address()->GetProperties()->GetProperty(L"WireLog");
    if (log.isValid() && log.toString() != QLatin1String("0")) m_link->WireLog().Enable(true);
}

CSmartPtr<IPort> CModem::GetPort() const { return CSmartPtr<IPort>(const_cast<CModem*>(this)); }

ustring CModem::GetModelName() const {
    const std::lock_guard lock(m_nameMutex);
    return m_modelName;
}

void CModem::SetModelName(const ustring& name) {
    const std::lock_guard lock(m_nameMutex);
    m_modelName = name;
}

bool CModem::IsErrorResult(std::wstring_view line) {
    return line == L"ERROR" || StartsWith(line, L"+CME ERROR:") || StartsWith(line, L"+CMS ERROR:");
}

bool CModem::IsFinalResult(std::wstring_view line) { return line == L"OK" || IsErrorResult(line); }

void CModem::Fail(const ustring& command, unsigned code) {
    if (code == basekit::kErrorLinkLost) m_lost.store(true);
    throw basekit::CWinException(kSource, __LINE__, command, code);
}

CModem::Wait CModem::WaitForData(int timeoutMs, const basekit::CEvent* abort) {
    pollfd fds[2] = {{m_link->Fd(), POLLIN, 0}, {abort ? abort->Handle() : -1, POLLIN, 0}};
    const int n = ::poll(fds, abort ? 2 : 1, timeoutMs);
    // The abort event is consumed the way a wait on it would (an auto-reset event releases one waiter).
    if (n > 0 && abort && (fds[1].revents & POLLIN) && abort->Wait(0).kind == basekit::WaitResult::Signalled)
        return Wait::Aborted;
    if (n > 0 && fds[0].revents) return Wait::Data;
    return Wait::Timeout;
}

void CModem::ReadWaiting(const ustring& command) {
    char buffer[4096];
    for (;;) {
        size_t got = 0;
        switch (m_link->ReadSome(buffer, sizeof buffer, got)) {
            case LinkStatus::Success:
                m_pending.append(buffer, got);
                if (got < sizeof buffer) return;
                continue;
            case LinkStatus::Timeout: return;
            case LinkStatus::Closed: Fail(command, basekit::kErrorLinkLost);
            default: Fail(command, basekit::kErrorIoDevice);
        }
    }
}

bool CModem::TakeLine(std::string& line) {
    const size_t end = m_pending.find_first_of("\r\n");
    if (end == std::string::npos) {
        if (m_pending.size() > kMaxLine) {
            m_pending.clear();
            m_noise.fetch_add(1);
        }
        return false;
    }
    line.assign(m_pending, 0, end);
    m_pending.erase(0, end + 1);
    return true;
}

void CModem::DropStale(const ustring& command) {
    // An answer that came after its command gave up, or a modem's unsolicited line, must not
    // be taken for the answer to the next command.
    m_pending.clear();
    ReadWaiting(command);
    m_pending.clear();
}

MODEM_REPLY CModem::Exchange(const ustring& line, EModemReply shape, unsigned timeoutMs, const basekit::CEvent* abort) {
    using Clock = std::chrono::steady_clock;
    const std::lock_guard lock(m_exchangeMutex);
    if (m_lost.load()) Fail(line, basekit::kErrorLinkLost);
    DropStale(line);
    const auto deadline = Clock::now() + std::chrono::milliseconds(timeoutMs);
    const std::string out = line.ToUtf8() + '\r';
    switch (m_link->Write(out, timeoutMs)) {
        case LinkStatus::Success: break;
        case LinkStatus::Timeout: Fail(line, basekit::kErrorTimeout);
        case LinkStatus::Closed: Fail(line, basekit::kErrorLinkLost);
        default: Fail(line, basekit::kErrorIoDevice);
    }
    const std::string echo = line.ToUtf8();
    MODEM_REPLY reply;
    bool answered = false;
    for (;;) {
        std::string text;
        while (TakeLine(text)) {
            if (text.empty()) continue;
            if (IsNoise(text)) {
                m_noise.fetch_add(1);
                continue;
            }
            // A modem with its echo on repeats the command before it answers.
            if (!answered && text == echo) continue;
            answered = true;
            const ustring wide = ustring::FromUtf8(text);
            if (shape == EModemReply::Single || IsFinalResult(wide)) {
                if (shape == EModemReply::Single) reply.lines.push_back(wide);
                reply.final = wide;
                reply.error = IsErrorResult(wide);
                return reply;
            }
            reply.lines.push_back(wide);
        }
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now()).count();
        if (left <= 0) Fail(line, basekit::kErrorTimeout);
        const Wait wait = WaitForData(static_cast<int>(left), abort);
        if (wait == Wait::Aborted) Fail(line, basekit::kErrorCancelled);
        if (wait == Wait::Data) ReadWaiting(line);
    }
}

std::string CModem::ReadRaw(unsigned timeoutMs, const basekit::CEvent* abort) {
    const std::lock_guard lock(m_exchangeMutex);
    if (m_pending.empty() && WaitForData(static_cast<int>(timeoutMs), abort) == Wait::Data)
        ReadWaiting(L"devio::CModem::ReadRaw");
    return std::exchange(m_pending, std::string());
}

void CModem::WriteRaw(std::string_view bytes) {
    const LinkStatus status = m_link->Write(bytes, kRawWriteTimeoutMs);
    if (status == LinkStatus::Closed) Fail(L"devio::IPort::WriteRaw", basekit::kErrorLinkLost);
    if (status != LinkStatus::Success) Fail(L"devio::IPort::WriteRaw", basekit::kErrorIoDevice);
}

}  // namespace devio
