#include "fenklib/FenkLaunchers.h"
#include "fenklib/frame/FenkExport.h"
#include "fenklib/frame/LauncherConvention.h"
#include "fenklib/ports/CReceiverPortsDlg.h"

// 4 tells the host that the controller's own port was reconfigured and it must reconnect.
extern "C" FENK_EXPORT int run_ReceiverPortsDlg(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent) {
    return RunLauncher<CReceiverPortsDlg>(receiver, parent);
}
