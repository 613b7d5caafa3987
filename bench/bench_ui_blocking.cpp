// The longest time the user-interface thread is blocked per window, while the window opens,
// applies or confirms and closes against the simulator answering every command after 300 ms
// (printed). A heartbeat timer runs every millisecond on the user-interface thread; the longest
// gap between two of its ticks, less its own period, is the longest time nothing else could
// run. Goal: under 20 ms for every window. The site dialog, not yet moved to jobs, is measured
// beside the others for comparison.
#include <QApplication>
#include <QSettings>
#include <QTemporaryDir>
#include <QTimer>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>
#include <memory>

#include "fenklib/config/CPositioningPS.h"
#include "fenklib/config/CRawMeasurementDlg.h"
#include "fenklib/config/CReceiverPowerDlg.h"
#include "fenklib/files/CReceiverFileExplorerPS.h"
#include "fenklib/messages/CLoggingMessagesDlg.h"
#include "fenklib/site/CAutoSeedDlg.h"
#include "fenklib/site/CSiteConfigurationDlg.h"
#include "platform/devio/CReceiver.h"
#include "platform/uikit/CMessageBoxResponder.h"
#include "support/EventTrigger.h"
#include "tools/rcvsim/RcvSim.h"

namespace {

constexpr int kLatencyMs = 300;
using Clock = std::chrono::steady_clock;

struct RESULT {
    double longestBlockMs = 0;
    double seconds = 0;
    int result = 0;
};

// Runs the window modally; step(n) runs each time it becomes idle and ends it in the end.
template <typename Window>
RESULT Measure(Window& window, const std::function<void(Window&, int)>& step) {
    RESULT r;
    auto last = Clock::now();
    QTimer heartbeat;
    heartbeat.setTimerType(Qt::PreciseTimer);
    QObject::connect(&heartbeat, &QTimer::timeout, [&] {
        const auto now = Clock::now();
        r.longestBlockMs = std::max(r.longestBlockMs, std::chrono::duration<double, std::milli>(now - last).count() - 1.0);
        last = now;
    });
    heartbeat.start(1);
    int n = 0;
    const fenktest::CIdleTrigger idle(&window, [&] { step(window, n++); });
    fenktest::EndAfterMinute(&window, [&] { window.EndDialog(-1); });
    const auto start = Clock::now();
    last = start;
    r.result = window.DoModal();
    r.seconds = std::chrono::duration<double>(Clock::now() - start).count();
    return r;
}

void Print(const char* window, const char* what, const RESULT& r) {
    std::printf("%-26s %-34s longest block %7.1f ms  (run %5.1f s, result %d)\n", window, what, r.longestBlockMs, r.seconds, r.result);
    std::fflush(stdout);
}

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    const QTemporaryDir settings;   // window placements go here, never into the user's own settings
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, settings.path());
    const uikit::CMessageBoxResponder boxes;   // a refusal must not wait for a person
    rcvsim::RcvSim sim(rcvsim::SimOptions{});
    const int port = sim.StartTcp("127.0.0.1", 0);
    const auto receiver = devio::CReceiver::Open(devio::IPortAddr::Parse(basekit::ustring::FromUtf8("tcp://127.0.0.1:" + std::to_string(port))));
    const basekit::CSmartPtr<devio::IReceiver> rx(receiver.Get());
    rcvsim::FaultPlan slow;
    slow.latencyMs = kLatencyMs;
    sim.SetFaults(slow);
    std::printf("every command answered after %d ms\n", kLatencyMs);

    {
        CRawMeasurementDlg dlg(rx, nullptr);
        Print("CRawMeasurementDlg", "open, OK (writes the interval)", Measure<CRawMeasurementDlg>(dlg, [](auto& d, int) {
                  if (auto s = d.Shown()) {
                      s->intervalMs = s->intervalMs == 500 ? 1000 : 500;
                      d.Show(*s);
                  }
                  d.accept();
              }));
    }
    {
        CReceiverPowerDlg dlg(rx, nullptr);
        Print("CReceiverPowerDlg", "open, OK", Measure<CReceiverPowerDlg>(dlg, [](auto& d, int) { d.accept(); }));
    }
    {
        CLoggingMessagesDlg dlg(rx, nullptr);
        Print("CLoggingMessagesDlg", "open, OK (writes both lists)", Measure<CLoggingMessagesDlg>(dlg, [](auto& d, int) { d.accept(); }));
    }
    {
        CPositioningPS sheet(rx, nullptr);
        Print("CPositioningPS", "open, both pages, Apply, close", Measure<CPositioningPS>(sheet, [](auto& s, int step) {
                  if (step == 0) s.SetActivePage(1);
                  else if (step == 1) s.ApplyNow();
                  else s.EndDialog(1);
              }));
    }
    {
        CReceiverFileExplorerPS sheet(rx, nullptr);
        Print("CReceiverFileExplorerPS", "files, logs, rotation, Apply, close", Measure<CReceiverFileExplorerPS>(sheet, [](auto& s, int step) {
                  if (step == 0) s.SetActivePage(1);
                  else if (step == 1) s.SetActivePage(2);
                  else if (step == 2) s.ApplyNow();
                  else s.EndDialog(1);
              }));
    }
    {
        CAutoSeedDlg dlg(rx, nullptr);
        Print("CAutoSeedDlg", "open, OK", Measure<CAutoSeedDlg>(dlg, [](auto& d, int) { d.accept(); }));
    }
    {
        CSiteConfigurationDlg dlg(rx, nullptr);
        Print("CSiteConfigurationDlg", "open, close (not yet jobs)", Measure<CSiteConfigurationDlg>(dlg, [](auto& d, int) { d.EndDialog(2); }));
    }
    return 0;
}
