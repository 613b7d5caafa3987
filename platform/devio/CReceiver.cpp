#include "platform/devio/CReceiver.h"

#include "platform/basekit/CCLocaleScope.h"

#include <poll.h>

#include <algorithm>
#include <charconv>

#include "platform/basekit/CWinException.h"
#include "platform/devio/CLinkFactory.h"
#include "platform/devio/DevioStrings.h"
#include "platform/devio/lexer/CStreamLexer.h"
#include "platform/devio/nmea/CDataLinkDecoder.h"
#include "platform/devio/nmea/CNmeaDecoder.h"

namespace devio {

using Clock = std::chrono::steady_clock;

namespace {
constexpr size_t kReadChunk = 64 * 1024;
constexpr int kHousekeepingMs = 200;   // how often overdue commands are looked for
constexpr unsigned kRawWriteTimeoutMs = 5000;
constexpr unsigned kAbortWriteTimeoutMs = 500;   // the abort is best effort: a full line must not block
constexpr unsigned kShortestAbortableMs = 100;     // shorter: the caller only does not wait for an answer
constexpr auto kRateWindow = std::chrono::seconds(1);
constexpr auto kCutMarkGrace = std::chrono::seconds(2);   // how long a cancelled reply may take to stop

std::int64_t Nanoseconds(Clock::time_point t) {
    return std::chrono::duration_cast<std::chrono::nanoseconds>(t.time_since_epoch()).count();
}

bool ParseTag(std::string_view tag, CommandId& id) {
    const auto r = std::from_chars(tag.data(), tag.data() + tag.size(), id);
    return r.ec == std::errc() && r.ptr == tag.data() + tag.size() && !tag.empty();
}
}  // namespace

// The reader thread's decoder: the lexer (which the receiver steers for cancelled and failed
// replies), the NMEA and data-link decoders; replies and events go to the receiver, live
// records to the listeners.
class CReceiver::CReader final : public ILexerSink, public INmeaSink, public IDataLinkSink {
public:
    explicit CReader(CReceiver& owner)
        : m_owner(owner), m_records(*owner.m_listeners), m_nmea(*this), m_dataLink(*this), m_lexer(*this) {}
    void Feed(const char* data, size_t size) { m_lexer.Feed(data, size); }
    CStreamLexer& Lexer() { return m_lexer; }
    const CStreamLexer& Lexer() const { return m_lexer; }

    void OnSentence(std::string_view sentence) override { m_nmea.Decode(sentence); }
    void OnFrame(const FRAME_VIEW& frame) override {
        if (frame.kind == 'M' && frame.id == "DL") {
            m_dataLink.Decode(frame.payload);
            return;
        }
        if (frame.kind == 'R') {
            // Whoever wakes on this reply sees the counters of everything before it.
            {
                const std::lock_guard lock(m_owner.m_countersMutex);
                Publish(m_owner.m_counters);
            }
            m_owner.CompleteReply(frame.id, frame.status, frame.payload);
            return;
        }
        unsigned event = 0;
        const auto r = std::from_chars(frame.id.data(), frame.id.data() + frame.id.size(), event);
        if (frame.kind == 'E' && r.ec == std::errc() && r.ptr == frame.id.data() + frame.id.size())
            m_owner.OnReceiverEvent(event);
    }
    void OnPosition(const POSITION_RECORD& r) override { m_records.Offer(r); }
    void OnSatList(const SATLIST_RECORD& r) override { m_records.Offer(r); }
    void OnDateTime(const DATETIME_RECORD& r) override { m_records.Offer(r); }
    void OnDataLink(const DATALINK_RECORD& r) override { m_records.Offer(r); }

    void Publish(LIVE_STREAM_COUNTERS& c) const {
        const NMEA_COUNTERS n = m_nmea.Counters();
        c.lexer = m_lexer.Counters();
        c.sentencesDecoded = n.decoded;
        c.sentencesRejected = n.badChecksum + n.noChecksum + n.malformed + n.notSentence;
        c.sentencesIgnored = n.ignored;
        c.messagesRejected = m_dataLink.Malformed();
    }

private:
    CReceiver& m_owner;
    ILiveRecordSink& m_records;
    CNmeaDecoder m_nmea;
    CDataLinkDecoder m_dataLink;
    CStreamLexer m_lexer;
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
        ExpireOverdue(reader);
        SampleRates(reader);
        if (n <= 0 || !(fds[0].revents & (POLLIN | POLLHUP | POLLERR))) {
            const std::lock_guard lock(m_countersMutex);
            reader.Publish(m_counters);
            continue;
        }
        // Drain what is there before polling again: a 1 MB reply arrives in many pieces.
        LinkStatus status = LinkStatus::Success;
        for (int round = 0; round < 64; ++round) {
            size_t got = 0;
            status = m_link->ReadSome(buffer.data(), buffer.size(), got);
            if (status != LinkStatus::Success) break;
            OnBytesArrived();
            Tap(std::string_view(buffer.data(), got));
            ApplyLexerRequests(reader);
            reader.Feed(buffer.data(), got);
            if (got < buffer.size()) break;   // drained: no read that would only say EAGAIN
        }
        {
            const std::lock_guard lock(m_countersMutex);
            reader.Publish(m_counters);
        }
        PublishProgress(reader);
        if (status == LinkStatus::Closed || status == LinkStatus::IoError) break;
    }
    const bool lost = m_alive.exchange(false) && !m_wake.IsSet();
    FailAll(basekit::kErrorLinkLost);
    if (lost) SetState(LinkState::Lost);
}

void CReceiver::CompleteReply(std::string_view tag, int status, std::string_view payload) {
    CommandId id = 0;
    const bool tagged = ParseTag(tag, id);
    Pending pending;
    {
        const std::lock_guard lock(m_pendingMutex);
        const auto it = tagged ? m_pending.find(id) : m_pending.end();
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

void CReceiver::ExpireOverdue(CReader& reader) {
    const auto now = Clock::now();
    std::vector<CommandId> givenUp;
    {
        const std::lock_guard lock(m_requestMutex);
        for (auto it = m_skipping.begin(); it != m_skipping.end();) {
            if (it->second > now) { ++it; continue; }
            givenUp.push_back(it->first);
            it = m_skipping.erase(it);
        }
    }
    // Requests queued before the deadline go first, so the skip they start is the one ended.
    if (!givenUp.empty()) ApplyLexerRequests(reader);
    for (const CommandId id : givenUp) reader.Lexer().AbandonReply(std::to_string(id));
    std::vector<std::pair<CommandId, Pending>> overdue;
    {
        const std::lock_guard lock(m_pendingMutex);
        for (auto it = m_pending.begin(); it != m_pending.end();) {
            if (it->second.deadline > now) { ++it; continue; }
            overdue.emplace_back(it->first, std::move(it->second));
            it = m_pending.erase(it);
        }
    }
    bool unheard = false;
    for (auto& [id, pending] : overdue) {
        // A reply still streaming in is given up: the receiver is asked to stop it, and a frame
        // whose header promised more than came is dropped so the replies behind it are found.
        reader.Lexer().AbandonReply(std::to_string(id));
        if (pending.abortable) SendAbort(id, kAbortWriteTimeoutMs);
        unheard = unheard || m_lastByteNs.load() < Nanoseconds(pending.issued);
        CCommandReply::Result result;
        result.linkError = basekit::kErrorTimeout;
        pending.reply->Complete(std::move(result));
        if (pending.notice) pending.notice->Signal();
    }
    if (!overdue.empty()) {
        const std::lock_guard c(m_countersMutex);
        m_health.unanswered += overdue.size();
    }
    if (unheard) SetState(LinkState::Silent);
}

void CReceiver::ApplyLexerRequests(CReader& reader) {
    std::vector<LexerRequest> requests;
    {
        const std::lock_guard lock(m_requestMutex);
        requests.swap(m_requests);
    }
    for (const LexerRequest& r : requests) {
        const std::string tag = std::to_string(r.id);
        if (r.abandon) reader.Lexer().AbandonReply(tag);
        else reader.Lexer().CancelReply(tag);
    }
}

void CReceiver::PublishProgress(const CReader& reader) {
    CStreamLexer::REPLY_PROGRESS progress;
    CommandId id = 0;
    if (!reader.Lexer().ReplyInProgress(progress) || !ParseTag(progress.tag, id)) return;
    CSmartPtr<CCommandReply> reply;
    {
        const std::lock_guard lock(m_pendingMutex);
        const auto it = m_pending.find(id);
        if (it == m_pending.end()) return;
        reply = it->second.reply;
    }
    reply->UpdateProgress(progress.received, progress.length);
}

void CReceiver::OnBytesArrived() {
    m_lastByteNs.store(Nanoseconds(Clock::now()));
    bool silent;
    {
        const std::lock_guard c(m_countersMutex);
        silent = m_health.state == LinkState::Silent;
    }
    if (silent) SetState(LinkState::Up);
}

void CReceiver::SetState(LinkState state) {
    {
        const std::lock_guard c(m_countersMutex);
        if (m_health.state == state || m_health.state == LinkState::Lost) return;
        m_health.state = state;
    }
    Raise(kEventStateChanged);
}

void CReceiver::SampleRates(const CReader& reader) {
    const auto now = Clock::now();
    const std::lock_guard c(m_countersMutex);
    if (now - m_sample.at < kRateWindow) return;
    const double seconds = std::chrono::duration<double>(now - m_sample.at).count();
    const RateSample next{now, m_link->BytesIn(), m_link->BytesOut(), reader.Lexer().Counters().sentences};
    if (m_sample.at != Clock::time_point{}) {
        m_health.bytesInPerSecond = static_cast<double>(next.in - m_sample.in) / seconds;
        m_health.bytesOutPerSecond = static_cast<double>(next.out - m_sample.out) / seconds;
        m_health.sentencesPerSecond = static_cast<double>(next.sentences - m_sample.sentences) / seconds;
    }
    m_sample = next;
}

void CReceiver::SendAbort(CommandId id, unsigned timeoutMs) {
    if (m_alive) m_link->Write(AbortLine(id), timeoutMs);
}

std::string CReceiver::AbortLine(CommandId id) { return "\x18" + std::to_string(id) + "\r\n"; }

// No receiver listens behind an NMEA feed: waiting out a time-out would only hide that.
void CReceiver::RefuseCommand(const ustring& command) const {
    throw basekit::CStdException(ustring::Format(DevioText(kStrLinkNmeaOnly).c_str(), m_link->Address()->ToUrl(), command),
                                 "Receiver", __LINE__);
}

CommandId CReceiver::IssueCommand(const ustring& command, bool sendFlag, const CSmartPtr<CCommandReply>& reply,
                                  const CSmartPtr<INotice>& notice, unsigned timeoutMs, bool sendOption) {
    if (!m_link->TakesCommands()) RefuseCommand(command);
    const CommandId id = m_nextId++;
    {
        const std::lock_guard lock(m_pendingMutex);
        const auto now = Clock::now();
        m_pending[id] = Pending{reply, notice, now + std::chrono::milliseconds(timeoutMs), sendOption, sendFlag, now,
                                timeoutMs >= kShortestAbortableMs};
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
    bool expectsReply = false;
    bool abortable = false;
    {
        const std::lock_guard lock(m_pendingMutex);
        const auto it = m_pending.find(id);
        if (it == m_pending.end()) return;
        expectsReply = it->second.expectsReply;
        abortable = it->second.abortable;
        m_pending.erase(it);
    }
    if (!expectsReply) return;
    // The lexer learns of the cancel before the receiver can answer the abort with its cut mark.
    {
        const std::lock_guard lock(m_requestMutex);
        m_requests.push_back(LexerRequest{false, id});
        m_skipping.emplace_back(id, Clock::now() + kCutMarkGrace);
    }
    if (abortable) SendAbort(id, kAbortWriteTimeoutMs);
}

void CReceiver::WriteRaw(const ustring& text) { WriteRaw(std::string_view(text.ToUtf8())); }

void CReceiver::WriteRaw(std::string_view bytes) {
    if (!m_link->TakesCommands()) {
        std::string_view shown = bytes;
        while (!shown.empty() && (shown.back() == '\r' || shown.back() == '\n')) shown.remove_suffix(1);
        RefuseCommand(ustring::FromUtf8(shown));
    }
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

LINK_HEALTH CReceiver::GetLinkHealth() const {
    LINK_HEALTH health;
    {
        const std::lock_guard lock(m_countersMutex);
        health = m_health;
        health.droppedFrames = m_counters.lexer.droppedFrames;
        health.decodedSentences = m_counters.sentencesDecoded;
        health.ignoredSentences = m_counters.sentencesIgnored;
        health.badSentences = m_counters.lexer.droppedSentences + m_counters.sentencesRejected;
        health.cancelledReplies = m_counters.lexer.cancelledReplies;
    }
    if (!m_alive) health.state = LinkState::Lost;
    health.bytesIn = m_link->BytesIn();
    health.bytesOut = m_link->BytesOut();
    const std::int64_t last = m_lastByteNs.load();
    if (last != 0) health.msSinceLastByte = (Nanoseconds(Clock::now()) - last) / 1000000;
    return health;
}

bool CReceiver::AddRawTap(const CSmartPtr<IRawTap>& tap) {
    if (!tap) return false;
    const std::lock_guard lock(m_tapMutex);
    if (std::find(m_taps.begin(), m_taps.end(), tap) == m_taps.end()) m_taps.push_back(tap);
    return true;
}

void CReceiver::RemoveRawTap(const CSmartPtr<IRawTap>& tap) {
    const std::lock_guard lock(m_tapMutex);
    std::erase(m_taps, tap);
}

// Held while the taps run, so that a removed tap is never called after RemoveRawTap returns.
void CReceiver::Tap(std::string_view bytes) {
    const std::lock_guard lock(m_tapMutex);
    for (const auto& tap : m_taps) tap->OnRawBytes(bytes);
}

size_t CReceiver::PendingCount() const {
    const std::lock_guard lock(m_pendingMutex);
    return m_pending.size();
}

}  // namespace devio
