#include "fenklib/FenkLaunchers.h"
#include "fenklib/config/CTivar_MasterVolumeDlg.h"
#include "fenklib/frame/FenkExport.h"
#include "fenklib/frame/LauncherConvention.h"

extern "C" FENK_EXPORT int run_Tivar_MasterVolumeDlg(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent) {
    return RunLauncher<CTivar_MasterVolumeDlg>(receiver, parent);
}
