// Simulator throughput: command execution, NMEA generation and line-rate pacing.
#include <benchmark/benchmark.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <chrono>
#include <memory>

#include "tools/rcvsim/Receiver.h"
#include "tools/rcvsim/Session.h"

namespace {

using namespace rcvsim;

void BM_ExecutePrint(benchmark::State& state) {
    Receiver rx({}, std::make_shared<ManualClock>());
    for (auto _ : state) benchmark::DoNotOptimize(rx.Execute("print,dev/ser/a/rate", "dev/ser/a"));
}
BENCHMARK(BM_ExecutePrint);

void BM_ParameterDump(benchmark::State& state) {
    SimOptions options;
    options.dumpBytes = static_cast<std::size_t>(state.range(0));
    Receiver rx(options, std::make_shared<ManualClock>());
    for (auto _ : state) benchmark::DoNotOptimize(rx.Execute("print,/par:on", "dev/ser/a"));
    state.SetBytesProcessed(static_cast<long long>(state.iterations()) * state.range(0));
}
BENCHMARK(BM_ParameterDump)->Arg(300 * 1024)->Arg(4 * 1024 * 1024);

void BM_NmeaEpoch(benchmark::State& state) {
    auto clock = std::make_shared<ManualClock>();
    Receiver rx({}, clock);
    rx.Execute("em,/dev/ser/a,/msg/nmea/GGA,/msg/nmea/RMC,/msg/nmea/GSA,/msg/nmea/ZDA,"
               "/msg/nmea/GSV:{1.000000,0.000000,0,0x0}", "dev/ser/a");
    for (auto _ : state) {
        clock->Advance(1.0);
        benchmark::DoNotOptimize(rx.Poll());
    }
}
BENCHMARK(BM_NmeaEpoch);

// Bytes a paced dev/ser/a delivers per second; the counter should sit at rate / 10 (8N1).
void BM_PacedLine(benchmark::State& state) {
    SimOptions options;
    options.lineRate = static_cast<int>(state.range(0));
    options.dumpBytes = 8 * 1024 * 1024;
    Receiver rx(options, std::make_shared<ManualClock>());
    int fds[2];
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, fds) != 0) {
        state.SkipWithError("socketpair");
        return;
    }
    UniqueFd host(fds[1]);
    Session session(rx, UniqueFd(fds[0]), "dev/ser/a", true);
    session.Start();
    const char cmd[] = "%1%print,/par:on\r\n";
    if (::write(host.Get(), cmd, sizeof cmd - 1) < 0) return;
    long long total = 0;
    bool started = false;
    auto start = std::chrono::steady_clock::now();
    char buf[65536];
    for (auto _ : state) {
        pollfd p{host.Get(), POLLIN, 0};
        if (::poll(&p, 1, 1000) <= 0) continue;
        const ssize_t n = ::read(host.Get(), buf, sizeof buf);
        if (n <= 0) continue;
        // The clock starts with the first read: building the dump is not line time.
        if (!started) {
            started = true;
            start = std::chrono::steady_clock::now();
            continue;
        }
        total += n;
    }
    const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    state.counters["line_bytes_per_s"] = static_cast<double>(total) / seconds;
    state.counters["expected_bytes_per_s"] = options.lineRate / 10.0;
}
BENCHMARK(BM_PacedLine)->Arg(115200)->Arg(460800)->Iterations(400)->UseRealTime();

}  // namespace

BENCHMARK_MAIN();
