#pragma once
// The one way tests drive a modal window (tests/support/README.md). Whatever the test does runs
// inside the window's modal loop, woken by what happens to the window: it was shown or
// activated, a job's result or a notice reached it, its busy state changed, a timer fired. Nothing polls and no clock decides; the deadline only turns a run that would hang into
// a failure, and a fatal failure inside the driver ends every modal window at once.
#include <gtest/gtest.h>

#include <QApplication>
#include <QDialog>
#include <QEvent>
#include <QEventLoop>
#include <QTimer>
#include <QWidget>
#include <chrono>
#include <functional>
#include <type_traits>

namespace fenktest {

inline constexpr std::chrono::milliseconds kDriveDeadline = std::chrono::seconds(60);

// Calls changed, after the handler of the event has finished, whenever something happened to
// window or to an object inside it; once however many events came meanwhile.
class CWindowWatch : public QObject {
public:
    CWindowWatch(QWidget* window, std::function<void()> changed) : m_window(window), m_changed(std::move(changed)) {
        qApp->installEventFilter(this);
    }
    ~CWindowWatch() override { qApp->removeEventFilter(this); }
    // The first look, for a window already in the state the caller waits for.
    void Nudge() { Later(); }

protected:
    bool eventFilter(QObject* watched, QEvent* e) override {
        // A window's timer need not be its child (a member QTimer): any timer counts.
        if (Relevant(e->type()) && (e->type() == QEvent::Timer || Inside(watched))) Later();
        return false;
    }

private:
    static bool Relevant(QEvent::Type type) {
        return type == QEvent::Show || type == QEvent::Hide || type == QEvent::WindowActivate || type == QEvent::DynamicPropertyChange ||
               type == QEvent::MetaCall || type == QEvent::Timer || type >= QEvent::User;
    }
    bool Inside(const QObject* o) const {
        for (; o; o = o->parent())
            if (o == m_window) return true;
        return false;
    }
    void Later() {
        if (m_pending) return;
        m_pending = true;
        QTimer::singleShot(0, this, [this] {
            m_pending = false;
            m_changed();
        });
    }

    QWidget* m_window;
    std::function<void()> m_changed;
    bool m_pending = false;
};

// Ends every modal window above window, then window itself through end.
inline void EndModalRun(QWidget* window, const std::function<void()>& end) {
    while (QWidget* modal = QApplication::activeModalWidget()) {
        auto* dialog = qobject_cast<QDialog*>(modal);
        if (modal == window || !dialog) break;
        dialog->done(QDialog::Rejected);
    }
    end();
}

// Inside a driven window: returns once done() holds, woken by the window's events. Past the
// deadline the test fails and false comes back.
inline bool Await(QWidget* window, const std::function<bool()>& done, std::chrono::milliseconds deadline = kDriveDeadline) {
    if (done()) return true;
    QEventLoop loop;
    CWindowWatch watch(window, [&] {
        if (done()) loop.quit();
    });
    QTimer limit;
    limit.setSingleShot(true);
    QObject::connect(&limit, &QTimer::timeout, &loop, [&] {
        ADD_FAILURE() << "the awaited state of the window did not come within " << deadline.count() << " ms";
        loop.quit();
    });
    limit.start(deadline);
    loop.exec();
    return done();
}

// Runs dlg modally (its DoModal()) and returns the modal result, driven by step:
// - a step returning bool is called after every event of the window until it returns true
//   (having ended the window, or leaving it to end by itself);
// - a step returning void is a script run once, when the window is first shown; it waits with
//   Await() and ends the window, or leaves it to end by itself.
// A fatal failure inside the step (ASSERT_* in a script or in a helper) or the deadline ends
// the run with Cancel and fails the test.
template <typename Dlg, typename Step>
int DriveModal(Dlg& dlg, Step step, std::chrono::milliseconds deadline = kDriveDeadline) {
    const bool fatalBefore = ::testing::Test::HasFatalFailure();
    bool done = false;
    const auto end = [&dlg] { dlg.EndDialog(2); };
    const auto abandon = [&] {
        done = true;
        EndModalRun(&dlg, end);
    };
    CWindowWatch watch(&dlg, [&] {
        if (done || !dlg.isVisible()) return;
        if constexpr (std::is_same_v<std::invoke_result_t<Step>, bool>) {
            done = step();
        } else {
            done = true;
            step();
        }
        if (!fatalBefore && ::testing::Test::HasFatalFailure()) abandon();
    });
    QTimer limit;
    limit.setSingleShot(true);
    QObject::connect(&limit, &QTimer::timeout, &dlg, [&] {
        if (done && !dlg.isVisible()) return;
        ADD_FAILURE() << "the driven window did not reach its end within " << deadline.count() << " ms";
        abandon();
    });
    limit.start(deadline);
    return dlg.DoModal();
}

}  // namespace fenktest

// In a bool step: a condition that must hold, else the test fails here and the run ends.
#define FENK_STEP_ASSERT(condition)                                       \
    do {                                                                  \
        if (!(condition)) {                                               \
            [] { FAIL() << "step assertion failed: " #condition; }();     \
            return true;                                                  \
        }                                                                 \
    } while (false)
