#pragma once
#include "fenklib/controller/CDevicePP.h"

// The controller's compass: Read Heading shows the heading; Calibrate runs the guided
// calibration.
class CCompassPP : public CDevicePP {
public:
    CCompassPP();
    static basekit::ustring FormatHeading(double degrees);

protected:
    ACTION Prepare() override;
};
