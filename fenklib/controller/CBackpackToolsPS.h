#pragma once
#include "fenklib/controller/CControllerPowerPP.h"
#include "platform/uikit/CResizablePropertySheet.h"

// The backpack controller's tools: its internal receiver's power and power rules.
class CBackpackToolsPS : public uikit::CResizablePropertySheet {
public:
    explicit CBackpackToolsPS(QWidget* parent);

    CControllerPowerPP& Receiver() { return m_receiver; }

private:
    CControllerPowerPP m_receiver;
};
