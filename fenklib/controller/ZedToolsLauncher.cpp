#include "fenklib/FenkLaunchers.h"
#include "fenklib/controller/CZedToolsPS.h"
#include "fenklib/frame/FenkExport.h"
#include "fenklib/frame/LauncherConvention.h"

extern "C" FENK_EXPORT int run_ZedToolsPS(QWidget* parent) { return RunLauncher<CZedToolsPS>(parent); }
