#include "fenklib/FenkLaunchers.h"
#include "fenklib/config/CToolsDlg.h"
#include "fenklib/frame/FenkExport.h"
#include "fenklib/frame/LauncherConvention.h"

extern "C" FENK_EXPORT int run_ToolsDlg(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent) {
    return RunLauncher<CToolsDlg>(receiver, parent);
}
