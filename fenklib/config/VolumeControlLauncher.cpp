#include "fenklib/FenkLaunchers.h"
#include "fenklib/config/CTivar_VolumeControlDlg.h"
#include "fenklib/frame/FenkExport.h"
#include "fenklib/frame/LauncherConvention.h"

extern "C" FENK_EXPORT int run_VolumeControlDlg(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent) {
    return RunLauncher<CTivar_VolumeControlDlg>(receiver, parent);
}
