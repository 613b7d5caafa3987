#include "tools/rcvsim/PtyServer.h"

#include <fcntl.h>
#include <stdlib.h>
#include <termios.h>

#include <array>
#include <cerrno>
#include <system_error>

namespace rcvsim {
namespace {

[[noreturn]] void Fail(const char* what) { throw std::system_error(errno, std::generic_category(), what); }

speed_t Speed(int rate) {
    struct Pair {
        int rate;
        speed_t speed;
    };
    static constexpr std::array kSpeeds{Pair{9600, B9600},     Pair{19200, B19200},
                                        Pair{38400, B38400},   Pair{57600, B57600},
                                        Pair{115200, B115200}, Pair{230400, B230400},
                                        Pair{460800, B460800}, Pair{921600, B921600}};
    for (const auto& p : kSpeeds)
        if (p.rate == rate) return p.speed;
    return B115200;
}

}  // namespace

PtyServer::PtyServer(Receiver& receiver, SessionHub& hub, bool throttle, PathCallback onNewPath)
    : receiver_(receiver), hub_(hub), throttle_(throttle), onNewPath_(std::move(onNewPath)) {
    Open();
}

void PtyServer::Open() {
    UniqueFd master(::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC));
    if (!master.Valid()) Fail("posix_openpt");
    if (::grantpt(master.Get()) < 0 || ::unlockpt(master.Get()) < 0) Fail("grantpt");
    char name[128];
    if (::ptsname_r(master.Get(), name, sizeof name) != 0) Fail("ptsname");
    UniqueFd slave(::open(name, O_RDWR | O_NOCTTY | O_CLOEXEC));
    if (!slave.Valid()) Fail("open pty slave");
    // Raw, so the line discipline neither echoes the host's commands nor rewrites bytes.
    termios tio{};
    if (::tcgetattr(slave.Get(), &tio) == 0) {
        ::cfmakeraw(&tio);
        ::cfsetspeed(&tio, Speed(receiver_.Options().lineRate));
        ::tcsetattr(slave.Get(), TCSANOW, &tio);
    }
    auto session = std::make_shared<Session>(receiver_, std::move(master), "dev/ser/a", throttle_);
    session->Start();
    hub_.Add(session);
    const std::lock_guard lock(mutex_);
    path_ = name;
    slave_ = std::move(slave);
    session_ = std::move(session);
}

std::string PtyServer::Path() const {
    const std::lock_guard lock(mutex_);
    return path_;
}

void PtyServer::Maintain() {
    {
        const std::lock_guard lock(mutex_);
        if (!session_ || !session_->Finished()) return;
        slave_.Reset();
        session_.reset();
    }
    Open();
    if (onNewPath_) onNewPath_(Path());
}

}  // namespace rcvsim
