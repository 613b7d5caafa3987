#include "fenklib/FenkLaunchers.h"
#include "fenklib/config/CReceiverPowerDlg.h"
#include "fenklib/frame/FenkExport.h"
#include "fenklib/frame/LauncherConvention.h"

extern "C" FENK_EXPORT int run_ReceiverPowerDlg(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent) {
    return RunLauncher<CReceiverPowerDlg>(receiver, parent);
}
