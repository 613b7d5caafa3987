#include "fenklib/FenkLaunchers.h"
#include "fenklib/frame/FenkExport.h"
#include "fenklib/frame/LauncherConvention.h"
#include "fenklib/site/CAutoSeedDlg.h"
#include "fenklib/site/CAutoSeed_NewPointDlg.h"
#include "fenklib/site/CAutoSeed_PointListDlg.h"

extern "C" FENK_EXPORT int run_AutoSeedDlg(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent) {
    return RunLauncher<CAutoSeedDlg>(receiver, parent);
}

extern "C" FENK_EXPORT int run_AutoSeed_PointListDlg(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent) {
    return RunLauncher<CAutoSeed_PointListDlg>(receiver, parent);
}

// slot: the place in the receiver's list the new point is stored in.
extern "C" FENK_EXPORT int run_AutoSeed_NewPointDlg(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent, int slot) {
    return RunLauncher<CAutoSeed_NewPointDlg>(receiver, parent, slot);
}
