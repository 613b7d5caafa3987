#include "fenklib/FenkLaunchers.h"
#include "fenklib/config/CBluetoothDlg.h"
#include "fenklib/frame/FenkExport.h"
#include "fenklib/frame/LauncherConvention.h"

extern "C" FENK_EXPORT int run_BluetoothDlg(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent) {
    return RunLauncher<CBluetoothDlg>(receiver, parent);
}
