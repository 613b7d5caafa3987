#include "fenklib/FenkLaunchers.h"
#include "fenklib/config/CRawMeasurementDlg.h"
#include "fenklib/frame/FenkExport.h"
#include "fenklib/frame/LauncherConvention.h"

extern "C" FENK_EXPORT int run_RawMeasurementDlg(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent) {
    return RunLauncher<CRawMeasurementDlg>(receiver, parent);
}
