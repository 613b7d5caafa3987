#pragma once
#include <atomic>
#include <chrono>
#include <deque>
#include <memory>
#include <mutex>
#include <thread>
#include <unordered_map>
#include <vector>

#include "platform/basekit/CEvent.h"
#include "platform/devio/CLink.h"
#include "platform/devio/CListenerHost.h"
#include "platform/devio/IReceiver.h"
#include "platform/devio/LiveStreamCounters.h"

namespace devio {

// A receiver on an open link. The caller's thread writes commands; one reader thread splits
// what arrives into replies (completing their commands), NMEA sentences and periodic messages
// (decoded for the listeners) and receiver events. A lost link fails every pending command at
// once and raises event 7.
class CReceiver final : public basekit::CRefCounted<IReceiver, ICommandChannel, IPort> {
public:
    // Opens the link the address names; throws basekit::CWinException when it cannot.
    static CSmartPtr<CReceiver> Open(const CSmartPtr<IPortAddr>& address);
    explicit CReceiver(std::unique_ptr<CLink> link);
    ~CReceiver() override;

    void AddRef() const noexcept override { CRefCounted::AddRef(); }
    void Release() const noexcept override { CRefCounted::Release(); }

    // IReceiver
    CSmartPtr<IPort> GetPort() const override;
    CSmartPtr<ICommandChannel> GetCommandChannel() const override;
    void Subscribe(const CSmartPtr<INotice>& notice, unsigned eventNumber) override;
    void Unsubscribe(const CSmartPtr<INotice>& notice) override;
    void DeliverEvents(std::uintptr_t wParam, std::intptr_t lParam) override;
    bool IsReady() const override;
    CSmartPtr<IListenerHost> GetListenerHost() const override;
    LINK_HEALTH GetLinkHealth() const override;
    bool AddRawTap(const CSmartPtr<IRawTap>& tap) override;
    void RemoveRawTap(const CSmartPtr<IRawTap>& tap) override;
    bool TakesCommands() const override { return m_link->TakesCommands(); }

    // ICommandChannel
    CommandId IssueCommand(const ustring& command, bool sendFlag, const CSmartPtr<CCommandReply>& reply,
                           const CSmartPtr<INotice>& notice, unsigned timeoutMs, bool sendOption) override;
    void Cancel(CommandId id) override;
    void WriteRaw(const ustring& text) override;

    // What the host writes to make the receiver stop the reply to a command (wire protocol,
    // "Aborting a reply").
    static std::string AbortLine(CommandId id);

    // IPort
    CSmartPtr<IPortAddr> GetAddress() const override { return m_link->Address(); }
    bool IsOpen() const override { return IsReady(); }
    void WriteRaw(std::string_view bytes) override;

    CWireLog& WireLog() { return m_link->WireLog(); }
    LIVE_STREAM_COUNTERS Counters() const;
    size_t PendingCount() const;

private:
    struct Pending {
        CSmartPtr<CCommandReply> reply;
        CSmartPtr<INotice> notice;
        std::chrono::steady_clock::time_point deadline;
        bool binary;
        bool expectsReply;
        std::chrono::steady_clock::time_point issued;
        // A time-out too short for any answer (a restart's) means "do not wait", not "give up":
        // such a command is never aborted, or the receiver would drop it unrun.
        bool abortable;
    };
    // What the caller's thread asks of the lexer, which only the reader thread touches.
    struct LexerRequest {
        bool abandon;   // false: skip the cancelled reply up to its cut mark
        CommandId id;
    };
    struct Subscription {
        CSmartPtr<INotice> notice;
        unsigned event;
    };
    class CReader;

    void ReaderLoop();
    void CompleteReply(std::string_view tag, int status, std::string_view payload);
    void OnReceiverEvent(unsigned event);
    void FailAll(unsigned code);
    void ExpireOverdue(CReader& reader);
    void ApplyLexerRequests(CReader& reader);
    void PublishProgress(const CReader& reader);
    void OnBytesArrived();
    void SetState(LinkState state);
    void SampleRates(const CReader& reader);
    void SendAbort(CommandId id, unsigned timeoutMs);
    void Complete(CommandId id, CCommandReply::Result result);
    void Raise(unsigned event);
    void Tap(std::string_view bytes);
    [[noreturn]] void RefuseCommand(const ustring& command) const;

    std::unique_ptr<CLink> m_link;
    std::mutex m_tapMutex;
    std::vector<CSmartPtr<IRawTap>> m_taps;
    CSmartPtr<CListenerHost> m_listeners;
    basekit::CEvent m_wake{basekit::CEvent::Mode::Manual};
    std::atomic<bool> m_alive{true};
    std::atomic<CommandId> m_nextId{1};

    mutable std::mutex m_pendingMutex;
    std::unordered_map<CommandId, Pending> m_pending;

    mutable std::mutex m_eventMutex;
    std::vector<Subscription> m_subscriptions;
    std::deque<unsigned> m_queuedEvents;

    std::mutex m_requestMutex;
    std::vector<LexerRequest> m_requests;
    // Cancelled replies the lexer skips, and when it gives up waiting for their cut mark: a
    // peer that never sends one (or a header that promised more than comes) stalls nothing.
    std::vector<std::pair<CommandId, std::chrono::steady_clock::time_point>> m_skipping;

    mutable std::mutex m_countersMutex;
    LIVE_STREAM_COUNTERS m_counters;
    LINK_HEALTH m_health;
    std::atomic<std::int64_t> m_lastByteNs{0};   // steady clock, 0: nothing yet
    struct RateSample {
        std::chrono::steady_clock::time_point at;
        std::uint64_t in = 0, out = 0, sentences = 0;
    } m_sample;
    std::thread m_reader;
};

}  // namespace devio
