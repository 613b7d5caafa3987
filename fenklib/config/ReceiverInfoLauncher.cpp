#include "fenklib/FenkLaunchers.h"
#include "fenklib/config/CReceiverInfoDlg.h"
#include "fenklib/frame/FenkExport.h"
#include "fenklib/frame/LauncherConvention.h"

extern "C" FENK_EXPORT int run_ReceiverInfoDlg(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent) {
    return RunLauncher<CReceiverInfoDlg>(receiver, parent);
}
