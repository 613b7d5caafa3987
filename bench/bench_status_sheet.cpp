// The status sheet at survey rates. Printed, not asserted:
//  - a sky plot update per satellite list (cached background copied, 120 symbols and numbers)
//    against a full redraw of the same picture, in one run; goal: update <= 0.4 of the redraw;
//  - CPU of the process with the sheet open on the sky plot while the listener host is fed 20 Hz
//    positions and 1 Hz lists of 120 satellites for 10 s, as a share of one core; goal < 2 %
//    (the feed is offered to the listener host directly, so NMEA decoding is not in it);
//  - resident memory with the sheet open; goal <= 80 MB;
//  - the same CPU and memory with the whole live path in it: the simulator in its own process
//    streaming 20 Hz GGA and 1 Hz GSA/GSV/ZDA/GST over loopback TCP, this process reading,
//    decoding and drawing (the simulator's sky has about 50 of its 120 satellites in view).
#include <benchmark/benchmark.h>
#include <sys/resource.h>

#include <QApplication>
#include <QFile>
#include <QProcess>
#include <QTimer>
#include <atomic>
#include <chrono>
#include <functional>
#include <thread>

#include "fenklib/receiver/CVokReceiverMate.h"
#include "fenklib/status/CReceiverStatusPS.h"
#include "fenklib/status/CSkyPlot.h"
#include "platform/devio/CReceiver.h"
#include "tests/support/ScriptedReceiver.h"
#include "tests/support/SettingsSandbox.h"

namespace {

devio::SATLIST_RECORD SatelliteList(int count, int epoch) {
    devio::SATLIST_RECORD list;
    for (int i = 0; i < count; ++i) {
        devio::SATELLITE_RECORD s;
        s.system = 1 + i % 7;
        s.number = 1 + i;
        s.elevation = static_cast<std::int8_t>(1 + (i * 37 + epoch) % 89);
        s.azimuth = static_cast<std::uint16_t>((i * 53 + epoch) % 360);
        s.navStatus = i % 4 ? 0 : 4;
        s.snr = 40;
        list.push_back(s);
    }
    return list;
}

void BM_SkyPlotUpdateAgainstFullRedraw(benchmark::State& state) {
    CSkyPlot plot(nullptr);
    plot.resize(480, 480);
    double update = 0, full = 0;
    int epoch = 0;
    for (auto _ : state) {
        const auto list = SatelliteList(120, ++epoch);
        plot.SetSatellites(list, 10);
        auto t0 = std::chrono::steady_clock::now();
        benchmark::DoNotOptimize(plot.RenderFrame());
        auto t1 = std::chrono::steady_clock::now();
        benchmark::DoNotOptimize(plot.RenderFull());
        auto t2 = std::chrono::steady_clock::now();
        update += std::chrono::duration<double>(t1 - t0).count();
        full += std::chrono::duration<double>(t2 - t1).count();
    }
    state.counters["update_us"] = update * 1e6 / state.iterations();
    state.counters["full_redraw_us"] = full * 1e6 / state.iterations();
    state.counters["update_to_full"] = update / full;
}
BENCHMARK(BM_SkyPlotUpdateAgainstFullRedraw)->Iterations(200);

double ProcessCpuSeconds() {
    rusage u{};
    getrusage(RUSAGE_SELF, &u);
    return u.ru_utime.tv_sec + u.ru_stime.tv_sec + (u.ru_utime.tv_usec + u.ru_stime.tv_usec) / 1e6;
}

double ResidentMegabytes() {
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly)) return 0;
    for (const QByteArray& line : status.readAll().split('\n'))
        if (line.startsWith("VmRSS:")) return line.mid(6).trimmed().split(' ').first().toDouble() / 1024;
    return 0;
}

// Runs the sheet on the sky plot; `start` begins the feed once it is up, and the feed ends the
// sheet. Counts the process's CPU as a share of one core and its peak resident memory.
void RunOnTheSkyPlot(benchmark::State& state, CReceiverStatusPS& sheet, const std::function<void()>& start) {
    sheet.resize(480, 640);
    double cpu0 = 0, rss = 0;
    auto wall0 = std::chrono::steady_clock::now();
    QTimer::singleShot(0, &sheet, [&] {
        sheet.SetActivePage(3);
        cpu0 = ProcessCpuSeconds();
        wall0 = std::chrono::steady_clock::now();
        start();
    });
    QTimer sample;
    QObject::connect(&sample, &QTimer::timeout, &sheet, [&] { rss = std::max(rss, ResidentMegabytes()); });
    sample.start(1000);
    sheet.DoModal();
    const double cpu = ProcessCpuSeconds() - cpu0;
    const double wall = std::chrono::duration<double>(std::chrono::steady_clock::now() - wall0).count();
    state.counters["cpu_share_of_one_core_pct"] = 100 * cpu / wall;
    state.counters["resident_MB"] = std::max(rss, ResidentMegabytes());
}

void BM_SheetOpenOnTheSkyPlot(benchmark::State& state) {
    basekit::CSmartPtr<fenktest::CScriptedReceiver> rx(new fenktest::CScriptedReceiver());
    rx->Otherwise(fenktest::CScriptedReceiver::Reply(L"10"));
    for (auto _ : state) {
        CReceiverStatusPS sheet(basekit::CSmartPtr<devio::IReceiver>(rx.Get()), nullptr);
        std::atomic<bool> stop{false};
        std::thread feeder;
        RunOnTheSkyPlot(state, sheet, [&] {
            feeder = std::thread([&] {
                // 200 ticks of 50 ms: 10 s of 20 Hz positions, a list every 20th tick.
                for (int tick = 0; tick < 200 && !stop; ++tick) {
                    devio::POSITION_RECORD r;
                    r.geoValid = 1, r.lat = 55.75 + tick * 1e-8, r.lon = 37.6, r.height = 150;
                    rx->Host().Offer(r);
                    if (tick % 20 == 0) rx->Host().Offer(SatelliteList(120, tick));
                    std::this_thread::sleep_for(std::chrono::milliseconds(50));
                }
                QMetaObject::invokeMethod(&sheet, [&] { sheet.EndDialog(2); }, Qt::QueuedConnection);
            });
        });
        stop = true;
        feeder.join();
    }
}
BENCHMARK(BM_SheetOpenOnTheSkyPlot)->Unit(benchmark::kSecond)->Iterations(1);

// The simulator as a separate process on a loopback port, so only the utility's side is counted.
class CSimulatorProcess {
public:
    CSimulatorProcess() {
        m_process.start(QStringLiteral(RCVSIM_PATH), {QStringLiteral("--tcp"), QStringLiteral("127.0.0.1:0")});
        if (!m_process.waitForStarted(10000) || !m_process.waitForReadyRead(10000)) return;
        const QByteArray line = m_process.readLine().trimmed();   // "tcp 127.0.0.1:PORT"
        if (line.startsWith("tcp ")) m_url = L"tcp://" + basekit::ustring::FromUtf8(line.mid(4).toStdString());
    }
    ~CSimulatorProcess() {
        m_process.kill();
        m_process.waitForFinished(10000);
    }
    const basekit::ustring& Url() const { return m_url; }

private:
    QProcess m_process;
    basekit::ustring m_url;
};

void BM_SheetOnTheSimulatorOverLoopback(benchmark::State& state) {
    const CSimulatorProcess sim;
    if (sim.Url().empty()) return state.SkipWithError("the simulator did not start");
    const auto receiver = devio::CReceiver::Open(devio::IPortAddr::Parse(sim.Url()));
    const basekit::CSmartPtr<devio::IReceiver> rx(receiver.Get());
    devio::CVokReceiverMate(rx).EnableMessages(devio::vok::CUR_TERM,
        L"/msg/nmea/GGA:{0.05,0,0,0x0},/msg/nmea/GSA:{1,0,0,0x0},/msg/nmea/GSV:{1,0,0,0x0},/msg/nmea/ZDA:{1,0,0,0x0},/msg/nmea/GST:{1,0,0,0x0}");
    for (auto _ : state) {
        CReceiverStatusPS sheet(rx, nullptr);
        unsigned positions0 = 0;
        auto wall0 = std::chrono::steady_clock::now();
        RunOnTheSkyPlot(state, sheet, [&] {
            positions0 = sheet.PositionPage().PositionsReceived();
            wall0 = std::chrono::steady_clock::now();
            QTimer::singleShot(10000, &sheet, [&] { sheet.EndDialog(2); });
        });
        const double wall = std::chrono::duration<double>(std::chrono::steady_clock::now() - wall0).count();
        state.counters["positions_per_s"] = (sheet.PositionPage().PositionsReceived() - positions0) / wall;
        const CSkyPlot* plot = sheet.SkyPlotPage().Plot();
        state.counters["satellites_drawn"] = plot ? static_cast<double>(plot->Satellites().size()) : 0;
    }
}
BENCHMARK(BM_SheetOnTheSimulatorOverLoopback)->Unit(benchmark::kSecond)->Iterations(1);

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
