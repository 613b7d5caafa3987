#include "fenklib/FenkLaunchers.h"
#include "fenklib/config/CTrackingOptionsPS.h"
#include "fenklib/frame/FenkExport.h"
#include "fenklib/frame/LauncherConvention.h"

extern "C" FENK_EXPORT int run_TrackingOptionsPS(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent) {
    return RunLauncher<CTrackingOptionsPS>(receiver, parent);
}
