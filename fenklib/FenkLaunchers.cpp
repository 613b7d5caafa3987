// The exported launchers, one per row of the launcher table, each following the launcher
// convention (RunLauncher), and the captions hosts show for them.
#include "fenklib/FenkLaunchers.h"

#include <cstring>

#include "fenklib/LauncherWindows.h"   // made by the build from the table: each row's window header
#include "fenklib/frame/CFenkLibApp.h"
#include "fenklib/frame/LauncherConvention.h"
#include "fenklib/frame/LibraryHelpers.h"
#include "fenklib/resources/StringIds.h"
#include "platform/basekit/CResourceInstance.h"

#define FENK_LAUNCHER(name, window, shape, caption)                          \
    extern "C" FENK_EXPORT int name FENK_SHAPE_PARAMETERS(FENK_SHAPE_##shape) { \
        return RunLauncher<window> FENK_SHAPE_ARGUMENTS(FENK_SHAPE_##shape);    \
    }
#include "fenklib/FenkLauncherTable.h"
#undef FENK_LAUNCHER

namespace {

struct LAUNCHER_CAPTION {
    const char* launcher;
    unsigned captionId;
};
constexpr LAUNCHER_CAPTION kCaptions[] = {
#define FENK_LAUNCHER(name, window, shape, caption) {#name, caption},
#include "fenklib/FenkLauncherTable.h"
#undef FENK_LAUNCHER
};

}  // namespace

extern "C" FENK_EXPORT bool FenkLauncherCaption(const char* launcherName, basekit::ustring& caption) {
    if (!launcherName) return false;
    const basekit::CResourceScope resources(CFenkLibApp::Instance().Resources());
    for (const LAUNCHER_CAPTION& row : kCaptions) {
        if (std::strcmp(row.launcher, launcherName) != 0) continue;
        caption = LoadResString(row.captionId);
        return !caption.empty();
    }
    return false;
}
