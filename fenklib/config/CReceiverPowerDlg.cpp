#include "fenklib/config/CReceiverPowerDlg.h"

#include <QCheckBox>
#include <QLabel>
#include <QPushButton>

#include "fenklib/frame/WideLayout.h"
#include "fenklib/frame/CLayoutFactory.h"
#include "fenklib/frame/LibraryHelpers.h"
#include "fenklib/resources/DialogIds.h"
#include "fenklib/resources/StringIds.h"

namespace {

namespace par = devio::par;
namespace vok = devio::vok;

enum : unsigned { IDC_STATE = 100, IDC_SWITCH = 120, IDC_POWERUP = 140, IDC_LABEL = 200, IDC_SWITCH_LABEL = 220 };
constexpr int kStates = 5;
constexpr int kRefreshMs = 2000;

#define FENK_STATE(n, text) \
    DLG_ITEM{IDC_LABEL + (n), CtlKind::Static, text, 6, 6 + (n) * 12, 110, 10, uikit::kAnchorTopLeft}, \
        DLG_ITEM { IDC_STATE + (n), CtlKind::Static, 0, 120, 6 + (n) * 12, 90, 10, uikit::kAnchorTopWide }
#define FENK_SWITCH(n) \
    DLG_ITEM{IDC_SWITCH_LABEL + (n), CtlKind::Static, 0, 6, 90 + (n) * 16, 110, 10, uikit::kAnchorTopLeft}, \
        DLG_ITEM { IDC_SWITCH + (n), CtlKind::DropList, 0, 120, 88 + (n) * 16, 90, 13, uikit::kAnchorTopWide }

// The power-up mode above the switches, so that a receiver with few switches leaves no gap
// between them and it.
constexpr DLG_ITEM kItems[] = {
    FENK_STATE(0, IDS_ROW_BATTERY_A), FENK_STATE(1, IDS_ROW_BATTERY_B), FENK_STATE(2, IDS_ROW_POWER_SUPPLY),
    FENK_STATE(3, IDS_ROW_CHARGER), FENK_STATE(4, IDS_ROW_POWER_BOARD),
    {IDC_POWERUP, CtlKind::CheckBox, IDS_POWER_POWERUP_MODE, 6, 70, 204, 12, uikit::kAnchorTopWide},
    FENK_SWITCH(0), FENK_SWITCH(1), FENK_SWITCH(2), FENK_SWITCH(3),
    FENK_SWITCH(4), FENK_SWITCH(5), FENK_SWITCH(6), FENK_SWITCH(7),
    {IDOK_BUTTON, CtlKind::Button, IDS_OK, 98, 222, 54, 14, uikit::kAnchorBottomRight},
    {IDCANCEL_BUTTON, CtlKind::Button, IDS_CANCEL, 156, 222, 54, 14, uikit::kAnchorBottomRight},
};
#undef FENK_STATE
#undef FENK_SWITCH
static_assert(CReceiverPowerDlg::kMaxSwitches == 8, "one layout row per switch");
constexpr DLG_TEMPLATE kNormal{IDD_RECEIVER_POWER, 216, 240, kItems};
constexpr auto kWideItems = Widened(kItems);
constexpr DLG_TEMPLATE kWide{IDD_RECEIVER_POWER_WIDE, 216 + kWideGrow, 240, kWideItems};
const CLayoutRegistration kRegistered("CReceiverPowerDlg", {{&kNormal, &kWide}});

std::vector<PARAM_FIELD> StateFields() {
    return {field::Shown(IDC_STATE, par::PwrBatA), field::Shown(IDC_STATE + 1, par::PwrBatB), field::Shown(IDC_STATE + 2, par::PwrExt),
            field::Shown(IDC_STATE + 3, par::PwrCharger), field::Shown(IDC_STATE + 4, par::PwrBoard)};
}

// One row per switch the receiver has (by its number), then the power-up mode.
std::vector<PARAM_FIELD> SettingFields(bool ext, const std::vector<int>& switches) {
    std::vector<PARAM_FIELD> fields;
    for (size_t row = 0; row < switches.size() && row < CReceiverPowerDlg::kMaxSwitches; ++row)
        fields.push_back(field::KeywordChoice<vok::EPowerSwitch>(IDC_SWITCH + static_cast<unsigned>(row), par::PwrSwitch,
                                                                 {IDS_ON_TEXT, IDS_OFF_TEXT, IDS_ANT_AUTO}, switches[row]));
    if (ext) fields.push_back(field::Of(IDC_POWERUP, par::ExtPowerupMode));
    return fields;
}

}  // namespace

CReceiverPowerDlg::CReceiverPowerDlg(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent)
    : CFenkDialog(std::move(receiver), CLayoutFactory::Choose(kNormal, &kWide).number, parent, L"CReceiverPowerDlg"),
      m_controls(CLayoutFactory::Build(this, kNormal, &kWide)),
      m_states(StateFields()),
      m_settings(SettingFields(false, {})) {
    setWindowTitle(LoadResString(IDS_RECEIVER_POWER).ToQString());
    m_controls.Item(IDC_POWERUP)->hide();
    ShowSwitchRows();
    m_refresh.setInterval(kRefreshMs);
    connect(&m_refresh, &QTimer::timeout, this, [this] { Refresh(); });
}

CReceiverPowerDlg::~CReceiverPowerDlg() { DestroyWindow(); }

bool CReceiverPowerDlg::OnInitDialog() {
    CFenkDialog::OnInitDialog();
    RunJob(
        [this](CJobContext& job) {
            READING r;
            r.ext = job.Mate().IsExtFamilyModel();
            r.switches = job.Mate().ListPowerSwitches();
            r.states = m_states.Read(job.Mate());
            r.settings = CParamFields(SettingFields(r.ext, r.switches)).Read(job.Mate());
            return r;
        },
        [this](const JOB_RESULT<READING>& r) {
            if (!r.Ok()) return;
            m_ext = r.value->ext;
            m_switches = r.value->switches;
            m_settings = CParamFields(SettingFields(m_ext, m_switches));
            m_settings.Prepare(m_controls);
            m_controls.Item(IDC_POWERUP)->setVisible(m_ext);
            ShowSwitchRows();
            m_states.Show(m_controls, r.value->states);
            m_settings.Show(m_controls, r.value->settings);
            m_shown = m_settings.Collect(m_controls);
            m_refresh.start();
        });
    return true;
}

// Only the states are read again: the user's unsaved choices stay as they are.
void CReceiverPowerDlg::Refresh() {
    if (IsBusy()) return;
    RunJob([this](CJobContext& job) { return m_states.Read(job.Mate()); },
           [this](const JOB_RESULT<CParamFields::Values>& r) {
               if (r.Ok()) m_states.Show(m_controls, *r.value);
               else m_refresh.stop();   // the error was shown once; no box every two seconds
               ++m_refreshes;
           });
}

void CReceiverPowerDlg::ShowSwitchRows() {
    for (unsigned row = 0; row < kMaxSwitches; ++row) {
        const bool used = row < m_switches.size();
        auto* label = m_controls.Get<QLabel>(IDC_SWITCH_LABEL + row);
        if (used)
            label->setText(QString::fromStdWString(basekit::ustring::Format(LoadResString(IDS_POWER_SWITCH).c_str(), m_switches[row])));
        label->setVisible(used);
        m_controls.Item(IDC_SWITCH + row)->setVisible(used);
    }
}

basekit::ustring CReceiverPowerDlg::StateText(int row) const {
    return basekit::ustring::FromQString(m_controls.Get<QLabel>(IDC_STATE + row)->text());
}

void CReceiverPowerDlg::accept() {
    if (!m_shown) return;
    const auto now = m_settings.Collect(m_controls);
    if (!now) return;
    AcceptAsJob([this, was = *m_shown, now = *now](CJobContext& job) { m_settings.WriteChanged(job.Mate(), was, now); });
}

void CReceiverPowerDlg::UpdateControls() {
    const bool usable = m_shown.has_value();
    m_settings.Enable(m_controls, usable);
    m_controls.Get<QPushButton>(IDOK_BUTTON)->setEnabled(usable && !IsBusy());
}
