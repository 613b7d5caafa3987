#pragma once
#include "fenklib/controller/CChoicePage.h"

// The settings sheet's "Modems" page: whether modems are detected automatically.
class CSetupModemsPP : public CChoicePage {
public:
    enum : unsigned { IDC_GROUP = 100, IDC_AUTODETECTION, IDC_MANUAL };
    CSetupModemsPP();

    bool OnInitDialog() override;
    bool OnApply() override;
};
