#include "fenklib/files/CProgressDlg.h"

#include <QLabel>
#include <QProgressBar>

#include "fenklib/frame/CLayoutFactory.h"
#include "fenklib/frame/LibraryHelpers.h"
#include "fenklib/resources/DialogIds.h"
#include "fenklib/resources/StringIds.h"

using basekit::ustring;

namespace {

enum : unsigned { IDC_TEXT = 100, IDC_BAR };

constexpr DLG_ITEM kItems[] = {
    {IDC_TEXT, CtlKind::Static, 0, 7, 7, 206, 20, uikit::kAnchorTopWide},
    {IDC_BAR, CtlKind::Progress, 0, 7, 30, 206, 12, uikit::kAnchorTopWide},
    {IDCANCEL_BUTTON, CtlKind::Button, IDS_CANCEL, 163, 48, 50, 14, uikit::kAnchorBottomRight},
};
constexpr DLG_TEMPLATE kLayout{IDD_PROGRESS, 220, 68, kItems};
const CLayoutRegistration kRegistered("CProgressDlg", {{&kLayout}});
constexpr int kBarSteps = 1000;   // ranges may pass what an int holds

}  // namespace

CProgressDlg::CProgressDlg(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent, PROGRESS_INFO info)
    : CFenkDialog(std::move(receiver), IDD_PROGRESS, parent, L"CProgressDlg"),
      m_controls(CLayoutFactory::Build(this, kLayout)),
      m_info(std::move(info)) {
    setWindowTitle((m_info.caption.empty() ? LoadResString(IDS_PROGRESS) : m_info.caption).ToQString());
    m_controls.Get<QLabel>(IDC_TEXT)->setText(m_info.text.ToQString());
    m_controls.Get<QLabel>(IDC_TEXT)->setWordWrap(true);
    m_controls.Get<QProgressBar>(IDC_BAR)->setRange(0, kBarSteps);
    m_controls.Get<QProgressBar>(IDC_BAR)->setValue(0);
}

CProgressDlg::~CProgressDlg() { DestroyWindow(); }

bool CProgressDlg::OnInitDialog() {
    CFenkDialog::OnInitDialog();
    auto work = m_info.work;
    RunJob(
        [work](CJobContext& job) {
            if (work) work(job);
        },
        [this](const JOB_RESULT<void>& r) { EndDialog(r.Ok() ? 1 : 2); }, [this](const JOB_PROGRESS& p) { ShowProgress(p); });
    return true;
}

void CProgressDlg::UpdateControls() { m_controls.Item(IDCANCEL_BUTTON)->setEnabled(m_info.canCancel); }

// Cancel asks the work to stop; the dialog ends when it has (its end gives 2).
void CProgressDlg::reject() {
    if (!m_info.canCancel) return;
    if (IsBusy()) CancelJob();
    else CFenkDialog::reject();
}

void CProgressDlg::ShowProgress(const JOB_PROGRESS& p) {
    if (!p.step.empty()) m_controls.Get<QLabel>(IDC_TEXT)->setText(p.step.ToQString());
    const std::uint64_t low = m_info.rangeLow;
    const std::uint64_t high = p.total ? low + p.total : m_info.rangeHigh;
    if (high <= low) return;
    const std::uint64_t at = std::clamp<std::uint64_t>(low + p.done, low, high);
    m_controls.Get<QProgressBar>(IDC_BAR)->setValue(
        static_cast<int>(static_cast<double>(at - low) / static_cast<double>(high - low) * kBarSteps));
}

int CProgressDlg::BarValue() const { return m_controls.Get<QProgressBar>(IDC_BAR)->value(); }
ustring CProgressDlg::Text() const { return ustring::FromQString(m_controls.Get<QLabel>(IDC_TEXT)->text()); }
