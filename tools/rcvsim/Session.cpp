#include "tools/rcvsim/Session.h"

#include "tools/rcvsim/CLocale.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <system_error>

#include "tools/rcvsim/CommandLine.h"
#include "tools/rcvsim/Frame.h"
#include "tools/rcvsim/LoaderLink.h"

namespace rcvsim {
namespace {

constexpr int kIdlePollMs = 200;

void SetNonBlocking(int fd) {
    const int flags = ::fcntl(fd, F_GETFL);
    if (flags >= 0) ::fcntl(fd, F_SETFL, flags | O_NONBLOCK);
}

int MsUntil(Session::Clock::time_point when, Session::Clock::time_point now) {
    if (when <= now) return 0;
    const auto ms = std::chrono::ceil<std::chrono::milliseconds>(when - now).count();
    return static_cast<int>(std::min<long long>(ms, kIdlePollMs));
}

}  // namespace

Session::Session(Receiver& receiver, UniqueFd fd, std::string port, bool throttle)
    : receiver_(receiver),
      fd_(std::move(fd)),
      wake_(::eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC)),
      port_(std::move(port)),
      throttleEnabled_(throttle),
      rng_(receiver.Options().seed) {
    if (!wake_.Valid()) throw std::system_error(errno, std::generic_category(), "eventfd");
    SetNonBlocking(fd_.Get());
    struct stat st {};
    isSocket_ = ::fstat(fd_.Get(), &st) == 0 && S_ISSOCK(st.st_mode);
    if (::isatty(fd_.Get())) line_ = receiver_.PortLine(port_);
    const auto now = Clock::now();
    UpdateRate(now);
    const FaultPlan plan = receiver_.Faults();
    if (plan.dropAfterMs > 0) dropAt_ = now + std::chrono::milliseconds(plan.dropAfterMs);
}

Session::~Session() {
    if (thread_.joinable()) {
        thread_.request_stop();
        Wake();
        thread_.join();
    }
}

void Session::Start() {
    thread_ = std::jthread([this](std::stop_token stop) { Run(stop); });
}

void Session::Post(std::string_view bytes, bool periodic) {
    {
        const std::lock_guard lock(outMutex_);
        if (periodic && out_.size() > kMaxBacklog) return;
        out_.append(bytes);
    }
    Wake();
}

void Session::Drop(int afterMs) {
    const std::lock_guard lock(outMutex_);
    dropAt_ = Clock::now() + std::chrono::milliseconds(std::max(0, afterMs));
}

void Session::Wake() {
    const std::uint64_t one = 1;
    [[maybe_unused]] const auto n = ::write(wake_.Get(), &one, sizeof one);
}

void Session::UpdateRate(Clock::time_point now) {
    if (line_ && !receiver_.Faults().lineStays) line_ = receiver_.PortLine(port_);
    const double rate = throttleEnabled_ ? receiver_.PortBytesPerSecond(port_) : 0;
    if (rate == throttle_.Rate()) return;
    throttle_.SetRate(rate, now);
    inThrottle_.SetRate(rate, now);
    lineRate_.store(rate);
}

void Session::Run(std::stop_token stop) {
    UseCLocaleOnThisThread();
    while (!stop.stop_requested()) {
        auto now = Clock::now();
        if (!reply_ && !lines_.empty()) {
            const HostLine line = std::move(lines_.front());
            lines_.pop_front();
            HandleLine(line, now);
            continue;
        }
        DeliverDueReply(now);
        InjectGarbage(now);
        LoaderTick(now);
        {
            const std::lock_guard lock(outMutex_);
            if (dropAt_ && now >= *dropAt_) break;
        }
        if (!WriteOutput(now)) break;
        bool wantWrite;
        {
            const std::lock_guard lock(outMutex_);
            wantWrite = !out_.empty() && throttle_.Allowance(now) > 0;
        }
        // A paced line takes in no more than its rate; the rest waits in the kernel's buffer.
        const bool wantRead = inThrottle_.Allowance(now) > 0;
        pollfd fds[2] = {{fd_.Get(), static_cast<short>((wantRead ? POLLIN : 0) | (wantWrite ? POLLOUT : 0)), 0},
                         {wake_.Get(), POLLIN, 0}};
        if (::poll(fds, 2, PollTimeoutMs(now)) < 0 && errno != EINTR) break;
        if (fds[1].revents & POLLIN) {
            std::uint64_t count;
            [[maybe_unused]] const auto n = ::read(wake_.Get(), &count, sizeof count);
        }
        if ((fds[0].revents & (POLLIN | POLLHUP | POLLERR)) && !ReadInput()) break;
        if (fds[0].revents & POLLHUP && !wantRead) break;
    }
    if (fd_.Valid()) ::shutdown(fd_.Get(), SHUT_RDWR);
    fd_.Reset();
    finished_.store(true);
}

void Session::HandleLine(const HostLine& line, Clock::time_point now) {
    const auto commands = CommandLine::SplitJoined(line.command);
    const std::string word = commands.empty() ? "" : CommandLine::Word(commands.front());
    const auto args = commands.empty() ? std::vector<std::string>{} : CommandLine::Arguments(commands.front());
    const std::string path = args.empty() ? "" : CommandLine::ParseTarget(args.front()).path;
    // The simulator's own "sim," commands are never delayed or silenced, so tests can undo
    // the faults they set.
    const bool own = word == "sim";
    const FaultPlan plan = receiver_.Faults();
    if (!own && plan.Silent(path)) return;
    const Reply r = receiver_.Execute(line.command, port_);
    if (r.effect == ReplyEffect::NoAnswer) return;
    const int latency = own ? 0 : plan.LatencyFor(path);
    reply_ = PendingReply{now + std::chrono::milliseconds(latency), line.tag, Frame::Reply(line.tag, r.status, r.text),
                          r.effect, r.dropAfterMs};
}

void Session::DeliverDueReply(Clock::time_point now) {
    if (!reply_ || reply_->due > now) return;
    PostReply(reply_->tag, reply_->bytes);
    if (reply_->effect == ReplyEffect::DropLink) {
        const std::lock_guard lock(outMutex_);
        // The answer goes out first; then the line falls.
        dropAt_ = now + std::chrono::milliseconds(std::max(reply_->dropAfterMs, 50));
    }
    reply_.reset();
}

void Session::InjectGarbage(Clock::time_point now) {
    const FaultPlan plan = receiver_.Faults();
    if (plan.garbageEveryMs <= 0) {
        nextGarbage_.reset();
        return;
    }
    if (!nextGarbage_) nextGarbage_ = now + std::chrono::milliseconds(plan.garbageEveryMs);
    if (now < *nextGarbage_) return;
    std::string burst(static_cast<std::size_t>(plan.garbageBytes), '\0');
    for (auto& c : burst) c = static_cast<char>(rng_() & 0xff);
    Post(burst, true);
    nextGarbage_ = now + std::chrono::milliseconds(plan.garbageEveryMs);
}

bool Session::ReadInput() {
    char buf[4096];
    const std::size_t want = std::min(sizeof buf, inThrottle_.Allowance(Clock::now()));
    if (want == 0) return true;
    const ssize_t n = ::read(fd_.Get(), buf, want);
    if (n == 0) return false;
    if (n < 0) return errno == EAGAIN || errno == EWOULDBLOCK || errno == EINTR;
    inThrottle_.Consume(static_cast<std::size_t>(n));
    // A host at another rate or framing is noise on the line: no command gets through.
    if (!HearsHost()) return true;
    if (receiver_.InLoader()) {
        LoaderInput(std::string_view(buf, static_cast<std::size_t>(n)), Clock::now());
        return true;
    }
    for (auto& line : reader_.Feed(std::string_view(buf, static_cast<std::size_t>(n)))) {
        // An abort acts at once, ahead of the commands still waiting.
        if (line.abort) Abort(line.tag);
        else lines_.push_back(std::move(line));
    }
    return true;
}

bool Session::HearsHost() const {
    if (!line_) return true;
    const std::optional<LineSettings> host = ReadTerminalLine(fd_.Get());
    return !host || *host == *line_;
}

void Session::Abort(const std::string& tag) {
    const auto waiting = std::find_if(lines_.begin(), lines_.end(), [&](const HostLine& l) { return l.tagged && l.tag == tag; });
    if (waiting != lines_.end()) {
        lines_.erase(waiting);
        Post(Frame::CutMark(tag), false);
        return;
    }
    if (reply_ && reply_->tag == tag && reply_->effect == ReplyEffect::None) {
        reply_.reset();
        Post(Frame::CutMark(tag), false);
        return;
    }
    if (CutQueuedReply(tag)) Wake();
}

void Session::PostReply(const std::string& tag, const std::string& bytes) {
    {
        const std::lock_guard lock(outMutex_);
        if (!tag.empty())
            queuedReplies_.push_back(QueuedReply{tag, static_cast<long long>(out_.size()), bytes.size()});
        out_.append(bytes);
    }
    Wake();
}

bool Session::CutQueuedReply(const std::string& tag) {
    const std::lock_guard lock(outMutex_);
    const auto it = std::find_if(queuedReplies_.begin(), queuedReplies_.end(), [&](const QueuedReply& q) { return q.tag == tag; });
    if (it == queuedReplies_.end()) return false;   // already on the wire whole: nothing to stop
    const std::string mark = Frame::CutMark(tag);
    const long long end = it->start + static_cast<long long>(it->length);
    // A reply with less left than the mark itself is simply finished.
    if (end <= static_cast<long long>(mark.size())) return false;
    const auto from = static_cast<std::size_t>(std::max(0LL, it->start));
    out_.replace(from, static_cast<std::size_t>(end) - from, mark);
    const long long shift = static_cast<long long>(mark.size()) - (end - static_cast<long long>(from));
    for (auto later = std::next(it); later != queuedReplies_.end(); ++later) later->start += shift;
    queuedReplies_.erase(it);
    return true;
}

void Session::Written(std::size_t bytes) {
    // Called with outMutex_ held.
    for (auto& q : queuedReplies_) q.start -= static_cast<long long>(bytes);
    while (!queuedReplies_.empty() && queuedReplies_.front().start + static_cast<long long>(queuedReplies_.front().length) <= 0)
        queuedReplies_.pop_front();
}

bool Session::WriteOutput(Clock::time_point now) {
    std::unique_lock lock(outMutex_);
    if (out_.empty()) {
        lock.unlock();
        UpdateRate(now);  // a new line rate applies once everything before it has left
        return true;
    }
    const std::size_t want = std::min(out_.size(), throttle_.Allowance(now));
    if (want == 0) return true;
    // Sockets are written with send() so that a vanished peer is an error, not a SIGPIPE.
    const ssize_t n = isSocket_ ? ::send(fd_.Get(), out_.data(), want, MSG_NOSIGNAL | MSG_DONTWAIT)
                                : ::write(fd_.Get(), out_.data(), want);
    if (n < 0) return errno == EAGAIN || errno == EWOULDBLOCK || errno == EINTR;
    throttle_.Consume(static_cast<std::size_t>(n));
    if (receiver_.Options().onSent) receiver_.Options().onSent(port_, std::string_view(out_.data(), static_cast<std::size_t>(n)));
    out_.erase(0, static_cast<std::size_t>(n));
    Written(static_cast<std::size_t>(n));
    return true;
}

int Session::PollTimeoutMs(Clock::time_point now) {
    int timeout = kIdlePollMs;
    if (!reply_ && !lines_.empty()) return 0;
    if (reply_) timeout = std::min(timeout, MsUntil(reply_->due, now));
    if (nextGarbage_) timeout = std::min(timeout, MsUntil(*nextGarbage_, now));
    timeout = std::min(timeout, LoaderWaitMs(now));
    const std::lock_guard lock(outMutex_);
    if (dropAt_) timeout = std::min(timeout, MsUntil(*dropAt_, now));
    if (!out_.empty() && throttle_.Enabled())
        timeout = std::min(timeout, static_cast<int>(std::max<long long>(1, throttle_.Wait(now).count())));
    if (inThrottle_.Enabled() && inThrottle_.Allowance(now) == 0)
        timeout = std::min(timeout, static_cast<int>(std::max<long long>(1, inThrottle_.Wait(now).count())));
    return timeout;
}

}  // namespace rcvsim
