#include "platform/devio/CLink.h"

#include <poll.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>

namespace devio {

namespace {
bool IsSocket(int fd) {
    struct stat st {};
    return ::fstat(fd, &st) == 0 && S_ISSOCK(st.st_mode);
}
}  // namespace

CLink::CLink(CSmartPtr<IPortAddr> address, int fd, Traffic traffic)
    : m_address(std::move(address)), m_fd(fd), m_traffic(traffic), m_isSocket(IsSocket(fd)) {}

CLink::~CLink() {
    if (m_fd >= 0) ::close(m_fd);
}

LinkStatus CLink::ReadSome(char* buffer, size_t capacity, size_t& got) {
    got = 0;
    for (;;) {
        const ssize_t n = ::read(m_fd, buffer, capacity);
        if (n > 0) {
            got = static_cast<size_t>(n);
            m_bytesIn.fetch_add(got, std::memory_order_relaxed);
            m_log.Record(CWireLog::Direction::In, std::string_view(buffer, got));
            return LinkStatus::Success;
        }
        if (n == 0) return LinkStatus::Closed;
        if (errno == EINTR) continue;
        if (errno == EAGAIN || errno == EWOULDBLOCK) return LinkStatus::Timeout;
        // A pseudo-terminal whose other side closed reads EIO: the line is gone.
        return errno == EIO || errno == ECONNRESET ? LinkStatus::Closed : LinkStatus::IoError;
    }
}

LinkStatus CLink::Write(std::string_view bytes, unsigned timeoutMs) {
    using Clock = std::chrono::steady_clock;
    const std::lock_guard lock(m_writeMutex);
    m_log.Record(CWireLog::Direction::Out, bytes);
    const auto deadline = Clock::now() + std::chrono::milliseconds(timeoutMs);
    while (!bytes.empty()) {
        // send() keeps a closed peer from raising SIGPIPE; a serial line takes write().
        const ssize_t w = m_isSocket ? ::send(m_fd, bytes.data(), bytes.size(), MSG_NOSIGNAL)
                                     : ::write(m_fd, bytes.data(), bytes.size());
        if (w > 0) {
            m_bytesOut.fetch_add(static_cast<std::uint64_t>(w), std::memory_order_relaxed);
            bytes.remove_prefix(static_cast<size_t>(w));
            continue;
        }
        if (w < 0 && errno == EINTR) continue;
        // A pseudo-terminal whose other side closed writes EIO, as it reads: the line is gone.
        if (w < 0 && errno != EAGAIN && errno != EWOULDBLOCK)
            return errno == EPIPE || errno == EIO || errno == ECONNRESET ? LinkStatus::Closed : LinkStatus::IoError;
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now()).count();
        if (left <= 0) return LinkStatus::Timeout;
        pollfd p{m_fd, POLLOUT, 0};
        if (::poll(&p, 1, static_cast<int>(left)) < 0 && errno != EINTR) return LinkStatus::IoError;
        if (p.revents & (POLLERR | POLLHUP)) return LinkStatus::Closed;
    }
    return LinkStatus::Success;
}


}  // namespace devio
