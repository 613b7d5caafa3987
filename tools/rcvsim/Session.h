#pragma once
#include <atomic>
#include <chrono>
#include <deque>
#include <memory>
#include <mutex>
#include <optional>
#include <random>
#include <string>
#include <thread>

#include "tools/rcvsim/HostLineReader.h"
#include "tools/rcvsim/Receiver.h"
#include "tools/rcvsim/Throttle.h"
#include "tools/rcvsim/UniqueFd.h"

namespace rcvsim {

class LoaderLink;

// One connection to the receiver: a port ("dev/ser/a", "dev/tcp/b") served on its own
// thread. It reads host lines, answers them one at a time (with the fault plan's latency
// or silence), writes the output other threads post, paces both directions at the port's line
// rate when asked, stops a reply the host aborts, sprinkles garbage and drops the link when the fault plan says so.
class Session {
public:
    using Clock = std::chrono::steady_clock;
    // Periodic output beyond this backlog is dropped, as a line nobody reads loses it.
    static constexpr std::size_t kMaxBacklog = 256 * 1024;

    Session(Receiver& receiver, UniqueFd fd, std::string port, bool throttle);
    ~Session();
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    void Start();
    // Queues bytes for the host; `periodic` output may be dropped when the host lags.
    void Post(std::string_view bytes, bool periodic);
    // Closes the connection after `afterMs`.
    void Drop(int afterMs);
    bool Finished() const { return finished_.load(); }
    const std::string& Port() const { return port_; }
    // The pace output is written at, in bytes per second; 0 when unpaced.
    double LineBytesPerSecond() const { return lineRate_.load(); }

private:
    struct PendingReply {
        Clock::time_point due;
        std::string tag;
        std::string bytes;
        ReplyEffect effect = ReplyEffect::None;
        int dropAfterMs = 0;
    };

    // A reply frame queued in out_: where it starts relative to the front of out_ (negative once
    // part of it has been written) and how long it is.
    struct QueuedReply {
        std::string tag;
        long long start = 0;
        std::size_t length = 0;
    };

    void Run(std::stop_token stop);
    void Abort(const std::string& tag);
    void PostReply(const std::string& tag, const std::string& bytes);
    bool CutQueuedReply(const std::string& tag);
    void Written(std::size_t bytes);
    void HandleLine(const HostLine& line, Clock::time_point now);
    void DeliverDueReply(Clock::time_point now);
    void InjectGarbage(Clock::time_point now);
    bool ReadInput();
    bool WriteOutput(Clock::time_point now);
    int PollTimeoutMs(Clock::time_point now);
    void Wake();
    void UpdateRate(Clock::time_point now);
    // False while the host's end of a terminal is framed otherwise than the receiver's line.
    bool HearsHost() const;
    // The boot loader's side of the connection (SessionLoader.cpp).
    void LoaderInput(std::string_view bytes, Clock::time_point now);
    void LoaderTick(Clock::time_point now);
    int LoaderWaitMs(Clock::time_point now) const;

    Receiver& receiver_;
    UniqueFd fd_;
    UniqueFd wake_;
    const std::string port_;
    const bool throttleEnabled_;
    HostLineReader reader_;
    std::deque<HostLine> lines_;
    std::optional<PendingReply> reply_;
    Throttle throttle_;
    Throttle inThrottle_;   // the host's bytes arrive at the line rate too
    std::optional<Clock::time_point> dropAt_;
    std::optional<Clock::time_point> nextGarbage_;
    std::mt19937 rng_;
    std::mutex outMutex_;
    std::string out_;
    std::deque<QueuedReply> queuedReplies_;   // guarded by outMutex_
    std::atomic<bool> finished_{false};
    std::atomic<double> lineRate_{0};
    bool isSocket_ = false;
    std::unique_ptr<LoaderLink> loader_;
    std::optional<LineSettings> line_;   // a terminal's framing in effect; follows its port's settings
    std::jthread thread_;  // last: joins before the members it uses go
};

}  // namespace rcvsim
