#include "fenklib/controller/CCameraPP.h"

#include <QFile>
#include <QImage>

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
// Wide: the state reads across the page, the actions stand at its right.
constexpr DLG_ITEM kWideItems[] = {
    {CDevicePP::IDC_STATE, CtlKind::Static, 0, 6, 8, 270, 40, uikit::kAnchorTopWide},
    {CDevicePP::IDC_ACTION, CtlKind::Button, IDS_CAPTURE, 284, 8, 70, 14, uikit::kAnchorTopRight},
};
constexpr DLG_TEMPLATE kWide{IDD_TOOLS_CAMERA_WIDE, 360, 110, kWideItems};
const CLayoutRegistration kRegistered("CCameraPP", {{&kLayout, &kWide}});
}  // namespace

CCameraPP::CCameraPP() : CDevicePP(kLayout, kWide, IDS_PAGE_CAMERA, "camera", IDS_NO_CAMERA) {}

// The camera writes the form it delivers (JPEG, or an uncompressed frame); a different form
// than the file the person chose is converted into it, by the file's extension.
CDevicePP::ACTION CCameraPP::Prepare() {
    const basekit::ustring path =
        uikit::CFileDialogService::GetSaveFileName(this, L"image.jpg", LoadResString(IDS_IMAGE_FILTER), L"jpg");
    if (path.empty()) return {};
    return {[path](hwctl::IControllerBackend& backend) { return QVariant(QString::fromStdString(backend.CaptureStill(path.ToUtf8()))); },
            [path](const QVariant& file) {
                const QString chosen = path.ToQString();
                const QString written = file.toString();
                if (written != chosen) {
                    const bool converted = QImage(written).save(chosen);
                    if (converted) QFile::remove(written);
                    else return basekit::ustring::Format(LoadResString(IDS_IMAGE_SAVED).c_str(), basekit::ustring::FromQString(written));
                }
                return basekit::ustring::Format(LoadResString(IDS_IMAGE_SAVED).c_str(), path);
            }};
}
