// Filling the receiver information rows over a pseudo-terminal at 115200 bit/s with the
// simulator pacing both directions at the line rate, as a serial line does, against the two-way
// floor: the bytes that crossed the line either way divided by the line rate (10 bits per byte);
// commands and replies alternate, so the two directions add up. Goal: ratio <= 1.2.
// Also: how long the command after a cancelled 300 KB listing waits for its answer, against the
// time its own bytes need on the line (the simulator's pacing lets a 20 ms burst through at
// once, so short exchanges may come in under it).
#include <benchmark/benchmark.h>

#include <QApplication>
#include <QTimer>
#include <chrono>

#include "fenklib/config/CReceiverInfoDlg.h"
#include "platform/devio/CReceiver.h"
#include "platform/devio/INotice.h"
#include "tools/rcvsim/RcvSim.h"
#include "tests/support/SettingsSandbox.h"

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
    // The line is full duplex: the next command can go out while a reply comes in, so the true
    // floor lies between the one-way and the two-way figure.
    state.counters["ratio_to_two_way_floor"] = seconds / floorBoth;
    state.counters["ratio_to_one_way_floor"] = seconds / floorIn;
}
BENCHMARK(BM_InfoDialogFill)->Unit(benchmark::kMillisecond)->Iterations(10);

void BM_CommandAfterCancelledListing(benchmark::State& state) {
    rcvsim::SimOptions options;
    options.lineRate = kRate;
    options.throttle = true;
    rcvsim::RcvSim sim(options);
    const auto rx = devio::CReceiver::Open(devio::IPortAddr::Parse(
        basekit::ustring::FromUtf8("serial:" + sim.StartPty() + "?baud=" + std::to_string(kRate))));
    double seconds = 0;
    for (auto _ : state) {
        devio::COverlapped progress, listingDone, modelDone;
        const basekit::CSmartPtr<devio::CCommandReply> listing(new devio::CCommandReply()), model(new devio::CCommandReply());
        listing->SetProgressNotice(devio::INotice::CreateInstance(progress));
        const auto id = rx->IssueCommand(L"print,/par:on", true, listing, devio::INotice::CreateInstance(listingDone), 60000, true);
        for (int i = 0; i < 1000 && listing->GetProgress().received < 4096; ++i) {
            progress.Event().Wait(5000);
            progress.Event().Reset();
        }
        const auto start = std::chrono::steady_clock::now();
        rx->Cancel(id);
        rx->IssueCommand(L"print,rcv/model", true, model, devio::INotice::CreateInstance(modelDone), 10000, false);
        modelDone.Event().Wait(30000);
        seconds += std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
        if (model->Take().text != L"FNK-600") state.SkipWithError("the command after the cancel got no answer");
    }
    state.counters["ms_to_answer"] = seconds * 1000 / state.iterations();
    // Abort line and command out, cut mark and reply in, at 10 bits per byte.
    state.counters["floor_ms"] = (8 + 20 + 15 + 22) * 10.0 * 1000 / kRate;
}
BENCHMARK(BM_CommandAfterCancelledListing)->Unit(benchmark::kMillisecond)->Iterations(5);

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    const fenktest::CSettingsSandbox sandbox;   // placements and settings stay out of the user's own
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
