#include "fenklib/controller/CCompassPP.h"

#include <QLocale>
#include <QPushButton>

#include "fenklib/controller/CCompassCalibrationDlg.h"
#include "fenklib/frame/LibraryHelpers.h"
#include "fenklib/resources/DialogIds.h"
#include "fenklib/resources/StringIds.h"

namespace {
constexpr DLG_ITEM kItems[] = {
    {CDevicePP::IDC_STATE, CtlKind::Static, 0, 6, 8, 228, 20, uikit::kAnchorTopWide},
    {CDevicePP::IDC_ACTION, CtlKind::Button, IDS_READ_HEADING, 6, 34, 70, 14, uikit::kAnchorTopLeft},
    {CDevicePP::IDC_SECOND_ACTION, CtlKind::Button, IDS_CALIBRATE, 82, 34, 70, 14, uikit::kAnchorTopLeft},
};
constexpr DLG_TEMPLATE kLayout{IDD_TOOLS_COMPASS, 240, 150, kItems};
// Wide: the state reads across the page, the actions stand at its right.
constexpr DLG_ITEM kWideItems[] = {
    {CDevicePP::IDC_STATE, CtlKind::Static, 0, 6, 8, 270, 40, uikit::kAnchorTopWide},
    {CDevicePP::IDC_ACTION, CtlKind::Button, IDS_READ_HEADING, 284, 8, 70, 14, uikit::kAnchorTopRight},
    {CDevicePP::IDC_SECOND_ACTION, CtlKind::Button, IDS_CALIBRATE, 284, 26, 70, 14, uikit::kAnchorTopRight},
};
constexpr DLG_TEMPLATE kWide{IDD_TOOLS_COMPASS_WIDE, 360, 110, kWideItems};
const CLayoutRegistration kRegistered("CCompassPP", {{&kLayout, &kWide}});
}  // namespace

CCompassPP::CCompassPP() : CDevicePP(kLayout, kWide, IDS_PAGE_COMPASS, "compass", IDS_NO_COMPASS) {
    connect(Controls().Get<QPushButton>(IDC_SECOND_ACTION), &QPushButton::clicked, this, [this] {
        CCompassCalibrationDlg calibration(this);
        calibration.DoModal();
    });
}

CDevicePP::ACTION CCompassPP::Prepare() {
    return {[](hwctl::IControllerBackend& backend) { return QVariant(backend.ReadHeading()); },
            [](const QVariant& degrees) { return FormatHeading(degrees.toDouble()); }};
}

basekit::ustring CCompassPP::FormatHeading(double degrees) {
    return basekit::ustring::Format(LoadResString(IDS_HEADING_DEG).c_str(),
                                    basekit::ustring::FromQString(QLocale().toString(degrees, 'f', 1)));
}
