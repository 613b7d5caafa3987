#pragma once
#include <utility>

#include "fenklib/frame/CFenkLibApp.h"
#include "platform/basekit/CResourceInstance.h"

// The settings store could not be read at start: the first window a user opens says so.
void TellStoreProblemOnce();

// Every launcher: the library's resources current for this thread, the dialog built on this
// stack frame with the launcher's arguments (a receiver pointer is copied, adding a reference),
// run modally, destroyed, the host's resources back, the result returned unchanged.
template <typename Dialog, typename... Args>
int RunLauncher(Args&&... args) {
    const basekit::CResourceScope resources(CFenkLibApp::Instance().Resources());
    TellStoreProblemOnce();
    Dialog dialog(std::forward<Args>(args)...);
    return dialog.DoModal();
}
