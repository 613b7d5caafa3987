#pragma once
#include "fenklib/controller/CCameraPP.h"
#include "fenklib/controller/CCompassPP.h"
#include "fenklib/controller/CControllerPowerPP.h"
#include "fenklib/controller/CLaserPP.h"
#include "platform/uikit/CResizablePropertySheet.h"

// The controller tools: its internal receiver and modem (power and power rules), laser
// distance meter, camera and compass.
class CZedToolsPS : public uikit::CResizablePropertySheet {
public:
    explicit CZedToolsPS(QWidget* parent);

    CControllerPowerPP& Receiver() { return m_receiver; }
    CControllerPowerPP& Modem() { return m_modem; }
    CLaserPP& Laser() { return m_laser; }
    CCameraPP& Camera() { return m_camera; }
    CCompassPP& Compass() { return m_compass; }

private:
    CControllerPowerPP m_receiver;
    CControllerPowerPP m_modem;
    CLaserPP m_laser;
    CCameraPP m_camera;
    CCompassPP m_compass;
};
