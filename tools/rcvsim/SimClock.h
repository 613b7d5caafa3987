#pragma once
#include <atomic>

namespace rcvsim {

// Simulated UTC time in seconds since 1970. The receiver reads time only through this, so
// tests can step it and the executable can follow the wall clock.
class SimClock {
public:
    virtual ~SimClock() = default;
    virtual double Now() const = 0;
};

class RealClock final : public SimClock {
public:
    explicit RealClock(double offsetSeconds = 0) : offset_(offsetSeconds) {}
    double Now() const override;

private:
    double offset_;
};

// A clock that moves only when told; safe to read from any thread.
class ManualClock final : public SimClock {
public:
    explicit ManualClock(double start = 1718359200.0) : now_(start) {}  // 2024-06-14 10:00 UTC
    double Now() const override { return now_.load(); }
    void Set(double t) { now_.store(t); }
    void Advance(double seconds) { now_.store(now_.load() + seconds); }

private:
    std::atomic<double> now_;
};

}  // namespace rcvsim
