#include "fenklib/FenkLaunchers.h"
#include "fenklib/frame/FenkExport.h"
#include "fenklib/frame/LauncherConvention.h"
#include "fenklib/site/CGeoCoordEditDlg.h"
#include "fenklib/site/CXyzCoordEditDlg.h"

extern "C" FENK_EXPORT int run_XyzCoordEditDlg(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent,
                                               devio::vok::POS_XYZ& pos) {
    return RunLauncher<CXyzCoordEditDlg>(receiver, parent, pos);
}

extern "C" FENK_EXPORT int run_GeoCoordEditDlg(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent,
                                               devio::vok::POS_GEO& pos) {
    return RunLauncher<CGeoCoordEditDlg>(receiver, parent, pos);
}
