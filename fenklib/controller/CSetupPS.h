#pragma once
#include "fenklib/controller/CSetupGeneralPP.h"
#include "fenklib/controller/CSetupModemsPP.h"
#include "platform/uikit/CResizablePropertySheet.h"

// The library's own settings. The pages change the settings object in memory; it reaches the
// per-user store when the library unloads.
class CSetupPS : public uikit::CResizablePropertySheet {
public:
    explicit CSetupPS(QWidget* parent);

    CSetupGeneralPP& General() { return m_general; }
    CSetupModemsPP& Modems() { return m_modems; }

private:
    CSetupGeneralPP m_general;
    CSetupModemsPP m_modems;
};
