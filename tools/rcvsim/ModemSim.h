#pragma once
// A simulated modem served on a pseudo-terminal and/or loopback TCP, each connection on its own
// thread, with the line rate's pacing and the fault plan (ModemFaults).
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include "tools/rcvsim/ModemCore.h"
#include "tools/rcvsim/UniqueFd.h"

namespace rcvsim {

// A serial line's pace, byte by byte: a byte is on the other side once its ten bit-times have
// passed since the one before it (or since the line woke from idle). No burst, so a short answer
// takes its full line time, as on a real radio's port.
class LinePacer {
public:
    using Clock = std::chrono::steady_clock;
    void SetRate(double bytesPerSecond) { rate_ = bytesPerSecond; }
    bool Enabled() const { return rate_ > 0; }
    // The line had nothing to carry until now.
    void Wake(Clock::time_point now) {
        if (freeAt_ < now) freeAt_ = now;
    }
    std::size_t Allowance(Clock::time_point now) const;
    void Consume(std::size_t bytes);
    // Until the next byte is through.
    int WaitMs(Clock::time_point now) const;

private:
    double rate_ = 0;
    Clock::time_point freeAt_{};
};

// One connection to the modem: reads command lines, answers them one at a time.
class ModemSession {
public:
    using Clock = std::chrono::steady_clock;
    ModemSession(ModemCore& core, UniqueFd fd, bool throttle);
    ~ModemSession();
    ModemSession(const ModemSession&) = delete;
    ModemSession& operator=(const ModemSession&) = delete;

    void Start();
    void Drop(int afterMs);
    bool Finished() const { return finished_.load(); }

private:
    void Run(std::stop_token stop);
    void HandleLine(const std::string& line, Clock::time_point now);
    bool ReadInput(Clock::time_point now);
    bool WriteOutput(Clock::time_point now);
    void InjectGarbage(Clock::time_point now);
    int PollTimeoutMs(Clock::time_point now) const;

    ModemCore& core_;
    UniqueFd fd_;
    UniqueFd wake_;
    const bool throttle_;
    bool isSocket_ = false;
    LinePacer out_;
    LinePacer in_;
    bool inIdle_ = true;
    std::string input_;
    std::vector<std::string> lines_;
    std::string output_;
    std::string pending_;                       // an answer waiting for its latency
    std::optional<Clock::time_point> pendingDue_;
    std::optional<Clock::time_point> nextGarbage_;
    std::mutex dropMutex_;
    std::optional<Clock::time_point> dropAt_;
    std::mt19937 rng_;
    std::atomic<bool> finished_{false};
    std::jthread thread_;
};

class ModemSim {
public:
    using PathCallback = std::function<void(const std::string&)>;
    explicit ModemSim(ModemOptions options, std::shared_ptr<const SimClock> clock = nullptr);
    ~ModemSim();
    ModemSim(const ModemSim&) = delete;
    ModemSim& operator=(const ModemSim&) = delete;

    // A pseudo-terminal the host opens as a serial port; a dropped one is replaced by a new
    // one with a new path (told to onNewPath).
    std::string StartPty(PathCallback onNewPath = {});
    std::string PtyPath() const;
    // A loopback TCP listener; every connection is the modem's port. Port 0 takes a free one.
    int StartTcp(const std::string& address, int port);

    ModemCore& Core() { return core_; }
    ModemFaults Faults() const { return core_.Faults(); }
    void SetFaults(const ModemFaults& faults) { core_.SetFaults(faults); }
    // Closes every open connection after ms.
    void DropLinks(int ms = 0);

private:
    void OpenPty();
    void Maintain(std::stop_token stop);
    void Accept(std::stop_token stop);
    void Add(std::shared_ptr<ModemSession> session);

    ModemCore core_;
    const bool throttle_;
    mutable std::mutex mutex_;
    std::vector<std::shared_ptr<ModemSession>> sessions_;
    std::shared_ptr<ModemSession> ptySession_;
    UniqueFd ptySlave_;
    std::string ptyPath_;
    PathCallback onNewPath_;
    UniqueFd listen_;
    UniqueFd wake_;
    std::jthread maintainer_;
    std::jthread acceptor_;
};

}  // namespace rcvsim
