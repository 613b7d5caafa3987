#include "fenklib/controller/CSetupModemsPP.h"

#include "fenklib/frame/CFenkGlobalSettings.h"
#include "fenklib/resources/DialogIds.h"
#include "fenklib/resources/StringIds.h"

namespace {
constexpr DLG_ITEM kItems[] = {
    {CSetupModemsPP::IDC_GROUP, CtlKind::Group, IDS_MODEM_DETECTION_MODE, 6, 6, 228, 52, uikit::kAnchorTopWide},
    {CSetupModemsPP::IDC_AUTODETECTION, CtlKind::Radio, IDS_AUTODETECTION, 14, 20, 212, 12, uikit::kAnchorTopWide},
    {CSetupModemsPP::IDC_MANUAL, CtlKind::Radio, IDS_MANUAL_SELECTION, 14, 38, 212, 12, uikit::kAnchorTopWide},
};
constexpr DLG_TEMPLATE kLayout{IDD_SETUP_MODEMS, 240, 140, kItems};
// Wide: the two choices side by side.
constexpr DLG_ITEM kWideItems[] = {
    {CSetupModemsPP::IDC_GROUP, CtlKind::Group, IDS_MODEM_DETECTION_MODE, 6, 6, 348, 34, uikit::kAnchorTopWide},
    {CSetupModemsPP::IDC_AUTODETECTION, CtlKind::Radio, IDS_AUTODETECTION, 14, 20, 164, 12, {0, 0, 0.5, 0}},
    {CSetupModemsPP::IDC_MANUAL, CtlKind::Radio, IDS_MANUAL_SELECTION, 182, 20, 164, 12, {0.5, 0, 0.5, 0}},
};
constexpr DLG_TEMPLATE kWide{IDD_SETUP_MODEMS_WIDE, 360, 100, kWideItems};
const CLayoutRegistration kRegistered("CSetupModemsPP", {{&kLayout, &kWide}});
}  // namespace

CSetupModemsPP::CSetupModemsPP() : CChoicePage(kLayout, kWide, IDS_MODEMS, IDC_AUTODETECTION) {}

bool CSetupModemsPP::OnInitDialog() {
    ShowChoice(CFenkGlobalSettings::Ref().GetModemAutodetection() ? 0 : 1);
    return CChoicePage::OnInitDialog();
}

bool CSetupModemsPP::OnApply() {
    const int choice = Choice();
    if (choice >= 0) CFenkGlobalSettings::Ref().SetModemAutodetection(choice == 0);
    SetModified(false);
    return true;
}
