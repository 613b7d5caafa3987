#include "fenklib/receiver/CVokReceiverMateCore.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <thread>

#include "fenklib/receiver/CommandText.h"
#include "platform/basekit/CCommException.h"
#include "platform/basekit/CWinException.h"

namespace devio {

using basekit::CWinException;
using basekit::WaitResult;

namespace {
constexpr const char* kSource = "VokReceiverMate";
constexpr unsigned kDefaultReplyBytes = 1000;
constexpr unsigned kNonSerialRate = 9600;
constexpr std::chrono::microseconds kSpinBeforeSleep{50};
constexpr long long kReplyProgressMs = 100;
constexpr const wchar_t* kWrongCommand = L"{2,,wrong command}";

bool IsTimeout(const CWinException& e) { return e.Code() == basekit::kErrorTimeout; }
}  // namespace

CVokReceiverMateCore::CVokReceiverMateCore(CSmartPtr<IReceiver> receiver, basekit::CEvent* abortEvent)
    : m_receiver(std::move(receiver)), m_abort(abortEvent ? abortEvent : &m_ownEvent) {
    UpdateBaudRate();
}

CVokReceiverMateCore::CVokReceiverMateCore(CSmartPtr<IReceiver> receiver)
    : CVokReceiverMateCore(std::move(receiver), nullptr) {}

void CVokReceiverMateCore::UpdateBaudRate() {
    const auto fail = [] { throw CWinException(kSource, __LINE__, L"devio::CVokReceiverMateCore::UpdateBaudRate", basekit::kErrorInternal); };
    if (!m_receiver) fail();
    const CSmartPtr<IPort> port = m_receiver->GetPort();
    const CSmartPtr<IPortAddr> address = port ? port->GetAddress() : nullptr;
    if (!address) fail();
    if (address->GetType() != PortSerial) {
        m_lineRate = kNonSerialRate;
        return;
    }
    const CSmartPtr<IPropertyContainer> properties = address->GetProperties();
    const QVariant rate = properties ? properties->GetProperty(L"BaudRate") : QVariant();
    if (!rate.isValid()) fail();
    m_lineRate = rate.toUInt();
}

unsigned CVokReceiverMateCore::CalcTransferTime(unsigned lineRate, unsigned bytes) {
    if (lineRate == 0) return 0;
    // Sixteen bit-times per byte leave room for start, stop and parity bits and for gaps.
    return static_cast<unsigned>(std::ceil(1000.0 * bytes * 8 * 2 / lineRate));
}

unsigned CVokReceiverMateCore::GetCommandTimeout(unsigned bytes) const {
    return (CalcTransferTime(m_lineRate, bytes) + 1000) * 5;
}

ustring CVokReceiverMateCore::ExecuteCommand(const ustring& command, bool trimReply, unsigned timeoutMs,
                                             bool sendFlag, bool sendOption) {
    CCommandReply::Result result = Exchange(command, timeoutMs, sendFlag, sendOption);
    if (trimReply) result.text.Trim();
    return std::move(result.text);
}

CCommandReply::Result CVokReceiverMateCore::Exchange(const ustring& command, unsigned timeoutMs, bool sendFlag, bool sendOption) {
    CheckCommandLine(command);
    if (timeoutMs == 0) timeoutMs = GetCommandTimeout(kDefaultReplyBytes);
    const CSmartPtr<CCommandReply> reply(new CCommandReply());
    const CSmartPtr<ICommandChannel> channel = m_receiver->GetCommandChannel();
    if (!channel) throw CWinException(kSource, __LINE__, command, basekit::kErrorInternal);
    // One completion record serves every command of this mate. Its event may still be set by an
    // earlier command (one whose reply was seen before its signal was consumed); the wait tells
    // such a signal apart by this command's own reply buffer.
    const CommandId id = channel->IssueCommand(command, sendFlag, reply, m_completionNotice, timeoutMs, sendOption);

    const WaitResult wait = WaitForReply(*reply, timeoutMs);
    if (wait.kind == WaitResult::Signalled && wait.index == 0) {
        CCommandReply::Result result = reply->Take();
        if (result.linkError != 0) throw CWinException(kSource, __LINE__, command, result.linkError);
        if (result.status < 0) throw basekit::CCommException(kSource, __LINE__, command, result.text, L"Receiver");
        return result;
    }
    channel->Cancel(id);
    if (wait.kind == WaitResult::Signalled) throw CWinException(kSource, __LINE__, command, basekit::kErrorCancelled);
    if (wait.kind == WaitResult::Timeout) throw CWinException(kSource, __LINE__, command, basekit::kErrorTimeout);
    if (wait.kind == WaitResult::Failed && wait.error != 0)
        throw CWinException(kSource, __LINE__, L"WaitForMultipleObjects", static_cast<unsigned>(wait.error));
    throw CWinException(kSource, __LINE__, L"WaitForMultipleObjects", basekit::kErrorInternal);
}

WaitResult CVokReceiverMateCore::WaitForReply(const CCommandReply& reply, unsigned timeoutMs) {
    using Clock = std::chrono::steady_clock;
    const auto start = Clock::now();
    const auto deadline = start + std::chrono::milliseconds(timeoutMs);
    // A reply on a fast link comes within tens of microseconds: looking for it a little while
    // before sleeping saves the wake-up of this thread, which costs about as much again.
    while (Clock::now() - start < kSpinBeforeSleep) {
        if (reply.IsDone()) return WaitResult{WaitResult::Signalled, 0, 0};
        std::this_thread::yield();
    }
    for (;;) {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now()).count();
        // A long reply's bytes are reported while they stream in: the wait wakes now and then.
        const long long slice = m_replyBytes ? std::min<long long>(left, kReplyProgressMs) : left;
        const WaitResult wait = basekit::CEvent::WaitAny({&m_completion.Event(), m_abort}, static_cast<unsigned>(std::max<long long>(slice, 0)));
        if (wait.kind == WaitResult::Timeout && slice < left) {
            m_replyBytes(reply.GetProgress().received);
            continue;
        }
        if (wait.kind != WaitResult::Signalled || wait.index != 0 || reply.IsDone()) return wait;
        m_completion.Event().Reset();
        if (reply.IsDone()) return wait;
    }
}

void CVokReceiverMateCore::SendRawString(const ustring& text) {
    using namespace std::chrono_literals;
    const CSmartPtr<ICommandChannel> channel = m_receiver->GetCommandChannel();
    if (!channel) throw CWinException(kSource, __LINE__, L"devio::CVokReceiverMateCore::SendRawString", basekit::kErrorInternal);
    // The pauses let a module that listens for an escape text see it on a quiet line.
    std::this_thread::sleep_for(500ms);
    channel->WriteRaw(text);
    std::this_thread::sleep_for(500ms);
    channel->WriteRaw(L"\r\n");
}

bool CVokReceiverMateCore::ExtractBracedText(const ustring& reply, bool keepBraces, ustring& out) {
    const size_t open = reply.find(L'{');
    const size_t close = reply.rfind(L'}');
    if (open == ustring::npos || close == ustring::npos || close < open) return false;
    out = keepBraces ? reply.substr(open, close - open + 1) : reply.substr(open + 1, close - open - 1);
    return true;
}

void CVokReceiverMateCore::SplitTopLevelList(const ustring& text, std::vector<ustring>& list) {
    list.clear();
    int depth = 0;
    ustring item;
    for (const wchar_t c : text) {
        if (c == L',' && depth == 0) {
            list.push_back(std::move(item));
            item.clear();
            continue;
        }
        if (c == L'{') ++depth;
        if (c == L'}') --depth;
        item += c;
    }
    if (!item.empty()) list.push_back(std::move(item));
}

vok::EDev CVokReceiverMateCore::GetCurrentTerminal() {
    return vok::FromKeyword<vok::EDev>(ExecuteCommand(L"print,/cur/term", true));
}

void CVokReceiverMateCore::InitParameters() {
    GetCurrentTerminal();
    try {
        ExecuteCommand(L"init,/setup/");
        return;
    } catch (const basekit::CCommException& e) {
        if (e.Reply() != kWrongCommand) throw;
    } catch (const CWinException& e) {
        // The receiver restarts and does not answer.
        if (!IsTimeout(e)) throw;
        return;
    }
    // Older firmware knows only the parameter form.
    GetCurrentTerminal();
    try {
        ExecuteCommand(L"init,/par/");
    } catch (const CWinException& e) {
        if (!IsTimeout(e)) throw;
    }
}

void CVokReceiverMateCore::InitNvram() {
    GetCurrentTerminal();
    try {
        ExecuteCommand(L"init,/dev/nvm/a");
    } catch (const CWinException& e) {
        if (!IsTimeout(e)) throw;
    }
}

void CVokReceiverMateCore::ResetReceiver() {
    GetCurrentTerminal();
    try {
        ExecuteCommand(L"set,reset,yes", false, 1);
    } catch (const CWinException& e) {
        if (!IsTimeout(e)) throw;
    }
}

bool CVokReceiverMateCore::IsExtFamilyModel() {
    ustring model = ExecuteCommand(L"print,rcv/model");
    if (const size_t slash = model.find(L'/'); slash != ustring::npos) model.erase(slash);
    for (const wchar_t* family : {L"Lyn1", L"ArcoII", L"RV-9000"})
        if (model.EqualsNoCase(family)) return true;
    return false;
}

}  // namespace devio
