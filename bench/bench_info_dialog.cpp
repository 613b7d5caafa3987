// Filling the receiver information rows over a pseudo-terminal at 115200 bit/s with the
// simulator pacing its output at the line rate, against the physical floor: the bytes the
// receiver sent divided by the line rate (10 bits per byte). Goal: ratio <= 1.2.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <QTimer>
#include <chrono>

#include "fenklib/config/CReceiverInfoDlg.h"
#include "platform/devio/CReceiver.h"
#include "tools/rcvsim/RcvSim.h"

namespace {

constexpr int kRate = 115200;

void BM_InfoDialogFill(benchmark::State& state) {
    rcvsim::SimOptions options;
    options.lineRate = kRate;
    options.throttle = true;
    rcvsim::RcvSim sim(options);
    const std::string tty = sim.StartPty();
    const auto rx = devio::CReceiver::Open(devio::IPortAddr::Parse(
        basekit::ustring::FromUtf8("serial:" + tty + "?baud=" + std::to_string(kRate))));
    rx->WireLog().Enable(true);
    double seconds = 0, floorIn = 0, floorBoth = 0;
    for (auto _ : state) {
        rx->WireLog().Clear();
        CReceiverInfoDlg dlg(basekit::CSmartPtr<devio::IReceiver>(rx.Get()), nullptr);
        QTimer poll;
        QObject::connect(&poll, &QTimer::timeout, &dlg, [&] {
            if (dlg.property("fenkIdle").toBool()) dlg.EndDialog(1);
        });
        poll.start(1);
        const auto start = std::chrono::steady_clock::now();
        dlg.DoModal();
        seconds += std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
        size_t in = 0, out = 0;
        for (const auto& e : rx->WireLog().Entries()) (e.direction == devio::CWireLog::Direction::In ? in : out) += e.bytes.size();
        floorIn += in * 10.0 / kRate;
        floorBoth += (in + out) * 10.0 / kRate;
    }
    state.counters["ms_per_fill"] = seconds * 1000 / state.iterations();
    state.counters["floor_ms_paced"] = floorIn * 1000 / state.iterations();
    state.counters["floor_ms_both_ways"] = floorBoth * 1000 / state.iterations();
    state.counters["ratio_to_floor"] = seconds / floorIn;
}
BENCHMARK(BM_InfoDialogFill)->Unit(benchmark::kMillisecond)->Iterations(10);

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
