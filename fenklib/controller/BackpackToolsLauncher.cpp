#include "fenklib/FenkLaunchers.h"
#include "fenklib/controller/CBackpackToolsPS.h"
#include "fenklib/frame/FenkExport.h"
#include "fenklib/frame/LauncherConvention.h"

extern "C" FENK_EXPORT int run_BackpackToolsPS(QWidget* parent) { return RunLauncher<CBackpackToolsPS>(parent); }
