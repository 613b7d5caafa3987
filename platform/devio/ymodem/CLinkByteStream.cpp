#include "platform/devio/ymodem/CLinkByteStream.h"

#include <poll.h>

#include <cerrno>
#include <chrono>

namespace devio {

LinkStatus CLinkByteStream::Read(char* buffer, std::size_t capacity, std::size_t& got, unsigned timeoutMs,
                                 const basekit::CEvent* abort) {
    using Clock = std::chrono::steady_clock;
    const auto deadline = Clock::now() + std::chrono::milliseconds(timeoutMs);
    got = 0;
    for (;;) {
        if (abort && abort->IsSet()) return LinkStatus::Cancelled;
        const LinkStatus status = m_link.ReadSome(buffer, capacity, got);
        if (status != LinkStatus::Timeout) return status;
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now()).count();
        if (left <= 0) return LinkStatus::Timeout;
        pollfd fds[2] = {{m_link.Fd(), POLLIN, 0}, {abort ? abort->Handle() : -1, POLLIN, 0}};
        if (::poll(fds, 2, static_cast<int>(left)) < 0 && errno != EINTR) return LinkStatus::IoError;
    }
}

}  // namespace devio
