#include "fenklib/FenkLaunchers.h"
#include "fenklib/frame/FenkExport.h"
#include "fenklib/frame/LauncherConvention.h"
#include "fenklib/site/CSiteConfigurationDlg.h"

extern "C" FENK_EXPORT int run_SiteConfigurationDlg(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent) {
    return RunLauncher<CSiteConfigurationDlg>(receiver, parent);
}
