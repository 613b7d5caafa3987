#include "fenklib/files/CExplorerAFRMPP.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QPushButton>

#include "fenklib/frame/CLayoutFactory.h"
#include "fenklib/frame/RangeValidation.h"
#include "fenklib/frame/LibraryHelpers.h"
#include "fenklib/receiver/CVokReceiverMate.h"
#include "fenklib/resources/DialogIds.h"
#include "fenklib/resources/StringIds.h"
#include "platform/uikit/CResizablePropertySheet.h"

namespace {

namespace par = devio::par;

using P = CExplorerAFRMPP;
constexpr unsigned IDC_LABEL = 0xFFFF;   // labels are never looked up

constexpr uikit::ANCHOR kWide = uikit::kAnchorTopWide;   // move 0,0 size 1,0

// Normal: labels above their edits, one column.
constexpr DLG_ITEM kNormalItems[] = {
    {P::IDC_ENABLE, CtlKind::CheckBox, IDS_ENABLE_AFRM, 7, 7, 196, 12, kWide},
    {P::IDC_REMOVE_OLD, CtlKind::CheckBox, IDS_REMOVE_OLD_FILES, 7, 22, 196, 12, kWide},
    {IDC_LABEL, CtlKind::Static, IDS_ROTATION_PERIOD, 7, 40, 196, 9},
    {P::IDC_PERIOD, CtlKind::NumberEdit, 0, 7, 50, 196, 14, kWide},
    {IDC_LABEL, CtlKind::Static, IDS_ROTATION_PHASE, 7, 68, 196, 9},
    {P::IDC_PHASE, CtlKind::NumberEdit, 0, 7, 78, 196, 14, kWide},
    {IDC_LABEL, CtlKind::Static, IDS_ROTATION_COUNTER, 7, 96, 196, 9},
    {P::IDC_COUNTER, CtlKind::NumberEdit, 0, 7, 106, 196, 14, kWide},
    {IDC_LABEL, CtlKind::Static, IDS_ROTATION_RUNNING_COUNTER, 7, 124, 196, 9},
    {P::IDC_RUNNING_COUNTER, CtlKind::Edit, 0, 7, 134, 196, 14, kWide},
    {P::IDC_FORCE, CtlKind::Button, IDS_FORCE_FILE_ROTATION, 113, 156, 90, 16, uikit::kAnchorBottomRight},
};
// Wide: labels beside their edits.
constexpr DLG_ITEM kWideItems[] = {
    {P::IDC_ENABLE, CtlKind::CheckBox, IDS_ENABLE_AFRM, 7, 7, 150, 12, kWide},
    {P::IDC_REMOVE_OLD, CtlKind::CheckBox, IDS_REMOVE_OLD_FILES, 7, 22, 150, 12, kWide},
    {IDC_LABEL, CtlKind::Static, IDS_ROTATION_PERIOD, 7, 42, 120, 9},
    {P::IDC_PERIOD, CtlKind::NumberEdit, 0, 130, 40, 173, 14, kWide},
    {IDC_LABEL, CtlKind::Static, IDS_ROTATION_PHASE, 7, 60, 120, 9},
    {P::IDC_PHASE, CtlKind::NumberEdit, 0, 130, 58, 173, 14, kWide},
    {IDC_LABEL, CtlKind::Static, IDS_ROTATION_COUNTER, 7, 78, 120, 9},
    {P::IDC_COUNTER, CtlKind::NumberEdit, 0, 130, 76, 173, 14, kWide},
    {IDC_LABEL, CtlKind::Static, IDS_ROTATION_RUNNING_COUNTER, 7, 96, 123, 9},
    {P::IDC_RUNNING_COUNTER, CtlKind::Edit, 0, 130, 94, 173, 14, kWide},
    {P::IDC_FORCE, CtlKind::Button, IDS_FORCE_FILE_ROTATION, 213, 116, 90, 16, uikit::kAnchorBottomRight},
};
constexpr DLG_TEMPLATE kNormal{IDD_EXPLORER_AFRM, 210, 180, kNormalItems};
constexpr DLG_TEMPLATE kWideLayout{IDD_EXPLORER_AFRM_WIDE, 310, 140, kWideItems};
const CLayoutRegistration kRegistered("CExplorerAFRMPP", {{&kNormal, &kWideLayout}});

constexpr int kPeriodMin = 60, kPeriodMax = 86400;
constexpr int kPhaseMin = 0, kPhaseMax = 86400;
constexpr std::int64_t kCounterMin = 0, kCounterMax = 2147483647;

}  // namespace

CExplorerAFRMPP::CExplorerAFRMPP(basekit::CSmartPtr<devio::IReceiver> receiver)
    : CFenkPropertyPage(std::move(receiver), CLayoutFactory::Choose(kNormal, &kWideLayout).number, LoadResString(IDS_PAGE_AFRM)),
      m_controls(CLayoutFactory::Build(this, kNormal, &kWideLayout)) {
    m_controls.Get<QLineEdit>(IDC_RUNNING_COUNTER)->setReadOnly(true);
    connect(m_controls.Get<QCheckBox>(IDC_ENABLE), &QCheckBox::clicked, this, [this] { OnEnableClicked(); });
    connect(m_controls.Get<QCheckBox>(IDC_REMOVE_OLD), &QCheckBox::clicked, this, [this] { OnEnableClicked(); });
    connect(m_controls.Get<QPushButton>(IDC_FORCE), &QPushButton::clicked, this, [this] { OnForceRotation(); });
    for (const unsigned id : {IDC_PERIOD, IDC_PHASE, IDC_COUNTER})
        connect(m_controls.Get<QLineEdit>(id), &QLineEdit::textEdited, this, [this] { SetModified(); });
    m_timer.setInterval(kTimerPeriodMs);
    connect(&m_timer, &QTimer::timeout, this, [this] { OnTimerTick(); });
    ShowValues();
}

CExplorerAFRMPP::~CExplorerAFRMPP() { DestroyWindow(); }

bool CExplorerAFRMPP::OnInitDialog() {
    CFenkPropertyPage::OnInitDialog();
    m_read = false;
    m_timer.start();
    return true;
}

bool CExplorerAFRMPP::OnSetActive() {
    if (!m_read && !m_reading) ReadReceiver();
    // A counter that stopped on a failure is tried again when the user comes back to it.
    if (IsWindowCreated() && !m_timer.isActive()) m_timer.start();
    return CFenkPropertyPage::OnSetActive();
}

void CExplorerAFRMPP::ReadReceiver() {
    m_reading = true;
    m_polling = false;
    RunJob(
        [](CJobContext& job) {
            devio::CVokReceiverMate& mate = job.Mate();
            VALUES r;
            r.enabled = mate.Get(par::LogRotMode);
            r.removeOld = mate.Get(par::LogRotRmold);
            r.period = mate.Get(par::LogRotScPeriod);
            r.phase = mate.Get(par::LogRotScPhase);
            r.counter = mate.Get(par::LogRotScCount);
            return r;
        },
        [this](const JOB_RESULT<VALUES>& r) {
            m_reading = false;
            if (!r.Ok()) return;
            m_enabled = r.value->enabled;
            m_removeOld = r.value->removeOld;
            m_period = r.value->period;
            m_phase = r.value->phase;
            m_counter = r.value->counter;
            ShowValues();
            m_read = true;
        });
}

void CExplorerAFRMPP::ShowValues() {
    m_controls.Get<QCheckBox>(IDC_ENABLE)->setChecked(m_enabled);
    m_controls.Get<QCheckBox>(IDC_REMOVE_OLD)->setChecked(m_removeOld);
    // Numbers of the receiver, shown as it writes them (no group separators).
    m_controls.Get<QLineEdit>(IDC_PERIOD)->setText(QString::number(m_period));
    m_controls.Get<QLineEdit>(IDC_PHASE)->setText(QString::number(m_phase));
    m_controls.Get<QLineEdit>(IDC_COUNTER)->setText(QString::number(m_counter));
}

std::optional<CExplorerAFRMPP::VALUES> CExplorerAFRMPP::TakeValues() {
    VALUES v;
    v.enabled = m_controls.Get<QCheckBox>(IDC_ENABLE)->isChecked();
    v.removeOld = m_controls.Get<QCheckBox>(IDC_REMOVE_OLD)->isChecked();
    if (ValidateRange(this, m_controls.Get<QLineEdit>(IDC_PERIOD), kPeriodMin, kPeriodMax, v.period) &&
        ValidateRange(this, m_controls.Get<QLineEdit>(IDC_PHASE), kPhaseMin, kPhaseMax, v.phase) &&
        ValidateRange(this, m_controls.Get<QLineEdit>(IDC_COUNTER), kCounterMin, kCounterMax, v.counter))
        return v;
    return std::nullopt;
}

void CExplorerAFRMPP::OnEnableClicked() {
    m_enabled = m_controls.Get<QCheckBox>(IDC_ENABLE)->isChecked();
    m_removeOld = m_controls.Get<QCheckBox>(IDC_REMOVE_OLD)->isChecked();
    SetModified();
    UpdateControls();
}

// The counter's poll does not grey the page every second; a reading, a write or a forced
// rotation does.
void CExplorerAFRMPP::UpdateControls() {
    const bool working = IsBusy() && !m_polling;
    for (const unsigned id : {IDC_REMOVE_OLD, IDC_PERIOD, IDC_PHASE, IDC_COUNTER, IDC_RUNNING_COUNTER, IDC_FORCE})
        m_controls.Item(id)->setEnabled(m_enabled && !working);
    m_controls.Item(IDC_ENABLE)->setEnabled(!working);
}

// Every value is written on every Apply, changed or not: the receiver may have been changed
// from elsewhere since the page read it. Values that fail their range stay in the edits as
// typed, with the range message.
bool CExplorerAFRMPP::OnApply() {
    if (m_reading) return false;   // the controls do not hold the receiver's values yet
    const std::optional<VALUES> v = TakeValues();
    if (!v) return false;
    m_polling = false;
    ApplyAsJob(
        [v = *v](CJobContext& job) {
            devio::CVokReceiverMate& mate = job.Mate();
            mate.Set(par::LogRotMode, v.enabled);
            mate.Set(par::LogRotRmold, v.removeOld);
            mate.Set(par::LogRotScPeriod, v.period);
            mate.Set(par::LogRotScPhase, v.phase);
            mate.Set(par::LogRotScCount, v.counter);
        },
        [this, v = *v] {
            m_enabled = v.enabled;
            m_removeOld = v.removeOld;
            m_period = v.period;
            m_phase = v.phase;
            m_counter = v.counter;
        });
    return true;
}

void CExplorerAFRMPP::OnForceRotation() {
    m_polling = false;
    RunJob([](CJobContext& job) { job.Mate().Do(par::LogRotForce); }, [](const JOB_RESULT<void>&) {});
}

// A tick polls only when nothing else runs: a write or a reading in progress says more than the
// counter would.
void CExplorerAFRMPP::OnTimerTick() {
    if (!m_timer.isActive() || IsBusy() || !GetSheet() || GetSheet()->GetActivePage() != this) return;
    m_polling = true;
    RunJob([](CJobContext& job) { return static_cast<int>(job.Mate().Get(par::LogRotCount)); },
           [this](const JOB_RESULT<int>& r) {
               m_polling = false;
               if (r.Ok()) return m_controls.Get<QLineEdit>(IDC_RUNNING_COUNTER)->setText(QString::number(*r.value));
               // A dead link would fail every second: its one box is shown, and the counter rests
               // until the page is shown again.
               if (r.outcome == JobOutcome::Failed) m_timer.stop();
           });
}
