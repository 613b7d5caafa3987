#pragma once
#include <chrono>
#include <cstddef>

namespace rcvsim {

// Paces output at a line's character rate: a token bucket refilled at `bytesPerSecond`
// that holds at most a short burst, so bytes leave as evenly as they would on the wire.
class Throttle {
public:
    using Clock = std::chrono::steady_clock;

    // 0 switches pacing off.
    void SetRate(double bytesPerSecond, Clock::time_point now);
    double Rate() const { return rate_; }
    bool Enabled() const { return rate_ > 0; }
    // Bytes that may be written at `now`.
    std::size_t Allowance(Clock::time_point now);
    void Consume(std::size_t bytes);
    // Time until at least one byte may be written.
    std::chrono::milliseconds Wait(Clock::time_point now);
    double Burst() const { return burst_; }

    // Characters per second of a line: start bit, data bits, parity bit, stop bits.
    static double BytesPerSecond(double bitsPerSecond, int dataBits, bool parity, int stopBits) {
        return bitsPerSecond / (1 + dataBits + (parity ? 1 : 0) + stopBits);
    }

private:
    void Refill(Clock::time_point now);
    double rate_ = 0;
    double burst_ = 0;
    double tokens_ = 0;
    Clock::time_point last_{};
};

}  // namespace rcvsim
