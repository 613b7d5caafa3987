#include "fenklib/controller/CLaserPP.h"

#include <QLocale>

#include "fenklib/frame/LibraryHelpers.h"
#include "fenklib/resources/DialogIds.h"
#include "fenklib/resources/StringIds.h"

namespace {
constexpr DLG_ITEM kItems[] = {
    {CDevicePP::IDC_STATE, CtlKind::Static, 0, 6, 8, 228, 20, uikit::kAnchorTopWide},
    {CDevicePP::IDC_ACTION, CtlKind::Button, IDS_MEASURE, 6, 34, 70, 14, uikit::kAnchorTopLeft},
};
constexpr DLG_TEMPLATE kLayout{IDD_TOOLS_LASER, 240, 150, kItems};
// Wide: the state reads across the page, the actions stand at its right.
constexpr DLG_ITEM kWideItems[] = {
    {CDevicePP::IDC_STATE, CtlKind::Static, 0, 6, 8, 270, 40, uikit::kAnchorTopWide},
    {CDevicePP::IDC_ACTION, CtlKind::Button, IDS_MEASURE, 284, 8, 70, 14, uikit::kAnchorTopRight},
};
constexpr DLG_TEMPLATE kWide{IDD_TOOLS_LASER_WIDE, 360, 110, kWideItems};
const CLayoutRegistration kRegistered("CLaserPP", {{&kLayout, &kWide}});
}  // namespace

CLaserPP::CLaserPP() : CDevicePP(kLayout, kWide, IDS_PAGE_LASER, "laser", IDS_NO_LASER) {}

CDevicePP::ACTION CLaserPP::Prepare() {
    return {[](hwctl::IControllerBackend& backend) { return QVariant(backend.ReadDistance()); },
            [](const QVariant& metres) {
                const QString distance = QLocale().toString(metres.toDouble(), 'f', 3);
                return basekit::ustring::Format(LoadResString(IDS_DISTANCE_M).c_str(), basekit::ustring::FromQString(distance));
            }};
}
