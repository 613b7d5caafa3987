#include "tools/rcvsim/RcvSim.h"

#include "tools/rcvsim/CLocale.h"

#include <sys/socket.h>

#include <cerrno>
#include <system_error>

namespace rcvsim {
namespace {
// How often scheduled output is looked for: well under the shortest useful period.
constexpr auto kTick = std::chrono::milliseconds(10);
}  // namespace

RcvSim::RcvSim(SimOptions options, std::shared_ptr<const SimClock> clock)
    : clock_(clock ? std::move(clock) : std::make_shared<RealClock>()),
      receiver_(std::move(options), clock_),
      loop_([this](std::stop_token stop) {
          UseCLocaleOnThisThread();
          Loop(stop);
      }) {
    constructing_.Restore();
}

RcvSim::~RcvSim() {
    loop_.request_stop();
    if (loop_.joinable()) loop_.join();
    {
        const std::lock_guard lock(mutex_);
        tcp_.clear();
        pty_.reset();
    }
    hub_.Clear();
}

void RcvSim::Loop(std::stop_token stop) {
    while (!stop.stop_requested()) {
        hub_.Dispatch(receiver_.Poll());
        hub_.Reap();
        PtyServer* pty = nullptr;
        {
            const std::lock_guard lock(mutex_);
            pty = pty_.get();
        }
        // Outside the lock: the new-path callback may ask for PtyPath(). The server lives
        // until this loop has stopped.
        if (pty) pty->Maintain();
        std::this_thread::sleep_for(kTick);
    }
}

int RcvSim::OpenInProcess() {
    int fds[2];
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, fds) < 0)
        throw std::system_error(errno, std::generic_category(), "socketpair");
    UniqueFd served(fds[0]);
    auto session = std::make_shared<Session>(receiver_, std::move(served), "dev/ser/a", false);
    session->Start();
    hub_.Add(std::move(session));
    return fds[1];
}

int RcvSim::StartTcp(const std::string& address, int port) {
    auto server = std::make_unique<TcpServer>(receiver_, hub_, address, port, receiver_.Options().throttle);
    const int bound = server->Port();
    const std::lock_guard lock(mutex_);
    tcp_.push_back(std::move(server));
    return bound;
}

std::string RcvSim::StartPty(PtyServer::PathCallback onNewPath) {
    const std::lock_guard lock(mutex_);
    if (!pty_) pty_ = std::make_unique<PtyServer>(receiver_, hub_, receiver_.Options().throttle, std::move(onNewPath));
    return pty_->Path();
}

std::string RcvSim::PtyPath() const {
    const std::lock_guard lock(mutex_);
    return pty_ ? pty_->Path() : std::string();
}

}  // namespace rcvsim
