#include "fenklib/FenkLaunchers.h"
#include "fenklib/config/CPositioningPS.h"
#include "fenklib/frame/FenkExport.h"
#include "fenklib/frame/LauncherConvention.h"

extern "C" FENK_EXPORT int run_PositioningPS(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent) {
    return RunLauncher<CPositioningPS>(receiver, parent);
}
