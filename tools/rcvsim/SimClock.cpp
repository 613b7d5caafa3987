#include "tools/rcvsim/SimClock.h"

#include <chrono>

namespace rcvsim {

double RealClock::Now() const {
    const auto since = std::chrono::system_clock::now().time_since_epoch();
    return std::chrono::duration<double>(since).count() + offset_;
}

}  // namespace rcvsim
