#include "fenklib/config/CTivar_VolumeControlDlg.h"

#include <QLabel>

#include "fenklib/config/AudioControls.h"
#include "fenklib/frame/WideLayout.h"
#include "fenklib/frame/LibraryHelpers.h"
#include "fenklib/resources/DialogIds.h"
#include "fenklib/resources/StringIds.h"

namespace {

namespace par = devio::par;

enum : unsigned { IDC_VOLUME = 100, IDC_TEST = 120, IDC_LABEL = 200 };

#define FENK_CHANNEL(n)                                                                                  \
    DLG_ITEM{IDC_LABEL + (n), CtlKind::Static, 0, 6, static_cast<short>(8 + (n) * 20), 70, 10, uikit::kAnchorTopLeft}, \
        DLG_ITEM { IDC_VOLUME + (n), CtlKind::Slider, 0, 80, static_cast<short>(6 + (n) * 20), 130, 14, uikit::kAnchorTopWide }

constexpr DLG_ITEM kItems[] = {
    {CExtBoardDlg::kAbsentLabel, CtlKind::Static, 0, 6, 6, 204, 24, uikit::kAnchorTopWide},
    FENK_CHANNEL(0), FENK_CHANNEL(1), FENK_CHANNEL(2),
    {IDC_TEST, CtlKind::Button, IDS_TEST_SOUND, 6, 70, 80, 14, uikit::kAnchorTopLeft},
    {IDOK_BUTTON, CtlKind::Button, IDS_OK, 98, 94, 54, 14, uikit::kAnchorBottomRight},
    {IDCANCEL_BUTTON, CtlKind::Button, IDS_CANCEL, 156, 94, 54, 14, uikit::kAnchorBottomRight},
};
#undef FENK_CHANNEL
static_assert(CTivar_VolumeControlDlg::kChannels == 3, "one layout row per channel");
constexpr DLG_TEMPLATE kNormal{IDD_VOLUME_CONTROL, 216, 114, kItems};
constexpr auto kWideItems = Widened(kItems);
constexpr DLG_TEMPLATE kWide{IDD_VOLUME_CONTROL_WIDE, 216 + kWideGrow, 114, kWideItems};
const CLayoutRegistration kRegistered("CTivar_VolumeControlDlg", {{&kNormal, &kWide}});

std::vector<PARAM_FIELD> Fields() {
    std::vector<PARAM_FIELD> fields;
    for (int n = 0; n < CTivar_VolumeControlDlg::kChannels; ++n)
        fields.push_back(field::Level(IDC_VOLUME + static_cast<unsigned>(n), par::ExtAudioChannelVolume, n + 1));
    return fields;
}

}  // namespace

CTivar_VolumeControlDlg::CTivar_VolumeControlDlg(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent)
    : CExtBoardDlg(std::move(receiver), parent, {kNormal, kWide, L"CTivar_VolumeControlDlg", IDS_VOLUME_CONTROL, IDS_NO_AUDIO},
                   Fields()) {
    for (int n = 0; n < kChannels; ++n)
        m_controls.Get<QLabel>(IDC_LABEL + static_cast<unsigned>(n))
            ->setText(QString::fromStdWString(basekit::ustring::Format(LoadResString(IDS_FMT_AUDIO_CHANNEL).c_str(), n + 1)));
    audio::Prepare(*this, m_controls, {IDC_VOLUME, IDC_VOLUME + 1, IDC_VOLUME + 2}, IDC_TEST,
                   [this] { RunOrder([](devio::CVokReceiverMate& mate) { mate.Do(par::ExtAudioPlay, audio::kTestSound); }, false); });
}

void CTivar_VolumeControlDlg::UpdateOwnControls(bool usable) { m_controls.Item(IDC_TEST)->setEnabled(usable); }
