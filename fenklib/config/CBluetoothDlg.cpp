#include "fenklib/config/CBluetoothDlg.h"

#include <QPushButton>

#include "fenklib/frame/WideLayout.h"
#include "fenklib/frame/LibraryHelpers.h"
#include "fenklib/resources/DialogIds.h"
#include "fenklib/resources/StringIds.h"
#include "platform/uikit/CMessageBoxService.h"

namespace {

namespace par = devio::par;

enum : unsigned { IDC_POWER = 100, IDC_MUX, IDC_VERSION, IDC_ADDRESS, IDC_NAME, IDC_PIN, IDC_RESET, IDC_LABEL = 200 };

#define FENK_ROW(n, id, kind, text)                                                                   \
    DLG_ITEM{IDC_LABEL + (n), CtlKind::Static, text, 6, static_cast<short>(40 + (n) * 16), 80, 10, uikit::kAnchorTopLeft}, \
        DLG_ITEM { id, kind, 0, 90, static_cast<short>(38 + (n) * 16), 120, 13, uikit::kAnchorTopWide }

constexpr DLG_ITEM kItems[] = {
    {CExtBoardDlg::kAbsentLabel, CtlKind::Static, 0, 6, 6, 204, 24, uikit::kAnchorTopWide},
    {IDC_POWER, CtlKind::CheckBox, IDS_BT_POWER, 6, 6, 204, 12, uikit::kAnchorTopWide},
    {IDC_MUX, CtlKind::CheckBox, IDS_BT_MUX, 6, 20, 204, 12, uikit::kAnchorTopWide},
    FENK_ROW(0, IDC_VERSION, CtlKind::Static, IDS_BT_VERSION),
    FENK_ROW(1, IDC_ADDRESS, CtlKind::Static, IDS_BT_ADDRESS),
    FENK_ROW(2, IDC_NAME, CtlKind::TextEdit, IDS_BT_NAME),
    FENK_ROW(3, IDC_PIN, CtlKind::TextEdit, IDS_BT_PIN),
    {IDC_RESET, CtlKind::Button, IDS_BT_RESET, 6, 106, 80, 14, uikit::kAnchorTopLeft},
    {IDOK_BUTTON, CtlKind::Button, IDS_OK, 98, 130, 54, 14, uikit::kAnchorBottomRight},
    {IDCANCEL_BUTTON, CtlKind::Button, IDS_CANCEL, 156, 130, 54, 14, uikit::kAnchorBottomRight},
};
#undef FENK_ROW
constexpr DLG_TEMPLATE kNormal{IDD_BLUETOOTH, 216, 150, kItems};
constexpr auto kWideItems = Widened(kItems);
constexpr DLG_TEMPLATE kWide{IDD_BLUETOOTH_WIDE, 216 + kWideGrow, 150, kWideItems};
const CLayoutRegistration kRegistered("CBluetoothDlg", {{&kNormal, &kWide}});

// In the order of CBluetoothDlg::Field.
std::vector<PARAM_FIELD> Fields() {
    return {field::Of(IDC_POWER, par::ExtBtPower),        field::Of(IDC_MUX, par::ExtBtMux),
            field::Shown(IDC_VERSION, par::ExtBtVerMain), field::Shown(IDC_ADDRESS, par::ExtBtBdaddr),
            field::Of(IDC_NAME, par::ExtBtName),          field::Of(IDC_PIN, par::ExtBtPincode)};
}

}  // namespace

CBluetoothDlg::CBluetoothDlg(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent)
    : CExtBoardDlg(std::move(receiver), parent, {kNormal, kWide, L"CBluetoothDlg", IDS_BLUETOOTH, IDS_NO_BLUETOOTH}, Fields()) {
    connect(m_controls.Get<QPushButton>(IDC_RESET), &QPushButton::clicked, this, [this] { OnResetModule(); });
}

bool CBluetoothDlg::OnResetModule() {
    if (uikit::CMessageBoxService::Show(this, LoadResString(IDS_CONFIRM_BT_RESET), LoadResString(IDS_BLUETOOTH),
                                        uikit::MB_YESNO | uikit::MB_ICONQUESTION) != uikit::IDYES)
        return false;
    const bool escape = IsExtFamily();
    RunOrder(
        [escape](devio::CVokReceiverMate& mate) {
            if (escape) mate.SendBluetoothEscape();
            mate.Do(par::ExtBtReset);
        },
        true);
    return true;
}

// The escape goes first, while the module still listens: switched off or reset in data mode,
// the module of the extension family keeps its link to the remote device half open.
void CBluetoothDlg::Write(devio::CVokReceiverMate& mate, const CParamFields::Values& was, const CParamFields::Values& now) const {
    const bool switchedOff = was[POWER].toBool() && !now[POWER].toBool();
    if (switchedOff && IsExtFamily()) mate.SendBluetoothEscape();
    CExtBoardDlg::Write(mate, was, now);
}

void CBluetoothDlg::UpdateOwnControls(bool usable) { m_controls.Item(IDC_RESET)->setEnabled(usable); }
