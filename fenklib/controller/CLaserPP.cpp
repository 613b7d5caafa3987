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
}  // namespace

CLaserPP::CLaserPP() : CDevicePP(kLayout, IDS_PAGE_LASER, "laser", IDS_NO_LASER) {}

basekit::ustring CLaserPP::Act(hwctl::IControllerBackend& backend) {
    const QString distance = QLocale().toString(backend.ReadDistance(), 'f', 3);
    return basekit::ustring::Format(LoadResString(IDS_DISTANCE_M).c_str(), basekit::ustring::FromQString(distance));
}
