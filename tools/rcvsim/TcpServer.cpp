#include "tools/rcvsim/TcpServer.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/socket.h>

#include <array>
#include <cerrno>
#include <stdexcept>
#include <system_error>

namespace rcvsim {
namespace {

using namespace std::string_view_literals;
constexpr std::array kTcpPorts{"dev/tcp/a"sv, "dev/tcp/b"sv, "dev/tcp/c"sv, "dev/tcp/d"sv, "dev/tcp/e"sv};

[[noreturn]] void Fail(const char* what) { throw std::system_error(errno, std::generic_category(), what); }

std::string Canonical(const std::string& address) { return address == "localhost" ? "127.0.0.1" : address; }

}  // namespace

bool TcpServer::IsLoopback(const std::string& address) {
    in_addr a{};
    if (::inet_pton(AF_INET, Canonical(address).c_str(), &a) != 1) return false;
    return (ntohl(a.s_addr) >> 24) == 127;
}

TcpServer::TcpServer(Receiver& receiver, SessionHub& hub, const std::string& address, int port, bool throttle)
    : receiver_(receiver), hub_(hub), throttle_(throttle), address_(Canonical(address)) {
    if (!IsLoopback(address_)) throw std::invalid_argument("rcvsim listens on loopback only: " + address);
    if (port < 0 || port > 65535) throw std::invalid_argument("bad port");
    listen_.Reset(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
    if (!listen_.Valid()) Fail("socket");
    const int yes = 1;
    ::setsockopt(listen_.Get(), SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
    sockaddr_in sa{};
    sa.sin_family = AF_INET;
    sa.sin_port = htons(static_cast<std::uint16_t>(port));
    ::inet_pton(AF_INET, address_.c_str(), &sa.sin_addr);
    if (::bind(listen_.Get(), reinterpret_cast<sockaddr*>(&sa), sizeof sa) < 0) Fail("bind");
    if (::listen(listen_.Get(), 8) < 0) Fail("listen");
    socklen_t len = sizeof sa;
    if (::getsockname(listen_.Get(), reinterpret_cast<sockaddr*>(&sa), &len) < 0) Fail("getsockname");
    port_ = ntohs(sa.sin_port);
    wake_.Reset(::eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC));
    if (!wake_.Valid()) Fail("eventfd");
    thread_ = std::jthread([this](std::stop_token stop) { AcceptLoop(stop); });
}

TcpServer::~TcpServer() {
    thread_.request_stop();
    const std::uint64_t one = 1;
    [[maybe_unused]] const auto n = ::write(wake_.Get(), &one, sizeof one);
    if (thread_.joinable()) thread_.join();
}

void TcpServer::AcceptLoop(std::stop_token stop) {
    while (!stop.stop_requested()) {
        pollfd fds[2] = {{listen_.Get(), POLLIN, 0}, {wake_.Get(), POLLIN, 0}};
        if (::poll(fds, 2, 500) < 0 && errno != EINTR) return;
        if (!(fds[0].revents & POLLIN)) continue;
        UniqueFd client(::accept4(listen_.Get(), nullptr, nullptr, SOCK_CLOEXEC));
        if (!client.Valid()) continue;
        hub_.Reap();
        const std::string port = hub_.FreePort(kTcpPorts);
        if (port.empty()) continue;  // all five TCP ports busy: the receiver refuses
        auto session = std::make_shared<Session>(receiver_, std::move(client), port, throttle_);
        session->Start();
        hub_.Add(std::move(session));
    }
}

}  // namespace rcvsim
