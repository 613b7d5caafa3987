#include "fenklib/FenkLaunchers.h"
#include "fenklib/frame/FenkExport.h"
#include "fenklib/frame/LauncherConvention.h"
#include "fenklib/status/CReceiverStatusPS.h"

extern "C" FENK_EXPORT int run_ReceiverStatusPS(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent) {
    return RunLauncher<CReceiverStatusPS>(receiver, parent);
}
