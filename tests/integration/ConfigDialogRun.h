#pragma once
// Drives a receiver window modally: a step runs each time the window becomes idle, until one
// ends it; a guard ends a window that never gets there.
#include <QCoreApplication>
#include <QDir>
#include <QWidget>
#include <functional>

#include "support/EventTrigger.h"

namespace fenktest {

template <typename Window>
int RunSteps(Window& window, const std::function<void(int step)>& onIdle) {
    int step = 0;
    const CIdleTrigger idle(&window, [&] { onIdle(step++); });
    EndAfterMinute(&window, [&] { window.EndDialog(-1); });
    return window.DoModal();
}

// The tour's picture of a window, beside the test binary, to be looked at by a person.
inline void SaveTourShot(QWidget& window, const char* name) {
    window.grab().save(QDir(QCoreApplication::applicationDirPath()).filePath(QStringLiteral("tour-%1.png").arg(QLatin1String(name))));
}

}  // namespace fenktest
