#include "fenklib/config/CTivar_MasterVolumeDlg.h"

#include "fenklib/config/AudioControls.h"
#include "fenklib/frame/WideLayout.h"
#include "fenklib/frame/LibraryHelpers.h"
#include "fenklib/resources/DialogIds.h"
#include "fenklib/resources/StringIds.h"

namespace {

namespace par = devio::par;

enum : unsigned { IDC_VOLUME = 100, IDC_TEST = 120, IDC_LABEL = 200 };

constexpr DLG_ITEM kItems[] = {
    {CExtBoardDlg::kAbsentLabel, CtlKind::Static, 0, 6, 6, 204, 24, uikit::kAnchorTopWide},
    {IDC_LABEL, CtlKind::Static, IDS_VOLUME, 6, 8, 70, 10, uikit::kAnchorTopLeft},
    {IDC_VOLUME, CtlKind::Slider, 0, 80, 6, 130, 14, uikit::kAnchorTopWide},
    {IDC_TEST, CtlKind::Button, IDS_TEST_SOUND, 6, 30, 80, 14, uikit::kAnchorTopLeft},
    {IDOK_BUTTON, CtlKind::Button, IDS_OK, 98, 54, 54, 14, uikit::kAnchorBottomRight},
    {IDCANCEL_BUTTON, CtlKind::Button, IDS_CANCEL, 156, 54, 54, 14, uikit::kAnchorBottomRight},
};
constexpr DLG_TEMPLATE kNormal{IDD_MASTER_VOLUME, 216, 74, kItems};
constexpr auto kWideItems = Widened(kItems);
constexpr DLG_TEMPLATE kWide{IDD_MASTER_VOLUME_WIDE, 216 + kWideGrow, 74, kWideItems};
const CLayoutRegistration kRegistered("CTivar_MasterVolumeDlg", {{&kNormal, &kWide}});

}  // namespace

CTivar_MasterVolumeDlg::CTivar_MasterVolumeDlg(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent)
    : CExtBoardDlg(std::move(receiver), parent, {kNormal, kWide, L"CTivar_MasterVolumeDlg", IDS_MASTER_VOLUME, IDS_NO_AUDIO},
                   {field::Level(IDC_VOLUME, par::ExtAudioVolume)}) {
    audio::Prepare(*this, m_controls, {IDC_VOLUME}, IDC_TEST,
                   [this] { RunOrder([](devio::CVokReceiverMate& mate) { mate.Do(par::ExtAudioPlay, audio::kTestSound); }, false); });
}

void CTivar_MasterVolumeDlg::UpdateOwnControls(bool usable) { m_controls.Item(IDC_TEST)->setEnabled(usable); }
