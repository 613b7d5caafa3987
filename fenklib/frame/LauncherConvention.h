#pragma once
#include <utility>

#include "fenklib/frame/CFenkLibApp.h"
#include "platform/basekit/CResourceInstance.h"
#include "platform/uikit/CMessageBoxService.h"

// The settings store could not be read at start: the first window a user opens says so.
void TellStoreProblemOnce();

// What a launcher returns when its window could not be built or run.
inline constexpr int kLauncherFailed = 3;

// Every launcher: the library's resources current for this thread, the dialog built on this
// stack frame with the launcher's arguments (a receiver pointer is copied, adding a reference),
// run modally, destroyed, the host's resources back, the result returned unchanged. Nothing is
// thrown into the host, which has no way to handle it: an unexpected failure is shown in the
// error box and the launcher returns kLauncherFailed, as a window failing to initialise does.
template <typename Dialog, typename... Args>
int RunLauncher(Args&&... args) {
    const basekit::CResourceScope resources(CFenkLibApp::Instance().Resources());
    try {
        TellStoreProblemOnce();
        Dialog dialog(std::forward<Args>(args)...);
        return dialog.DoModal();
    } catch (...) {
        uikit::CMessageBoxService::ReportCurrentError(nullptr);
        return kLauncherFailed;
    }
}
