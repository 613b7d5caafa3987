#include "fenklib/controller/CCameraPP.h"

#include "fenklib/frame/LibraryHelpers.h"
#include "fenklib/resources/DialogIds.h"
#include "fenklib/resources/StringIds.h"
#include "platform/uikit/CFileDialogService.h"

namespace {
constexpr DLG_ITEM kItems[] = {
    {CDevicePP::IDC_STATE, CtlKind::Static, 0, 6, 8, 228, 20, uikit::kAnchorTopWide},
    {CDevicePP::IDC_ACTION, CtlKind::Button, IDS_CAPTURE, 6, 34, 70, 14, uikit::kAnchorTopLeft},
};
constexpr DLG_TEMPLATE kLayout{IDD_TOOLS_CAMERA, 240, 150, kItems};
}  // namespace

CCameraPP::CCameraPP() : CDevicePP(kLayout, IDS_PAGE_CAMERA, "camera", IDS_NO_CAMERA) {}

basekit::ustring CCameraPP::Act(hwctl::IControllerBackend& backend) {
    const basekit::ustring path =
        uikit::CFileDialogService::GetSaveFileName(this, L"image.jpg", LoadResString(IDS_IMAGE_FILTER), L"jpg");
    if (path.empty()) return {};
    backend.CaptureStill(path.ToUtf8());
    return basekit::ustring::Format(LoadResString(IDS_IMAGE_SAVED).c_str(), path);
}
