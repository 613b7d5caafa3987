#pragma once
#include "fenklib/controller/CDevicePP.h"

// The controller's laser distance meter: Measure shows the distance.
class CLaserPP : public CDevicePP {
public:
    CLaserPP();

protected:
    ACTION Prepare() override;
};
