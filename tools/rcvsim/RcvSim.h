#pragma once
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "tools/rcvsim/CLocale.h"
#include "tools/rcvsim/FaultPlan.h"
#include "tools/rcvsim/PtyServer.h"
#include "tools/rcvsim/Receiver.h"
#include "tools/rcvsim/SessionHub.h"
#include "tools/rcvsim/SimClock.h"
#include "tools/rcvsim/SimOptions.h"
#include "tools/rcvsim/TcpServer.h"

namespace rcvsim {

// A running simulated receiver: the core plus its links (in-process socket pairs, TCP on
// loopback, a pseudo-terminal) and the loop that sends scheduled output and events.
//
//   rcvsim::RcvSim sim;                       // real clock, default options
//   int fd = sim.OpenInProcess();             // the "sim:" link; the caller closes fd
//   int port = sim.StartTcp("127.0.0.1", 0);  // "tcp://127.0.0.1:<port>"
//   std::string tty = sim.StartPty();         // "serial:<tty>?baud=115200"
class RcvSim {
public:
    explicit RcvSim(SimOptions options = {}, std::shared_ptr<const SimClock> clock = nullptr);
    ~RcvSim();
    RcvSim(const RcvSim&) = delete;
    RcvSim& operator=(const RcvSim&) = delete;

    Receiver& Core() { return receiver_; }

    // A connected stream socket whose other end is served as dev/ser/a; the caller owns it.
    int OpenInProcess();
    // Listens on a loopback address; returns the bound port. Throws std::invalid_argument
    // for other addresses.
    int StartTcp(const std::string& address = "127.0.0.1", int port = 0);
    // Opens the pseudo-terminal served as dev/ser/a; returns its device path.
    std::string StartPty(PtyServer::PathCallback onNewPath = {});
    std::string PtyPath() const;

    FaultPlan Faults() const { return receiver_.Faults(); }
    void SetFaults(const FaultPlan& plan) { receiver_.SetFaults(plan); }
    // Closes every open connection after `afterMs` (listeners stay).
    void DropLinks(int afterMs = 0) { hub_.DropAll(afterMs); }
    std::size_t ConnectionCount() const { return hub_.Count(); }

private:
    void Loop(std::stop_token stop);

    CLocaleScope constructing_;   // first: the members below are built in the C locale
    std::shared_ptr<const SimClock> clock_;
    Receiver receiver_;
    SessionHub hub_;
    mutable std::mutex mutex_;
    std::vector<std::unique_ptr<TcpServer>> tcp_;
    std::unique_ptr<PtyServer> pty_;
    std::jthread loop_;  // stopped first, before the servers and sessions go
};

}  // namespace rcvsim
