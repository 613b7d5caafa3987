#pragma once
#include "fenklib/controller/CChoicePage.h"

// The settings sheet's "General" page: the coordinate system positions are shown and edited in.
class CSetupGeneralPP : public CChoicePage {
public:
    enum : unsigned { IDC_GROUP = 100, IDC_GEODETIC, IDC_CARTESIAN };
    CSetupGeneralPP();

    bool OnInitDialog() override;
    bool OnApply() override;
};
