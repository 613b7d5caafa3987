#include "fenklib/FenkLaunchers.h"
#include "fenklib/frame/FenkExport.h"
#include "fenklib/frame/LauncherConvention.h"
#include "fenklib/messages/CLoggingMessagesDlg.h"

extern "C" FENK_EXPORT int run_LoggingMessagesDlg(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent) {
    return RunLauncher<CLoggingMessagesDlg>(receiver, parent);
}
