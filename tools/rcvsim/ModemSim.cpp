#include "tools/rcvsim/ModemSim.h"

#include <arpa/inet.h>
#include <fcntl.h>
#include <netinet/in.h>
#include <poll.h>
#include <stdlib.h>
#include <sys/eventfd.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <stdexcept>
#include <system_error>

#include "tools/rcvsim/CLocale.h"
#include "tools/rcvsim/TcpServer.h"

namespace rcvsim {
namespace {

constexpr int kIdlePollMs = 200;
constexpr int kMaintainMs = 50;
constexpr std::size_t kMaxLine = 4096;

[[noreturn]] void Fail(const char* what) { throw std::system_error(errno, std::generic_category(), what); }

void SetNonBlocking(int fd) {
    const int flags = ::fcntl(fd, F_GETFL);
    if (flags >= 0) ::fcntl(fd, F_SETFL, flags | O_NONBLOCK);
}

speed_t Speed(int rate) {
    switch (rate) {
        case 9600: return B9600;
        case 19200: return B19200;
        case 38400: return B38400;
        case 57600: return B57600;
        case 230400: return B230400;
        case 460800: return B460800;
        default: return B115200;
    }
}

int MsUntil(ModemSession::Clock::time_point when, ModemSession::Clock::time_point now) {
    if (when <= now) return 0;
    return static_cast<int>(std::min<long long>(std::chrono::ceil<std::chrono::milliseconds>(when - now).count(), kIdlePollMs));
}

void Wake(int fd) {
    const std::uint64_t one = 1;
    [[maybe_unused]] const auto n = ::write(fd, &one, sizeof one);
}

}  // namespace

// ---- the line's pace ----

std::size_t LinePacer::Allowance(Clock::time_point now) const {
    if (!Enabled()) return static_cast<std::size_t>(-1);
    if (now <= freeAt_) return 0;
    return static_cast<std::size_t>(std::chrono::duration<double>(now - freeAt_).count() * rate_);
}

void LinePacer::Consume(std::size_t bytes) {
    if (Enabled()) freeAt_ += std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(bytes / rate_));
}

int LinePacer::WaitMs(Clock::time_point now) const {
    if (!Enabled()) return 0;
    const auto next = freeAt_ + std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(1 / rate_));
    return static_cast<int>(std::max<long long>(1, std::chrono::ceil<std::chrono::milliseconds>(next - now).count()));
}

// ---- one connection ----

ModemSession::ModemSession(ModemCore& core, UniqueFd fd, bool throttle)
    : core_(core), fd_(std::move(fd)), wake_(::eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC)), throttle_(throttle),
      rng_(core.Options().seed) {
    if (!wake_.Valid()) Fail("eventfd");
    SetNonBlocking(fd_.Get());
    struct stat st {};
    isSocket_ = ::fstat(fd_.Get(), &st) == 0 && S_ISSOCK(st.st_mode);
    const auto now = Clock::now();
    // A modem's serial port at 8N1: ten bit-times per character.
    const double rate = throttle_ ? core_.Options().lineRate / 10.0 : 0;
    out_.SetRate(rate);
    in_.SetRate(rate);
    const ModemFaults faults = core_.Faults();
    if (faults.dropAfterMs > 0) dropAt_ = now + std::chrono::milliseconds(faults.dropAfterMs);
}

ModemSession::~ModemSession() {
    if (thread_.joinable()) {
        thread_.request_stop();
        Wake(wake_.Get());
        thread_.join();
    }
}

void ModemSession::Start() {
    thread_ = std::jthread([this](std::stop_token stop) { Run(stop); });
}

void ModemSession::Drop(int afterMs) {
    {
        const std::lock_guard lock(dropMutex_);
        dropAt_ = Clock::now() + std::chrono::milliseconds(std::max(0, afterMs));
    }
    Wake(wake_.Get());
}

void ModemSession::Run(std::stop_token stop) {
    UseCLocaleOnThisThread();
    while (!stop.stop_requested()) {
        const auto now = Clock::now();
        if (!pendingDue_ && !lines_.empty()) {
            const std::string line = std::move(lines_.front());
            lines_.erase(lines_.begin());
            HandleLine(line, now);
            continue;
        }
        if (pendingDue_ && *pendingDue_ <= now) {
            if (output_.empty()) out_.Wake(now);
            output_ += pending_;
            pending_.clear();
            pendingDue_.reset();
        }
        InjectGarbage(now);
        {
            const std::lock_guard lock(dropMutex_);
            if (dropAt_ && now >= *dropAt_) break;
        }
        if (!WriteOutput(now)) break;
        const bool wantRead = inIdle_ || in_.Allowance(now) > 0;
        const bool wantWrite = !output_.empty() && out_.Allowance(now) > 0;
        pollfd fds[2] = {{fd_.Get(), static_cast<short>((wantRead ? POLLIN : 0) | (wantWrite ? POLLOUT : 0)), 0},
                         {wake_.Get(), POLLIN, 0}};
        if (::poll(fds, 2, PollTimeoutMs(now)) < 0 && errno != EINTR) break;
        if (fds[1].revents & POLLIN) {
            std::uint64_t count;
            [[maybe_unused]] const auto n = ::read(wake_.Get(), &count, sizeof count);
        }
        if ((fds[0].revents & (POLLIN | POLLHUP | POLLERR)) && !ReadInput(Clock::now())) break;
    }
    if (fd_.Valid()) ::shutdown(fd_.Get(), SHUT_RDWR);
    fd_.Reset();
    finished_.store(true);
}

void ModemSession::HandleLine(const std::string& line, Clock::time_point now) {
    if (output_.empty()) out_.Wake(now);
    if (core_.IsSimLine(line)) {
        output_ += core_.Execute(line);
        return;
    }
    const ModemFaults faults = core_.Faults();
    if (faults.Silent(line)) return;
    std::string answer = core_.Execute(line);
    if (answer.empty()) return;
    const int latency = faults.LatencyFor(line);
    if (latency <= 0) {
        if (output_.empty()) out_.Wake(now);
        output_ += answer;
        return;
    }
    pending_ = std::move(answer);
    pendingDue_ = now + std::chrono::milliseconds(latency);
}

bool ModemSession::ReadInput(Clock::time_point now) {
    char buffer[4096];
    // The host's bytes start across the line when they are first seen waiting.
    if (inIdle_) in_.Wake(now);
    inIdle_ = false;
    const std::size_t want = std::min(sizeof buffer, in_.Allowance(now));
    if (want == 0) return true;
    const ssize_t n = ::read(fd_.Get(), buffer, want);
    if (n == 0) return false;
    if (n < 0) {
        inIdle_ = true;
        return errno == EAGAIN || errno == EWOULDBLOCK || errno == EINTR;
    }
    // Nothing more waiting: the next byte the host sends starts on an idle line.
    int waiting = 0;
    if (static_cast<std::size_t>(n) < want || (::ioctl(fd_.Get(), FIONREAD, &waiting) == 0 && waiting == 0)) inIdle_ = true;
    in_.Consume(static_cast<std::size_t>(n));
    for (ssize_t i = 0; i < n; ++i) {
        const char c = buffer[i];
        if (c != '\r' && c != '\n') {
            if (input_.size() <= kMaxLine) input_ += c;
            continue;
        }
        // Noise and overlong lines are no command; a modem ignores them.
        const bool noise = input_.size() > kMaxLine ||
                           std::any_of(input_.begin(), input_.end(), [](char ch) { return static_cast<unsigned char>(ch) < 0x20 || static_cast<unsigned char>(ch) >= 0x7F; });
        if (!input_.empty() && !noise) lines_.push_back(input_);
        input_.clear();
    }
    return true;
}

bool ModemSession::WriteOutput(Clock::time_point now) {
    if (output_.empty()) return true;
    const std::size_t want = std::min(output_.size(), out_.Allowance(now));
    if (want == 0) return true;
    const ssize_t n = isSocket_ ? ::send(fd_.Get(), output_.data(), want, MSG_NOSIGNAL | MSG_DONTWAIT)
                                : ::write(fd_.Get(), output_.data(), want);
    if (n < 0) return errno == EAGAIN || errno == EWOULDBLOCK || errno == EINTR;
    out_.Consume(static_cast<std::size_t>(n));
    output_.erase(0, static_cast<std::size_t>(n));
    return true;
}

void ModemSession::InjectGarbage(Clock::time_point now) {
    const ModemFaults faults = core_.Faults();
    if (faults.garbageEveryMs <= 0) {
        nextGarbage_.reset();
        return;
    }
    if (!nextGarbage_) nextGarbage_ = now + std::chrono::milliseconds(faults.garbageEveryMs);
    // Noise between answers (also while one is delayed), never inside one: a burst of bytes no
    // modem sends, then the line idles.
    if (now < *nextGarbage_ || !output_.empty()) return;
    std::string burst(static_cast<std::size_t>(std::max(1, faults.garbageBytes)), '\0');
    for (auto& c : burst) {
        do c = static_cast<char>(rng_() & 0xff);
        while (c == '\r' || c == '\n');
    }
    burst[0] = static_cast<char>(0x80 | (rng_() & 0x7f));
    out_.Wake(now);
    output_ += burst + "\r\n";
    nextGarbage_ = now + std::chrono::milliseconds(faults.garbageEveryMs);
}

int ModemSession::PollTimeoutMs(Clock::time_point now) const {
    int timeout = kIdlePollMs;
    if (!pendingDue_ && !lines_.empty()) return 0;
    if (pendingDue_) timeout = std::min(timeout, MsUntil(*pendingDue_, now));
    if (nextGarbage_) timeout = std::min(timeout, MsUntil(*nextGarbage_, now));
    if (dropAt_) timeout = std::min(timeout, MsUntil(*dropAt_, now));
    if (!output_.empty() && out_.Enabled()) timeout = std::min(timeout, out_.WaitMs(now));
    if (!inIdle_ && in_.Enabled() && in_.Allowance(now) == 0) timeout = std::min(timeout, in_.WaitMs(now));
    return timeout;
}

// ---- the running modem ----

ModemSim::ModemSim(ModemOptions options, std::shared_ptr<const SimClock> clock)
    : core_(options, clock ? std::move(clock) : std::make_shared<RealClock>()), throttle_(options.throttle),
      wake_(::eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC)) {
    if (!wake_.Valid()) Fail("eventfd");
}

ModemSim::~ModemSim() {
    maintainer_.request_stop();
    acceptor_.request_stop();
    Wake(wake_.Get());
    if (maintainer_.joinable()) maintainer_.join();
    if (acceptor_.joinable()) acceptor_.join();
    const std::lock_guard lock(mutex_);
    sessions_.clear();
    ptySession_.reset();
}

void ModemSim::Add(std::shared_ptr<ModemSession> session) {
    session->Start();
    sessions_.erase(std::remove_if(sessions_.begin(), sessions_.end(), [](const auto& s) { return s->Finished(); }), sessions_.end());
    sessions_.push_back(std::move(session));
}

void ModemSim::OpenPty() {
    UniqueFd master(::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC));
    if (!master.Valid()) Fail("posix_openpt");
    if (::grantpt(master.Get()) < 0 || ::unlockpt(master.Get()) < 0) Fail("grantpt");
    char name[128];
    if (::ptsname_r(master.Get(), name, sizeof name) != 0) Fail("ptsname");
    UniqueFd slave(::open(name, O_RDWR | O_NOCTTY | O_CLOEXEC));
    if (!slave.Valid()) Fail("open pty slave");
    termios tio{};
    if (::tcgetattr(slave.Get(), &tio) == 0) {
        ::cfmakeraw(&tio);
        ::cfsetspeed(&tio, Speed(core_.Options().lineRate));
        ::tcsetattr(slave.Get(), TCSANOW, &tio);
    }
    auto session = std::make_shared<ModemSession>(core_, std::move(master), throttle_);
    ptySession_ = session;
    ptySlave_ = std::move(slave);
    ptyPath_ = name;
    Add(std::move(session));
}

std::string ModemSim::StartPty(PathCallback onNewPath) {
    {
        const std::lock_guard lock(mutex_);
        onNewPath_ = std::move(onNewPath);
        OpenPty();
    }
    if (!maintainer_.joinable()) maintainer_ = std::jthread([this](std::stop_token stop) { Maintain(stop); });
    return PtyPath();
}

std::string ModemSim::PtyPath() const {
    const std::lock_guard lock(mutex_);
    return ptyPath_;
}

void ModemSim::Maintain(std::stop_token stop) {
    while (!stop.stop_requested()) {
        pollfd p{wake_.Get(), POLLIN, 0};
        ::poll(&p, 1, kMaintainMs);
        std::string path;
        PathCallback callback;
        {
            const std::lock_guard lock(mutex_);
            if (!ptySession_ || !ptySession_->Finished()) continue;
            ptySlave_.Reset();
            OpenPty();
            path = ptyPath_;
            callback = onNewPath_;
        }
        if (callback) callback(path);
    }
}

int ModemSim::StartTcp(const std::string& address, int port) {
    if (!TcpServer::IsLoopback(address)) throw std::invalid_argument("rcvsim listens on loopback only: " + address);
    listen_.Reset(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
    if (!listen_.Valid()) Fail("socket");
    const int yes = 1;
    ::setsockopt(listen_.Get(), SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
    sockaddr_in sa{};
    sa.sin_family = AF_INET;
    sa.sin_port = htons(static_cast<std::uint16_t>(port));
    ::inet_pton(AF_INET, address == "localhost" ? "127.0.0.1" : address.c_str(), &sa.sin_addr);
    if (::bind(listen_.Get(), reinterpret_cast<sockaddr*>(&sa), sizeof sa) < 0) Fail("bind");
    if (::listen(listen_.Get(), 4) < 0) Fail("listen");
    socklen_t len = sizeof sa;
    if (::getsockname(listen_.Get(), reinterpret_cast<sockaddr*>(&sa), &len) < 0) Fail("getsockname");
    acceptor_ = std::jthread([this](std::stop_token stop) { Accept(stop); });
    return ntohs(sa.sin_port);
}

void ModemSim::Accept(std::stop_token stop) {
    while (!stop.stop_requested()) {
        pollfd fds[2] = {{listen_.Get(), POLLIN, 0}, {wake_.Get(), POLLIN, 0}};
        if (::poll(fds, 2, kIdlePollMs) < 0 && errno != EINTR) return;
        if (!(fds[0].revents & POLLIN)) continue;
        UniqueFd client(::accept4(listen_.Get(), nullptr, nullptr, SOCK_CLOEXEC));
        if (!client.Valid()) continue;
        const std::lock_guard lock(mutex_);
        Add(std::make_shared<ModemSession>(core_, std::move(client), throttle_));
    }
}

void ModemSim::DropLinks(int ms) {
    const std::lock_guard lock(mutex_);
    for (const auto& s : sessions_) s->Drop(ms);
}

}  // namespace rcvsim
