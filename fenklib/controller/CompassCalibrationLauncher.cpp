#include "fenklib/FenkLaunchers.h"
#include "fenklib/controller/CCompassCalibrationDlg.h"
#include "fenklib/frame/FenkExport.h"
#include "fenklib/frame/LauncherConvention.h"

extern "C" FENK_EXPORT int run_CompassCalibrationDlg(QWidget* parent) { return RunLauncher<CCompassCalibrationDlg>(parent); }
