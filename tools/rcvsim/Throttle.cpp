#include "tools/rcvsim/Throttle.h"

#include <algorithm>
#include <cmath>

namespace rcvsim {

void Throttle::SetRate(double bytesPerSecond, Clock::time_point now) {
    rate_ = std::max(0.0, bytesPerSecond);
    // Twenty milliseconds of line time, but never less than one short sentence.
    burst_ = std::max(16.0, rate_ / 50);
    tokens_ = std::min(tokens_, burst_);
    last_ = now;
}

void Throttle::Refill(Clock::time_point now) {
    if (now <= last_) return;
    const double seconds = std::chrono::duration<double>(now - last_).count();
    tokens_ = std::min(burst_, tokens_ + seconds * rate_);
    last_ = now;
}

std::size_t Throttle::Allowance(Clock::time_point now) {
    if (!Enabled()) return static_cast<std::size_t>(-1);
    Refill(now);
    return static_cast<std::size_t>(std::floor(tokens_));
}

void Throttle::Consume(std::size_t bytes) {
    if (Enabled()) tokens_ = std::max(0.0, tokens_ - static_cast<double>(bytes));
}

std::chrono::milliseconds Throttle::Wait(Clock::time_point now) {
    if (!Enabled()) return std::chrono::milliseconds(0);
    Refill(now);
    if (tokens_ >= 1) return std::chrono::milliseconds(0);
    return std::chrono::milliseconds(static_cast<long>(std::ceil((1 - tokens_) * 1000 / rate_)));
}

}  // namespace rcvsim
