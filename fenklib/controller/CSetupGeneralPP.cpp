#include "fenklib/controller/CSetupGeneralPP.h"

#include "fenklib/frame/CFenkGlobalSettings.h"
#include "fenklib/resources/DialogIds.h"
#include "fenklib/resources/StringIds.h"

namespace {
constexpr DLG_ITEM kItems[] = {
    {CSetupGeneralPP::IDC_GROUP, CtlKind::Group, IDS_COORDINATE_SYSTEM, 6, 6, 228, 52, uikit::kAnchorTopWide},
    {CSetupGeneralPP::IDC_GEODETIC, CtlKind::Radio, IDS_COORD_GEODETIC, 14, 20, 212, 12, uikit::kAnchorTopWide},
    {CSetupGeneralPP::IDC_CARTESIAN, CtlKind::Radio, IDS_COORD_CARTESIAN, 14, 38, 212, 12, uikit::kAnchorTopWide},
};
constexpr DLG_TEMPLATE kLayout{IDD_SETUP_GENERAL, 240, 140, kItems};
// Wide: the two choices side by side.
constexpr DLG_ITEM kWideItems[] = {
    {CSetupGeneralPP::IDC_GROUP, CtlKind::Group, IDS_COORDINATE_SYSTEM, 6, 6, 348, 34, uikit::kAnchorTopWide},
    {CSetupGeneralPP::IDC_GEODETIC, CtlKind::Radio, IDS_COORD_GEODETIC, 14, 20, 164, 12, {0, 0, 0.5, 0}},
    {CSetupGeneralPP::IDC_CARTESIAN, CtlKind::Radio, IDS_COORD_CARTESIAN, 182, 20, 164, 12, {0.5, 0, 0.5, 0}},
};
constexpr DLG_TEMPLATE kWide{IDD_SETUP_GENERAL_WIDE, 360, 100, kWideItems};
const CLayoutRegistration kRegistered("CSetupGeneralPP", {{&kLayout, &kWide}});
}  // namespace

CSetupGeneralPP::CSetupGeneralPP() : CChoicePage(kLayout, kWide, IDS_GENERAL, IDC_GEODETIC) {}

bool CSetupGeneralPP::OnInitDialog() {
    ShowChoice(CFenkGlobalSettings::Ref().GetCoordSystem());
    return CChoicePage::OnInitDialog();
}

// The first choice is geodetic; any other is Cartesian. No choice keeps what was stored.
bool CSetupGeneralPP::OnApply() {
    const int choice = Choice();
    if (choice >= 0) CFenkGlobalSettings::Ref().SetCoordSystem(choice == 0 ? COORD_GEODETIC : COORD_CARTESIAN);
    SetModified(false);
    return true;
}
