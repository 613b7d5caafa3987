#include "fenklib/FenkLaunchers.h"
#include "fenklib/frame/FenkExport.h"
#include "fenklib/frame/LauncherConvention.h"
#include "fenklib/modem/CUniversalModemPS.h"

extern "C" FENK_EXPORT int run_UniversalModemPS(basekit::CSmartPtr<devio::IModem> modem, QWidget* parent) {
    return RunLauncher<CUniversalModemPS>(modem, parent);
}
