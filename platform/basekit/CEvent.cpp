#include "platform/basekit/CEvent.h"

#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstdint>
#include <system_error>
#include <vector>

namespace basekit {

CEvent::CEvent(Mode mode, bool initiallySet) : m_mode(mode) {
    m_fd = ::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
    if (m_fd < 0) throw std::system_error(errno, std::generic_category(), "eventfd");
    if (initiallySet) Set();
}

CEvent::~CEvent() {
    if (m_fd >= 0) ::close(m_fd);
}

void CEvent::Set() {
    const std::uint64_t one = 1;
    // EAGAIN only when the counter is near overflow, which means it is set anyway.
    [[maybe_unused]] const ssize_t n = ::write(m_fd, &one, sizeof one);
}

void CEvent::Reset() {
    std::uint64_t value = 0;
    [[maybe_unused]] const ssize_t n = ::read(m_fd, &value, sizeof value);
}

bool CEvent::IsSet() const {
    pollfd p{m_fd, POLLIN, 0};
    return ::poll(&p, 1, 0) == 1 && (p.revents & POLLIN);
}

bool CEvent::TryConsume() const {
    if (m_mode == Mode::Manual) return true;
    std::uint64_t value = 0;
    return ::read(m_fd, &value, sizeof value) == static_cast<ssize_t>(sizeof value);
}

WaitResult CEvent::Wait(unsigned timeoutMs) const {
    const CEvent* self = this;
    return WaitAny(std::span<const CEvent* const>(&self, 1), timeoutMs);
}

WaitResult CEvent::WaitAny(std::span<const CEvent* const> events, unsigned timeoutMs) {
    using Clock = std::chrono::steady_clock;
    WaitResult result;
    if (events.empty()) { result.error = EINVAL; return result; }
    std::vector<pollfd> fds(events.size());
    for (std::size_t i = 0; i < events.size(); ++i) fds[i] = pollfd{events[i]->m_fd, POLLIN, 0};
    const auto deadline = Clock::now() + std::chrono::milliseconds(timeoutMs);
    for (;;) {
        int waitMs = -1;
        if (timeoutMs != kInfinite) {
            const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now()).count();
            waitMs = left > 0 ? static_cast<int>(left) : 0;
        }
        const int n = ::poll(fds.data(), fds.size(), waitMs);
        if (n < 0) {
            if (errno == EINTR) continue;
            result.kind = WaitResult::Failed;
            result.error = errno;
            return result;
        }
        for (std::size_t i = 0; n > 0 && i < fds.size(); ++i) {
            if (!(fds[i].revents & POLLIN)) continue;
            // Another waiter may have consumed an auto-reset event between poll and read.
            if (!events[i]->TryConsume()) continue;
            result.kind = WaitResult::Signalled;
            result.index = i;
            return result;
        }
        if (n == 0 && waitMs == 0) {
            result.kind = WaitResult::Timeout;
            return result;
        }
    }
}

}  // namespace basekit
