#include "fenklib/FenkLaunchers.h"
#include "fenklib/frame/FenkExport.h"
#include "fenklib/frame/LauncherConvention.h"
#include "fenklib/msglist/CRcvMessageDlg.h"

extern "C" FENK_EXPORT int run_RcvMessageDlg(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent, devio::vok::MSG& message) {
    return RunLauncher<CRcvMessageDlg>(receiver, parent, message);
}
