#pragma once
#include "fenklib/frame/FenkExport.h"
#include "platform/devio/IPortAddr.h"

// Called by the host around opening and closing a port and once at exit; they switch the
// controller's internal receiver and modem by the power rules of the settings.
extern "C" {
// False when the port must not be opened (the user has been told why).
FENK_EXPORT bool PreOpenPort(basekit::CSmartPtr<devio::IPortAddr> addr);
FENK_EXPORT bool PostClosePort(basekit::CSmartPtr<devio::IPortAddr> addr);
FENK_EXPORT void OnExitApp();
}
