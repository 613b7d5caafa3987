#pragma once
// A receiver whose answers are scripted: command seen -> reply, error reply, silence or a lost
// link, optionally after a delay. It records what was sent, cancelled and subscribed.
#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <map>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

#include "platform/devio/CListenerHost.h"
#include "platform/devio/CPortAddr.h"
#include "platform/devio/IReceiver.h"

namespace fenktest {

using basekit::CSmartPtr;
using basekit::ustring;

class CScriptedReceiver final : public basekit::CRefCounted<devio::IReceiver, devio::ICommandChannel, devio::IPort> {
public:
    enum class Kind { Reply, Error, Silence, LinkLost, TimedOut, Held };
    struct Step {
        Kind kind = Kind::Reply;
        ustring text;
        int delayMs = 0;
    };
    static Step Reply(ustring text, int delayMs = 0) { return {Kind::Reply, std::move(text), delayMs}; }
    static Step Error(ustring text) { return {Kind::Error, std::move(text), 0}; }
    static Step Silence() { return {Kind::Silence, {}, 0}; }
    static Step LinkLost() { return {Kind::LinkLost, {}, 0}; }
    // The channel gives up at once with a time-out, as after a restart that never answers.
    static Step TimedOut() { return {Kind::TimedOut, {}, 0}; }
    // No answer until the test releases it (ReleaseHeld), however long the caller waits: a
    // slow receiver whose reply comes exactly when the test says.
    static Step Held() { return {Kind::Held, {}, 0}; }

    // A serial port at the given rate; rate < 0 makes a network port; a missing rate property
    // when rate is 0 and noRate is set.
    explicit CScriptedReceiver(int rate = 115200, bool noRateProperty = false) {
        std::map<ustring, QVariant> props;
        if (!noRateProperty && rate >= 0) props[L"BaudRate"] = rate;
        m_address = CSmartPtr<devio::IPortAddr>(new devio::CPortAddr(
            rate < 0 ? devio::PortNetwork : devio::PortSerial, L"scripted", std::move(props), L"scripted:"));
    }
    ~CScriptedReceiver() override {
        {
            const std::lock_guard lock(m_mutex);
            m_closing = true;
        }
        m_wake.notify_all();
        for (auto& t : m_threads) t.join();
    }

    void AddRef() const noexcept override { CRefCounted::AddRef(); }
    void Release() const noexcept override { CRefCounted::Release(); }

    void On(const ustring& command, Step step) {
        const std::lock_guard lock(m_mutex);
        m_script[command] = std::move(step);
    }
    // What an unscripted command gets.
    void Otherwise(Step step) {
        const std::lock_guard lock(m_mutex);
        m_default = std::move(step);
    }
    std::vector<ustring> Sent() const {
        const std::lock_guard lock(m_mutex);
        return m_sent;
    }
    std::vector<ustring> SentWithout(const ustring& command) const {
        auto all = Sent();
        std::erase(all, command);
        return all;
    }
    // Returns once command has been issued: a test acts while it is pending. The bound is a
    // hang guard only; false when it passed.
    bool WaitIssued(const ustring& command, std::chrono::milliseconds guard = std::chrono::seconds(60)) const {
        std::unique_lock lock(m_mutex);
        return m_issued.wait_for(lock, guard, [&] { return std::find(m_sent.begin(), m_sent.end(), command) != m_sent.end(); });
    }
    size_t Cancels() const {
        const std::lock_guard lock(m_mutex);
        return m_cancels;
    }
    // The time-out the channel was given with each command, in the order sent.
    std::vector<unsigned> Timeouts() const {
        const std::lock_guard lock(m_mutex);
        return m_timeouts;
    }
    std::vector<std::pair<bool, bool>> Flags() const {
        const std::lock_guard lock(m_mutex);
        return m_flags;
    }
    // Answers every held command with reply; false when none was waiting.
    bool ReleaseHeld(const ustring& reply) {
        std::vector<devio::CommandId> held;
        {
            const std::lock_guard lock(m_mutex);
            held.swap(m_held);
        }
        for (const devio::CommandId id : held) Finish(id, Reply(reply));
        return !held.empty();
    }
    void ClearLog() {
        const std::lock_guard lock(m_mutex);
        m_sent.clear();
        m_cancels = 0;
    }
    bool refuseSubscriptions = false;
    bool ready = true;
    bool takesCommands = true;   // false: a link that only streams (capture, gpsd)
    std::vector<std::pair<CSmartPtr<devio::INotice>, unsigned>> subscriptions;
    int deliveries = 0;
    std::vector<ustring> raw;

    // IReceiver
    CSmartPtr<devio::IPort> GetPort() const override { return CSmartPtr<devio::IPort>(const_cast<CScriptedReceiver*>(this)); }
    CSmartPtr<devio::ICommandChannel> GetCommandChannel() const override {
        return CSmartPtr<devio::ICommandChannel>(const_cast<CScriptedReceiver*>(this));
    }
    void Subscribe(const CSmartPtr<devio::INotice>& notice, unsigned event) override;
    void Unsubscribe(const CSmartPtr<devio::INotice>& notice) override;
    void DeliverEvents(std::uintptr_t, std::intptr_t) override { ++deliveries; }
    bool IsReady() const override { return ready; }
    bool TakesCommands() const override { return takesCommands; }
    CSmartPtr<devio::IListenerHost> GetListenerHost() const override {
        if (hostOverride.has_value()) return *hostOverride;
        return CSmartPtr<devio::IListenerHost>(m_host.Get());
    }
    // Set: the listener host handed out instead of the real one (empty: none at all).
    std::optional<CSmartPtr<devio::IListenerHost>> hostOverride;
    // Signals every notice subscribed to the event, as the reader thread would.
    void RaiseEvent(unsigned event);
    devio::CListenerHost& Host() { return *m_host; }
    // Taken, and never called: no bytes pass through a scripted receiver.
    bool AddRawTap(const CSmartPtr<devio::IRawTap>&) override { return true; }

    // ICommandChannel
    devio::CommandId IssueCommand(const ustring& command, bool sendFlag, const CSmartPtr<devio::CCommandReply>& reply,
                                  const CSmartPtr<devio::INotice>& notice, unsigned timeoutMs, bool sendOption) override;
    void Cancel(devio::CommandId id) override;
    void WriteRaw(const ustring& text) override {
        const std::lock_guard lock(m_mutex);
        raw.push_back(text);
    }

    // IPort
    CSmartPtr<devio::IPortAddr> GetAddress() const override { return m_address; }
    bool IsOpen() const override { return true; }
    void WriteRaw(std::string_view bytes) override { WriteRaw(ustring::FromUtf8(bytes)); }

private:
    void Finish(devio::CommandId id, const Step& step);
    // Finishes the command after delayMs unless the receiver is destroyed first.
    void FinishLater(devio::CommandId id, const Step& step, unsigned delayMs);

    mutable std::mutex m_mutex;
    CSmartPtr<devio::IPortAddr> m_address;
    CSmartPtr<devio::CListenerHost> m_host{new devio::CListenerHost()};
    std::map<ustring, Step> m_script;
    Step m_default = Error(L"{2,,wrong command}");
    std::vector<ustring> m_sent;
    std::vector<std::pair<bool, bool>> m_flags;
    std::map<devio::CommandId, std::pair<CSmartPtr<devio::CCommandReply>, CSmartPtr<devio::INotice>>> m_pending;
    devio::CommandId m_next = 1;
    size_t m_cancels = 0;
    std::vector<devio::CommandId> m_held;
    std::vector<unsigned> m_timeouts;
    std::vector<std::thread> m_threads;
    std::condition_variable m_wake;
    mutable std::condition_variable m_issued;
    bool m_closing = false;
};

}  // namespace fenktest
