// Loading a firmware image into the simulator's boot loader over YMODEM, printed:
//  - a 1 MB image over a pseudo-terminal at 115200 bit/s with the simulator pacing at the line
//    rate: the transfer's time against the bytes that crossed the line both ways (YMODEM framing,
//    answers and any repeats included) at 10 bits per byte (goal: within 1.1 of it);
//  - the same image over loopback TCP, unpaced: MB/s of image (goal >= 20).
// Each run is bounded by the loader's own time-outs; the restart after it is not timed.
#include <chrono>
#include <cstdio>
#include <random>
#include <string>

#include "fenklib/receiver/CFirmwareLoader.h"
#include "platform/devio/CReceiver.h"
#include "tools/rcvsim/RcvSim.h"

namespace {

using Clock = std::chrono::steady_clock;
constexpr int kRate = 115200;
constexpr std::size_t kImageBytes = 1 << 20;

struct Run {
    bool ok = false;
    double seconds = 0;
    std::uint64_t image = 0, wire = 0;
};

Run LoadOnce(bool pty) {
    rcvsim::SimOptions options;
    options.lineRate = kRate;
    options.throttle = pty;
    rcvsim::RcvSim sim(options);
    const std::wstring url = pty ? basekit::ustring::FromUtf8("serial:" + sim.StartPty() + "?baud=" + std::to_string(kRate))
                                 : L"tcp://127.0.0.1:" + std::to_wstring(sim.StartTcp("127.0.0.1", 0));
    const auto rx = devio::CReceiver::Open(devio::IPortAddr::Parse(url));
    std::mt19937 rng(5);
    std::string payload(kImageBytes - devio::firmware::kHeaderSize, '\0');
    for (auto& c : payload) c = static_cast<char>(rng() & 0xff);
    const devio::FIRMWARE_IMAGE image =
        devio::CheckFirmwareImage(devio::firmware::BuildImage("FNK-600", "4.3.0", payload), L"bench.img");
    devio::CFirmwareLoader loader(basekit::CSmartPtr<devio::IReceiver>(rx.Get()), nullptr);
    Run run;
    try {
        loader.EnterLoader();
        const devio::LINK_HEALTH before = rx->GetLinkHealth();
        const auto start = Clock::now();
        loader.SendImage(devio::CFirmwareLoader::TransferName(image.info), image.bytes);
        run.seconds = std::chrono::duration<double>(Clock::now() - start).count();
        const devio::LINK_HEALTH after = rx->GetLinkHealth();
        run.wire = (after.bytesIn - before.bytesIn) + (after.bytesOut - before.bytesOut);
        run.image = image.bytes.size();
        run.ok = true;
    } catch (const basekit::CStdException& e) {
        std::printf("  failed: %s\n", e.what());
    }
    return run;
}

}  // namespace

int main() {
    std::printf("firmware upload, %zu-byte image, YMODEM 1024-byte blocks\n", kImageBytes);
    const Run pty = LoadOnce(true);
    if (pty.ok) {
        const double floor = pty.wire * 10.0 / kRate;
        std::printf("  pty %d bit/s: %.1f s, %llu bytes on the line (%.4f of the image), floor %.1f s, ratio %.3f (goal <= 1.1)\n",
                    kRate, pty.seconds, static_cast<unsigned long long>(pty.wire), double(pty.wire) / pty.image, floor,
                    pty.seconds / floor);
    }
    const Run tcp = LoadOnce(false);
    if (tcp.ok)
        std::printf("  loopback TCP: %.3f s, %.1f MB/s (goal >= 20)\n", tcp.seconds, tcp.image / tcp.seconds / 1e6);
    return pty.ok && tcp.ok ? 0 : 1;
}
