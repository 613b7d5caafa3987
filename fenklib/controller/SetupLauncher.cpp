#include "fenklib/FenkLaunchers.h"
#include "fenklib/controller/CSetupPS.h"
#include "fenklib/frame/FenkExport.h"
#include "fenklib/frame/LauncherConvention.h"

extern "C" FENK_EXPORT int run_SetupPS(QWidget* parent) { return RunLauncher<CSetupPS>(parent); }
