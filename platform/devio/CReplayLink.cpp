#include "platform/devio/CReplayLink.h"

#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>

#include "platform/basekit/CWinException.h"

namespace devio {

namespace {
constexpr double kBitsPerCharacter = 10;   // start, eight data bits, stop
}  // namespace

std::unique_ptr<CLink> CReplayLink::Open(const CSmartPtr<IPortAddr>& address) {
    std::ifstream capture(address->GetName().ToUtf8(), std::ios::binary);
    if (!capture) throw basekit::CWinException("ReplayLink", __LINE__, address->ToUrl(), basekit::kErrorFileNotFound);
    if (address->GetProperties()->GetProperty(L"BaudRate").toDouble() < 1)
        throw basekit::CWinException("ReplayLink", __LINE__, address->ToUrl(), basekit::kErrorInvalidParameter);
    int fds[2];
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0, fds) < 0)
        throw basekit::CWinException("ReplayLink", __LINE__, address->ToUrl(), basekit::SystemErrorFromErrno(errno));
    return std::unique_ptr<CLink>(new CReplayLink(address, fds[0], fds[1], std::move(capture)));
}

CReplayLink::CReplayLink(const CSmartPtr<IPortAddr>& address, int readFd, int feedFd, std::ifstream capture)
    : CLink(address, readFd, Traffic::NmeaOnly),
      m_feedFd(feedFd),
      m_capture(std::move(capture)),
      m_bytesPerSecond(address->GetProperties()->GetProperty(L"BaudRate").toDouble() / kBitsPerCharacter),
      m_loop(address->GetProperties()->GetProperty(L"Loop").toInt() != 0) {
    m_feeder = std::thread([this] { Feed(); });
}

CReplayLink::~CReplayLink() {
    m_stop.Set();
    if (m_feeder.joinable()) m_feeder.join();
    if (m_feedFd >= 0) ::close(m_feedFd);
}

bool CReplayLink::NextLine(std::string& line) {
    for (int rewinds = 0; rewinds < 2;) {
        if (std::getline(m_capture, line)) {
            if (!m_capture.eof()) line += '\n';
            if (!line.empty() && line.front() != '#') return true;
            continue;
        }
        if (!m_loop) return false;
        // A capture of nothing but annotations would loop for ever without sending a byte.
        ++rewinds;
        m_capture.clear();
        m_capture.seekg(0);
    }
    return false;
}

// Waits for room in the socket, or for the stop; false on stop or a closed reader.
bool CReplayLink::WaitUntilWritable() {
    pollfd fds[2] = {{m_feedFd, POLLOUT, 0}, {m_stop.Handle(), POLLIN, 0}};
    while (::poll(fds, 2, -1) < 0)
        if (errno != EINTR) return false;
    return !(fds[1].revents & POLLIN) && !(fds[0].revents & (POLLERR | POLLHUP));
}

void CReplayLink::Feed() {
    using Clock = std::chrono::steady_clock;
    const auto start = Clock::now();
    double sent = 0;
    std::string line;
    while (NextLine(line)) {
        // Each line leaves when a line at this rate would have carried the bytes before it.
        const auto due = start + std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(sent / m_bytesPerSecond));
        const auto wait = std::chrono::ceil<std::chrono::milliseconds>(due - Clock::now()).count();
        if (wait > 0 && m_stop.Wait(static_cast<unsigned>(wait)).kind == basekit::WaitResult::Signalled) return;
        for (std::string_view rest(line); !rest.empty();) {
            const ssize_t n = ::send(m_feedFd, rest.data(), rest.size(), MSG_NOSIGNAL);
            if (n > 0) {
                rest.remove_prefix(static_cast<size_t>(n));
                continue;
            }
            if (n < 0 && errno == EINTR) continue;
            if (n < 0 && errno != EAGAIN && errno != EWOULDBLOCK) return;
            if (!WaitUntilWritable()) return;
        }
        sent += static_cast<double>(line.size());
    }
    // The end of the capture is the end of the stream.
    ::shutdown(m_feedFd, SHUT_WR);
}

}  // namespace devio
