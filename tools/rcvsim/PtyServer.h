#pragma once
#include <functional>
#include <memory>
#include <mutex>
#include <string>

#include "tools/rcvsim/Receiver.h"
#include "tools/rcvsim/Session.h"
#include "tools/rcvsim/SessionHub.h"
#include "tools/rcvsim/UniqueFd.h"

namespace rcvsim {

// The receiver's serial port dev/ser/a on a pseudo-terminal. The simulator keeps the slave
// side open itself, so a host may open and close the device path as often as it likes; when
// the link is dropped (a fault), the pseudo-terminal goes away and a new one with a new path
// replaces it.
class PtyServer {
public:
    using PathCallback = std::function<void(const std::string&)>;

    PtyServer(Receiver& receiver, SessionHub& hub, bool throttle, PathCallback onNewPath = {});
    std::string Path() const;
    // Replaces the pseudo-terminal when its link was dropped; called by the simulator's loop.
    void Maintain();

private:
    void Open();

    Receiver& receiver_;
    SessionHub& hub_;
    const bool throttle_;
    PathCallback onNewPath_;
    mutable std::mutex mutex_;
    std::string path_;
    UniqueFd slave_;
    std::shared_ptr<Session> session_;
};

}  // namespace rcvsim
