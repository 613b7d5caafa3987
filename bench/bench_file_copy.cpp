// Downloading receiver log files through the file copier, printed:
//  - a 50 MB file from the simulator over loopback TCP: MB/s (goal >= 50) and how much the
//    process's peak memory grew during the copy (the copier streams to disk, so it should not
//    grow by anything like the file's size);
//  - a 2 MB file over a pseudo-terminal at 115200 bit/s with the simulator pacing at the line
//    rate: the time against the floor, the bytes that crossed the line (both ways: commands and
//    replies alternate) at 10 bits per byte (goal: within 1.1 of it).
// Every copy is bounded: a fixed number of runs, each given up after a fixed time.
#include <sys/resource.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <string>

#include "fenklib/receiver/CReceiverFileReader.h"
#include "fenklib/receiver/CVokReceiverMate.h"
#include "platform/devio/CReceiver.h"
#include "tools/rcvsim/RcvSim.h"

namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

constexpr int kRate = 115200;

long PeakKb() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
}

struct Run {
    bool ok = false;
    double seconds = 0;
    std::uint64_t bytes = 0, wireIn = 0, wireOut = 0;
};

// One copy of the oldest log into `target`, given up after `limitMs`.
Run CopyOnce(const basekit::CSmartPtr<devio::CReceiver>& rx, const fs::path& target, unsigned limitMs) {
    const basekit::CSmartPtr<devio::IReceiver> receiver(rx.Get());
    devio::CVokReceiverMate mate(receiver);
    const auto list = mate.ListLogFiles(10000);
    Run run;
    if (list.empty()) return run;
    const auto copier = devio::CReceiverFileReader::CreateCopier(receiver);
    const devio::LINK_HEALTH before = rx->GetLinkHealth();
    const auto start = Clock::now();
    copier->Start(L"/log/" + list.front().name, basekit::ustring::FromUtf8(target.string()));
    if (copier->DoneEvent().Wait(limitMs).kind != basekit::WaitResult::Signalled) {
        copier->Cancel();
        copier->DoneEvent().Wait(10000);
        std::printf("  gave up after %u ms\n", limitMs);
        return run;
    }
    run.seconds = std::chrono::duration<double>(Clock::now() - start).count();
    const devio::LINK_HEALTH after = rx->GetLinkHealth();
    run.ok = copier->Error() == 0;
    if (!run.ok) std::printf("  failed: %s\n", copier->ErrorText().ToUtf8().c_str());
    run.bytes = copier->Progress().done;
    run.wireIn = after.bytesIn - before.bytesIn;
    run.wireOut = after.bytesOut - before.bytesOut;
    return run;
}

basekit::CSmartPtr<devio::CReceiver> Open(rcvsim::RcvSim& sim, bool pty) {
    const std::string url = pty ? "serial:" + sim.StartPty() + "?baud=" + std::to_string(kRate)
                                : "tcp://127.0.0.1:" + std::to_string(sim.StartTcp("127.0.0.1", 0));
    return devio::CReceiver::Open(devio::IPortAddr::Parse(basekit::ustring::FromUtf8(url)));
}

void OverTcp(const fs::path& dir) {
    constexpr int kRuns = 5;
    rcvsim::SimOptions options;
    options.seededLogs = {50u * 1024 * 1024};
    rcvsim::RcvSim sim(options);
    const auto rx = Open(sim, false);
    std::printf("50 MB log over loopback TCP (goal >= 50 MB/s)\n");
    for (int i = 0; i < kRuns; ++i) {
        const long peakBefore = PeakKb();
        const Run run = CopyOnce(rx, dir / "tcp.jps", 120000);
        if (!run.ok) return;
        std::printf("  run %d: %.1f MB/s, %.2f s, peak memory grew %ld KB (file %llu KB)\n", i + 1,
                    static_cast<double>(run.bytes) / (1024.0 * 1024.0) / run.seconds, run.seconds, PeakKb() - peakBefore,
                    static_cast<unsigned long long>(run.bytes / 1024));
    }
}

void OverPty(const fs::path& dir) {
    rcvsim::SimOptions options;
    options.seededLogs = {2u * 1024 * 1024};
    options.throttle = true;
    options.lineRate = kRate;
    rcvsim::RcvSim sim(options);
    const auto rx = Open(sim, true);
    std::printf("2 MB log over a pseudo-terminal at %d bit/s (goal within 1.1 of the floor)\n", kRate);
    const Run run = CopyOnce(rx, dir / "pty.jps", 600000);
    if (!run.ok) return;
    const double floorIn = run.wireIn * 10.0 / kRate, floorBoth = (run.wireIn + run.wireOut) * 10.0 / kRate;
    std::printf("  %.1f s; wire in %llu B, out %llu B (payload %llu B); floor %.1f s one way, %.1f s both ways;"
                " ratio %.3f (both ways), %.3f (one way)\n",
                run.seconds, static_cast<unsigned long long>(run.wireIn), static_cast<unsigned long long>(run.wireOut),
                static_cast<unsigned long long>(run.bytes), floorIn, floorBoth, run.seconds / floorBoth, run.seconds / floorIn);
}

}  // namespace

int main(int argc, char** argv) {
    const fs::path dir = fs::temp_directory_path() / ("fenk-bench-copy-" + std::to_string(::getpid()));
    fs::create_directories(dir);
    const std::string only = argc > 1 ? argv[1] : "";
    if (only.empty() || only == "tcp") OverTcp(dir);
    if (only.empty() || only == "pty") OverPty(dir);
    fs::remove_all(dir);
    return 0;
}
