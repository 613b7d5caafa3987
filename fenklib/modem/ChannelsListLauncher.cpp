#include "fenklib/FenkLaunchers.h"
#include "fenklib/frame/FenkExport.h"
#include "fenklib/frame/LauncherConvention.h"
#include "fenklib/modem/CChannelsListDlg.h"

extern "C" FENK_EXPORT int run_ChannelsListDlg(QWidget* parent, const std::vector<double>& channels, double& result) {
    return RunLauncher<CChannelsListDlg>(parent, channels, result);
}
