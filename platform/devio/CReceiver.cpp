#include "platform/devio/CReceiver.h"

#include "platform/basekit/CCLocaleScope.h"

#include <poll.h>

#include <algorithm>
#include <charconv>

#include "platform/basekit/CWinException.h"
#include "platform/devio/CLinkFactory.h"
#include "platform/devio/nmea/CLiveDataDecoder.h"

namespace devio {

using Clock = std::chrono::steady_clock;

namespace {
constexpr size_t kReadChunk = 64 * 1024;
constexpr int kHousekeepingMs = 200;   // how often overdue commands are looked for
constexpr unsigned kRawWriteTimeoutMs = 5000;
}  // namespace

// The reader thread's decoder: replies and events go to the receiver, live records to the
// listeners.
class CReceiver::CReader final : public ILiveDataSink {
public:
    explicit CReader(CReceiver& owner) : m_owner(owner), m_records(*owner.m_listeners), m_decoder(*this) {}
    void Feed(const char* data, size_t size) { m_decoder.Feed(data, size); }
    void OnPosition(const POSITION_RECORD& r) override { m_records.Offer(r); }
    void OnSatList(const SATLIST_RECORD& r) override { m_records.Offer(r); }
    void OnDateTime(const DATETIME_RECORD& r) override { m_records.Offer(r); }
    void OnDataLink(const DATALINK_RECORD& r) override { m_records.Offer(r); }
    void OnOtherFrame(const FRAME_VIEW& frame) override {
        if (frame.kind == 'R') {
            m_owner.CompleteReply(frame.id, frame.status, frame.payload);
            return;
        }
        unsigned event = 0;
        const auto r = std::from_chars(frame.id.data(), frame.id.data() + frame.id.size(), event);
        if (frame.kind == 'E' && r.ec == std::errc() && r.ptr == frame.id.data() + frame.id.size())
            m_owner.OnReceiverEvent(event);
    }
    void Publish(LIVE_STREAM_COUNTERS& c) const {
        const LIVEDATA_COUNTERS d = m_decoder.Counters();
        c.lexer = d.lexer;
        c.sentencesDecoded = d.nmea.decoded;
        c.sentencesRejected = d.nmea.badChecksum + d.nmea.noChecksum + d.nmea.malformed + d.nmea.notSentence;
        c.messagesRejected = d.dataLinkMalformed;
    }

private:
    CReceiver& m_owner;
    ILiveRecordSink& m_records;
    CLiveDataDecoder m_decoder;
};

CSmartPtr<CReceiver> CReceiver::Open(const CSmartPtr<IPortAddr>& address) {
    return CSmartPtr<CReceiver>(new CReceiver(CLinkFactory::Open(address)));
}

CReceiver::CReceiver(std::unique_ptr<CLink> link)
    : m_link(std::move(link)), m_listeners(new CListenerHost()) {
    const QVariant log = m_link->Address()->GetProperties()->GetProperty(L"WireLog");
    if (log.isValid() && log.toString() != QLatin1String("0")) m_link->WireLog().Enable(true);
    m_reader = std::thread([this] {
        basekit::CCLocaleScope::AdoptForThisThread();
        ReaderLoop();
    });
}

CReceiver::~CReceiver() {
    m_wake.Set();
    if (m_reader.joinable()) m_reader.join();
    FailAll(basekit::kErrorLinkLost);
}

void CReceiver::ReaderLoop() {
    CReader reader(*this);
    std::vector<char> buffer(kReadChunk);
    pollfd fds[2] = {{m_link->Fd(), POLLIN, 0}, {m_wake.Handle(), POLLIN, 0}};
    while (m_alive) {
        const int n = ::poll(fds, 2, kHousekeepingMs);
        if (n < 0 && errno != EINTR) break;
        if (fds[1].revents & POLLIN) break;
        ExpireOverdue();
        if (n <= 0 || !(fds[0].revents & (POLLIN | POLLHUP | POLLERR))) continue;
        // Drain what is there before polling again: a 1 MB reply arrives in many pieces.
        LinkStatus status = LinkStatus::Success;
        for (int round = 0; round < 64; ++round) {
            size_t got = 0;
            status = m_link->ReadSome(buffer.data(), buffer.size(), got);
            if (status != LinkStatus::Success) break;
            reader.Feed(buffer.data(), got);
            if (got < buffer.size()) break;   // drained: no read that would only say EAGAIN
        }
        {
            const std::lock_guard lock(m_countersMutex);
            reader.Publish(m_counters);
        }
        if (status == LinkStatus::Closed || status == LinkStatus::IoError) break;
    }
    const bool lost = m_alive.exchange(false) && !m_wake.IsSet();
    FailAll(basekit::kErrorLinkLost);
    if (lost) Raise(kEventStateChanged);
}

void CReceiver::CompleteReply(std::string_view tag, int status, std::string_view payload) {
    CommandId id = 0;
    const auto r = std::from_chars(tag.data(), tag.data() + tag.size(), id);
    Pending pending;
    {
        const std::lock_guard lock(m_pendingMutex);
        const auto it = (r.ec == std::errc() && r.ptr == tag.data() + tag.size()) ? m_pending.find(id) : m_pending.end();
        if (it == m_pending.end()) {
            const std::lock_guard c(m_countersMutex);
            ++m_counters.orphanReplies;
            return;
        }
        pending = std::move(it->second);
        m_pending.erase(it);
    }
    CCommandReply::Result result;
    result.status = status;
    result.payload.assign(payload);
    result.text = pending.binary ? ustring::FromLatin1(payload) : ustring::FromUtf8(payload);
    pending.reply->Complete(std::move(result));
    if (pending.notice) pending.notice->Signal();
    const std::lock_guard c(m_countersMutex);
    ++m_counters.replies;
}

void CReceiver::Complete(CommandId id, CCommandReply::Result result) {
    Pending pending;
    {
        const std::lock_guard lock(m_pendingMutex);
        const auto it = m_pending.find(id);
        if (it == m_pending.end()) return;
        pending = std::move(it->second);
        m_pending.erase(it);
    }
    pending.reply->Complete(std::move(result));
    if (pending.notice) pending.notice->Signal();
}

void CReceiver::FailAll(unsigned code) {
    std::unordered_map<CommandId, Pending> failed;
    {
        const std::lock_guard lock(m_pendingMutex);
        failed.swap(m_pending);
    }
    for (auto& [id, pending] : failed) {
        CCommandReply::Result result;
        result.linkError = code;
        pending.reply->Complete(std::move(result));
        if (pending.notice) pending.notice->Signal();
    }
}

void CReceiver::ExpireOverdue() {
    const auto now = Clock::now();
    std::vector<CommandId> overdue;
    {
        const std::lock_guard lock(m_pendingMutex);
        for (const auto& [id, pending] : m_pending)
            if (pending.deadline <= now) overdue.push_back(id);
    }
    for (const CommandId id : overdue) {
        CCommandReply::Result result;
        result.linkError = basekit::kErrorTimeout;
        Complete(id, std::move(result));
    }
}

CommandId CReceiver::IssueCommand(const ustring& command, bool sendFlag, const CSmartPtr<CCommandReply>& reply,
                                  const CSmartPtr<INotice>& notice, unsigned timeoutMs, bool sendOption) {
    const CommandId id = m_nextId++;
    {
        const std::lock_guard lock(m_pendingMutex);
        m_pending[id] = Pending{reply, notice, Clock::now() + std::chrono::milliseconds(timeoutMs), sendOption};
    }
    if (!m_alive) {
        CCommandReply::Result result;
        result.linkError = basekit::kErrorLinkLost;
        Complete(id, std::move(result));
        return id;
    }
    const std::string line = "%" + std::to_string(id) + "%" + command.ToUtf8() + "\r\n";
    const LinkStatus status = m_link->Write(line, timeoutMs);
    if (status != LinkStatus::Success) {
        CCommandReply::Result result;
        result.linkError = status == LinkStatus::Timeout ? basekit::kErrorTimeout : basekit::kErrorLinkLost;
        Complete(id, std::move(result));
    } else if (!sendFlag) {
        Complete(id, CCommandReply::Result{});
    }
    return id;
}

void CReceiver::Cancel(CommandId id) {
    const std::lock_guard lock(m_pendingMutex);
    m_pending.erase(id);
}

void CReceiver::WriteRaw(const ustring& text) { WriteRaw(std::string_view(text.ToUtf8())); }

void CReceiver::WriteRaw(std::string_view bytes) {
    if (m_link->Write(bytes, kRawWriteTimeoutMs) != LinkStatus::Success)
        throw basekit::CWinException("Receiver", __LINE__, L"devio::IPort::WriteRaw", basekit::kErrorLinkLost);
}

CSmartPtr<IPort> CReceiver::GetPort() const { return CSmartPtr<IPort>(const_cast<CReceiver*>(this)); }

CSmartPtr<ICommandChannel> CReceiver::GetCommandChannel() const {
    return CSmartPtr<ICommandChannel>(const_cast<CReceiver*>(this));
}

CSmartPtr<IListenerHost> CReceiver::GetListenerHost() const { return CSmartPtr<IListenerHost>(m_listeners.Get()); }

bool CReceiver::IsReady() const { return m_alive; }

void CReceiver::Subscribe(const CSmartPtr<INotice>& notice, unsigned eventNumber) {
    if (!notice || !m_alive)
        throw basekit::CWinException("Receiver", __LINE__, L"devio::IReceiver::Subscribe", basekit::kErrorLinkLost);
    const std::lock_guard lock(m_eventMutex);
    m_subscriptions.push_back(Subscription{notice, eventNumber});
}

void CReceiver::Unsubscribe(const CSmartPtr<INotice>& notice) {
    const std::lock_guard lock(m_eventMutex);
    std::erase_if(m_subscriptions, [&](const Subscription& s) { return s.notice == notice; });
}

void CReceiver::OnReceiverEvent(unsigned event) {
    {
        const std::lock_guard c(m_countersMutex);
        ++m_counters.events;
    }
    if (event == kEventStateChanged || event == kEventPending) {
        Raise(event);
        return;
    }
    // Other events wait for DeliverEvents on the window's thread; event 8 says they are there.
    {
        const std::lock_guard lock(m_eventMutex);
        m_queuedEvents.push_back(event);
    }
    Raise(kEventPending);
}

void CReceiver::Raise(unsigned event) {
    std::vector<CSmartPtr<INotice>> targets;
    {
        const std::lock_guard lock(m_eventMutex);
        for (const auto& s : m_subscriptions)
            if (s.event == event) targets.push_back(s.notice);
    }
    for (const auto& notice : targets) notice->Signal();
}

void CReceiver::DeliverEvents(std::uintptr_t, std::intptr_t) {
    std::deque<unsigned> events;
    {
        const std::lock_guard lock(m_eventMutex);
        events.swap(m_queuedEvents);
    }
    for (const unsigned event : events) Raise(event);
}

LIVE_STREAM_COUNTERS CReceiver::Counters() const {
    const std::lock_guard lock(m_countersMutex);
    return m_counters;
}

size_t CReceiver::PendingCount() const {
    const std::lock_guard lock(m_pendingMutex);
    return m_pending.size();
}

}  // namespace devio
