#pragma once
// Runs an action each time a watched object gets an event of a kind, after the handler that
// caused it has finished: tests wait on what the window does, never on the clock.
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QEvent>
#include <QEventLoop>
#include <QObject>
#include <QTimer>
#include <QWidget>
#include <functional>

namespace fenktest {

class CEventTrigger : public QObject {
public:
    CEventTrigger(QObject* watched, QEvent::Type type, std::function<void()> action)
        : m_type(type), m_action(std::move(action)) {
        watched->installEventFilter(this);
    }
    bool eventFilter(QObject*, QEvent* e) override {
        if (e->type() == m_type) QTimer::singleShot(0, this, [this] { m_action(); });
        return false;
    }

private:
    QEvent::Type m_type;
    std::function<void()> m_action;
};

// Runs action each time a receiver window becomes idle (its "fenkIdle" turns true).
class CIdleTrigger : public QObject {
public:
    CIdleTrigger(QObject* window, std::function<void()> action) : m_window(window), m_action(std::move(action)) {
        window->installEventFilter(this);
    }
    bool eventFilter(QObject*, QEvent* e) override {
        if (e->type() == QEvent::DynamicPropertyChange &&
            static_cast<QDynamicPropertyChangeEvent*>(e)->propertyName() == "fenkIdle" && m_window->property("fenkIdle").toBool())
            QTimer::singleShot(0, this, [this] {
                if (m_window->property("fenkIdle").toBool()) m_action();   // still idle once the handler is done
            });
        return false;
    }

private:
    QObject* m_window;
    std::function<void()> m_action;
};

// Runs the window's events until its top-level window is idle ("fenkIdle" true): the running
// job has ended and its results are shown. False when the guard ended the wait first.
inline bool WaitIdle(QObject* window) {
    QObject* top = window->isWidgetType() ? static_cast<QWidget*>(window)->window() : window;
    if (top->property("fenkIdle").toBool()) return true;
    QEventLoop loop;
    const CIdleTrigger idle(top, [&loop] { loop.exit(0); });
    QTimer::singleShot(60000, &loop, [&loop] { loop.exit(1); });
    return loop.exec() == 0;
}

// A guard, not a synchroniser: ends a modal run that never reached its end condition, so a
// broken window fails its test instead of hanging the suite. (Modal windows: DriveModal.)
inline void EndAfterMinute(QObject* context, std::function<void()> end) {
    QTimer::singleShot(60000, context, [end = std::move(end)] {
        ADD_FAILURE() << "the window did not reach its end within a minute";
        end();
    });
}

}  // namespace fenktest
