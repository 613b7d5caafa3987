#include "fenklib/files/CCopyFileDlg.h"

#include <QLabel>
#include <QLocale>
#include <QProgressBar>
#include <QPushButton>

#include "fenklib/frame/CLayoutFactory.h"
#include "fenklib/frame/LibraryHelpers.h"
#include "fenklib/frame/TransferJob.h"
#include "fenklib/resources/DialogIds.h"
#include "fenklib/resources/StringIds.h"
#include "platform/uikit/CMessageBoxService.h"

using basekit::ustring;

namespace {

enum : unsigned { IDC_SOURCE = 100, IDC_TARGET, IDC_ITEM, IDC_PROGRESS, IDC_SPEED, IDC_TIME_LEFT, IDC_LABEL = 0xFFFF };

constexpr DLG_ITEM kItems[] = {
    {IDC_LABEL, CtlKind::Static, IDS_COPY_FROM, 7, 7, 30, 10},
    {IDC_SOURCE, CtlKind::Static, 0, 40, 7, 193, 10, uikit::kAnchorTopWide},
    {IDC_LABEL, CtlKind::Static, IDS_COPY_TO, 7, 20, 30, 10},
    {IDC_TARGET, CtlKind::Static, 0, 40, 20, 193, 10, uikit::kAnchorTopWide},
    {IDC_ITEM, CtlKind::Static, 0, 7, 34, 226, 10, uikit::kAnchorTopWide},
    {IDC_PROGRESS, CtlKind::Progress, 0, 7, 47, 226, 12, uikit::kAnchorTopWide},
    {IDC_SPEED, CtlKind::Static, 0, 7, 63, 110, 10},
    {IDC_TIME_LEFT, CtlKind::Static, 0, 120, 63, 113, 10, uikit::kAnchorTopWide},
    {IDCANCEL_BUTTON, CtlKind::Button, IDS_CANCEL, 183, 80, 50, 14, uikit::kAnchorBottomRight},
};
constexpr DLG_TEMPLATE kLayout{IDD_COPY_FILE, 240, 100, kItems};
const CLayoutRegistration kRegistered("CCopyFileDlg", {{&kLayout}});

constexpr int kBarSteps = 1000;        // the bar counts in thousandths: files pass 2 GB

ustring TimeText(double seconds) {
    const long s = static_cast<long>(seconds + 0.5);
    return ustring::Format(L"%ld:%02ld:%02ld", s / 3600, (s / 60) % 60, s % 60);
}

}  // namespace

CCopyFileDlg::CCopyFileDlg(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent, const wchar_t* source,
                           const wchar_t* target, bool fromReceiver)
    : CCopyFileDlg(std::move(receiver), parent, std::vector<COPY_ITEM>{{source ? source : L"", target ? target : L"", 0}}) {
    m_fromReceiver = fromReceiver;
}

CCopyFileDlg::CCopyFileDlg(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent, std::vector<COPY_ITEM> items)
    : CFenkDialog(std::move(receiver), IDD_COPY_FILE, parent, L"CCopyFileDlg"),
      m_controls(CLayoutFactory::Build(this, kLayout)),
      m_items(std::move(items)) {
    setWindowTitle(LoadResString(IDS_COPY_FILE).ToQString());
    m_controls.Get<QProgressBar>(IDC_PROGRESS)->setRange(0, kBarSteps);
    m_controls.Get<QProgressBar>(IDC_PROGRESS)->setValue(0);
}

CCopyFileDlg::~CCopyFileDlg() { DestroyWindow(); }

bool CCopyFileDlg::OnInitDialog() {
    CFenkDialog::OnInitDialog();
    if (!m_items.empty()) ShowItem(0);
    StartCopy();
    return true;
}

void CCopyFileDlg::UpdateControls() { m_controls.Item(IDCANCEL_BUTTON)->setEnabled(true); }

void CCopyFileDlg::ShowItem(int index) {
    const COPY_ITEM& item = m_items[static_cast<size_t>(index)];
    m_controls.Get<QLabel>(IDC_SOURCE)->setText(item.source.ToQString());
    m_controls.Get<QLabel>(IDC_TARGET)->setText(item.target.ToQString());
    m_controls.Get<QLabel>(IDC_ITEM)->setText(
        ustring::Format(LoadResString(IDS_COPY_FILE_N_OF_M).c_str(), index + 1, static_cast<int>(m_items.size())).ToQString());
}

// The files go one after another as one transfer job of the window; Cancel stops it.
void CCopyFileDlg::StartCopy() {
    std::uint64_t known = 0;
    for (const COPY_ITEM& item : m_items) known += item.size;
    RunJob(
        [this, items = m_items, known, up = !m_fromReceiver](CJobContext& job) {
            CTransfer transfer(job, known);
            for (size_t i = 0; i < items.size(); ++i) {
                job.Deliver(static_cast<int>(i), [this](int index) { ShowItem(index); });
                if (up) transfer.Upload(items[i].source, items[i].target);
                else transfer.Download(items[i].source, items[i].target);
            }
        },
        [this](const JOB_RESULT<void>& r) { EndDialog(r.Ok() ? 1 : 2); },
        [this](const JOB_PROGRESS& p) { ShowProgress(p); });
}

void CCopyFileDlg::ShowProgress(const JOB_PROGRESS& p) {
    auto* bar = m_controls.Get<QProgressBar>(IDC_PROGRESS);
    if (p.total) bar->setValue(static_cast<int>(static_cast<double>(p.done) / static_cast<double>(p.total) * kBarSteps));
    const double speed = p.bytesPerSecond;
    if (speed <= 0 || p.done == 0) return;
    const QLocale locale;   // shown to a person: the user's own locale
    m_controls.Get<QLabel>(IDC_SPEED)->setText(
        ustring::Format(LoadResString(IDS_COPY_SPEED).c_str(), ustring::FromQString(locale.formattedDataSize(static_cast<qint64>(speed))))
            .ToQString());
    if (p.total > p.done)
        m_controls.Get<QLabel>(IDC_TIME_LEFT)->setText(
            ustring::Format(LoadResString(IDS_COPY_TIME_LEFT).c_str(), TimeText(static_cast<double>(p.total - p.done) / speed))
                .ToQString());
}

ustring CCopyFileDlg::SpeedText() const { return ustring::FromQString(m_controls.Get<QLabel>(IDC_SPEED)->text()); }
ustring CCopyFileDlg::TimeLeftText() const { return ustring::FromQString(m_controls.Get<QLabel>(IDC_TIME_LEFT)->text()); }
