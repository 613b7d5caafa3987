#pragma once
#include "fenklib/controller/CDevicePP.h"

// The controller's camera: Capture asks for a file and takes a still image into it.
class CCameraPP : public CDevicePP {
public:
    CCameraPP();

protected:
    ACTION Prepare() override;
};
