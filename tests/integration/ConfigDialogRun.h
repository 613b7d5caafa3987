#pragma once
// Drives a receiver window modally: a step runs each time the window becomes idle, until one
// ends it. The modal driver guards the run: a fatal failure in a step or a window that never
// ends fails the test and ends the window, instead of hanging.
#include <QCoreApplication>
#include <QDir>
#include <QWidget>
#include <functional>

#include "support/EventTrigger.h"
#include "support/ModalDriver.h"

namespace fenktest {

template <typename Window>
int RunSteps(Window& window, const std::function<void(int step)>& onIdle) {
    int step = 0;
    const CIdleTrigger idle(&window, [&] { onIdle(step++); });
    return DriveModal(window, [] { return false; });   // the steps end the window
}

// The tour's picture of a window, beside the test binary, to be looked at by a person.
inline void SaveTourShot(QWidget& window, const char* name) {
    window.grab().save(QDir(QCoreApplication::applicationDirPath()).filePath(QStringLiteral("tour-%1.png").arg(QLatin1String(name))));
}

}  // namespace fenktest
