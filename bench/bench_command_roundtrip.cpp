// Command round trips per second through the command layer to the simulator over loopback TCP,
// against a raw socket ping-pong of the same sizes in the same run. Goal: ratio >= 0.5.
#include <arpa/inet.h>
#include <benchmark/benchmark.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <unistd.h>

#include <chrono>
#include <string>
#include <thread>

#include "fenklib/receiver/CVokReceiverMate.h"
#include "platform/devio/CReceiver.h"
#include "platform/devio/lexer/CStreamLexer.h"
#include "tools/rcvsim/RcvSim.h"

namespace {

using Clock = std::chrono::steady_clock;

// A loopback peer that answers every line of `request` bytes with `reply` bytes.
class PingPongPeer {
public:
    PingPongPeer(size_t requestBytes, std::string reply) : m_request(requestBytes), m_reply(std::move(reply)) {
        m_listen = ::socket(AF_INET, SOCK_STREAM, 0);
        sockaddr_in a{};
        a.sin_family = AF_INET;
        a.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        ::bind(m_listen, reinterpret_cast<sockaddr*>(&a), sizeof a);
        ::listen(m_listen, 1);
        socklen_t len = sizeof a;
        ::getsockname(m_listen, reinterpret_cast<sockaddr*>(&a), &len);
        m_port = ntohs(a.sin_port);
        m_thread = std::thread([this] { Serve(); });
        m_client = ::socket(AF_INET, SOCK_STREAM, 0);
        ::connect(m_client, reinterpret_cast<sockaddr*>(&a), sizeof a);
        const int one = 1;
        ::setsockopt(m_client, IPPROTO_TCP, TCP_NODELAY, &one, sizeof one);
    }
    ~PingPongPeer() {
        ::shutdown(m_client, SHUT_RDWR);
        ::close(m_client);
        m_thread.join();
        ::close(m_listen);
    }
    void RoundTrip(const std::string& request) {
        ::send(m_client, request.data(), request.size(), 0);
        std::string got(m_reply.size(), '\0');
        ReadAll(m_client, got.data(), got.size());
    }

private:
    static bool ReadAll(int fd, char* p, size_t n) {
        while (n > 0) {
            const ssize_t r = ::recv(fd, p, n, 0);
            if (r <= 0) return false;
            p += r;
            n -= static_cast<size_t>(r);
        }
        return true;
    }
    void Serve() {
        const int fd = ::accept(m_listen, nullptr, nullptr);
        const int one = 1;
        ::setsockopt(fd, IPPROTO_TCP, TCP_NODELAY, &one, sizeof one);
        std::string line(m_request, '\0');
        while (ReadAll(fd, line.data(), line.size())) ::send(fd, m_reply.data(), m_reply.size(), 0);
        ::close(fd);
    }
    size_t m_request;
    std::string m_reply;
    int m_listen = -1, m_client = -1, m_port = 0;
    std::thread m_thread;
};

void BM_CommandRoundTrip(benchmark::State& state) {
    rcvsim::RcvSim sim;
    const int port = sim.StartTcp("127.0.0.1", 0);
    const auto rx = devio::CReceiver::Open(devio::IPortAddr::Parse(L"tcp://127.0.0.1:" + std::to_wstring(port)));
    devio::CVokReceiverMate mate{basekit::CSmartPtr<devio::IReceiver>(rx.Get())};
    const std::string request = "%12345%print,rcv/model\r\n";
    PingPongPeer raw(request.size(), devio::CStreamLexer::EncodeFrame('R', "12345", 0, "FNK-600"));
    // Blocks of each kind in turn, so that both see the same machine and neither runs while
    // the other's threads are still settling.
    constexpr int kBlock = 250;
    double mateSeconds = 0, rawSeconds = 0;
    for (auto _ : state) {
        auto t0 = Clock::now();
        for (int i = 0; i < kBlock; ++i) benchmark::DoNotOptimize(mate.ExecuteCommand(L"print,rcv/model"));
        auto t1 = Clock::now();
        for (int i = 0; i < kBlock; ++i) raw.RoundTrip(request);
        auto t2 = Clock::now();
        mateSeconds += std::chrono::duration<double>(t1 - t0).count();
        rawSeconds += std::chrono::duration<double>(t2 - t1).count();
    }
    const double n = static_cast<double>(state.iterations()) * kBlock;
    state.counters["mate_per_s"] = n / mateSeconds;
    state.counters["raw_per_s"] = n / rawSeconds;
    state.counters["ratio"] = rawSeconds / mateSeconds;
}
BENCHMARK(BM_CommandRoundTrip)->Unit(benchmark::kMillisecond)->Iterations(20);

}  // namespace

BENCHMARK_MAIN();
