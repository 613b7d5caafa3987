#include "fenklib/FenkLaunchers.h"
#include "fenklib/frame/FenkExport.h"
#include "fenklib/frame/LauncherConvention.h"
#include "fenklib/msglist/CRcvMessageListDlg.h"

extern "C" FENK_EXPORT int run_RcvMessageListDlg(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent, basekit::ustring& name) {
    return RunLauncher<CRcvMessageListDlg>(receiver, parent, name);
}
