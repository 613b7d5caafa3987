#include "fenklib/FenkLaunchers.h"
#include "fenklib/frame/FenkExport.h"
#include "fenklib/frame/LauncherConvention.h"
#include "fenklib/msglist/CRcvMessageMulListDlg.h"

extern "C" FENK_EXPORT int run_RcvMessageMulListDlg(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent, std::vector<devio::vok::MSG>& list) {
    return RunLauncher<CRcvMessageMulListDlg>(receiver, parent, list);
}
