#pragma once
#include <string>
#include <thread>

#include "tools/rcvsim/Receiver.h"
#include "tools/rcvsim/SessionHub.h"
#include "tools/rcvsim/UniqueFd.h"

namespace rcvsim {

// Listens on a loopback address; each accepted connection becomes the next free TCP port
// of the receiver (dev/tcp/a .. dev/tcp/e). A sixth connection is closed at once.
class TcpServer {
public:
    // Throws std::invalid_argument for an address that is not loopback, std::system_error
    // when the socket cannot be set up. Port 0 takes a free port.
    TcpServer(Receiver& receiver, SessionHub& hub, const std::string& address, int port, bool throttle);
    ~TcpServer();
    TcpServer(const TcpServer&) = delete;
    TcpServer& operator=(const TcpServer&) = delete;

    int Port() const { return port_; }
    const std::string& Address() const { return address_; }
    static bool IsLoopback(const std::string& address);

private:
    void AcceptLoop(std::stop_token stop);

    Receiver& receiver_;
    SessionHub& hub_;
    const bool throttle_;
    std::string address_;
    int port_ = 0;
    UniqueFd listen_;
    UniqueFd wake_;
    std::jthread thread_;
};

}  // namespace rcvsim
