#include "fenklib/files/CExplorerLogsPP.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QPushButton>

#include "fenklib/frame/CLayoutFactory.h"
#include "fenklib/frame/CFenkGlobalSettings.h"
#include "fenklib/frame/LibraryHelpers.h"
#include "fenklib/frame/SiteEvents.h"
#include "fenklib/receiver/CVokReceiverMate.h"
#include "fenklib/resources/DialogIds.h"
#include "fenklib/resources/StringIds.h"
#include "platform/uikit/CMessageBoxService.h"

using basekit::ustring;
namespace par = devio::par;

namespace {

using P = CExplorerLogsPP;
constexpr unsigned IDC_LABEL = 0xFFFF;

constexpr DLG_ITEM kNormalItems[] = {
    {IDC_LABEL, CtlKind::Static, IDS_CURRENT_FILE_A, 7, 7, 196, 9},
    {P::IDC_FILE_A, CtlKind::Static, 0, 7, 17, 196, 9, uikit::kAnchorTopWide},
    {IDC_LABEL, CtlKind::Static, IDS_CURRENT_FILE_B, 7, 31, 196, 9},
    {P::IDC_FILE_B, CtlKind::Static, 0, 7, 41, 196, 9, uikit::kAnchorTopWide},
    {IDC_LABEL, CtlKind::Static, IDS_LOGGING_PERIOD, 7, 57, 196, 9},
    {P::IDC_PERIOD, CtlKind::RealEdit, 0, 7, 67, 196, 14, uikit::kAnchorTopWide},
    {P::IDC_IMP_FIRST, CtlKind::CheckBox, IDS_LOG_IMP_FIRST, 7, 87, 196, 12, uikit::kAnchorTopWide},
    {P::IDC_IMP_SECOND, CtlKind::CheckBox, IDS_LOG_IMP_SECOND, 7, 101, 196, 12, uikit::kAnchorTopWide},
    {P::IDC_START, CtlKind::Button, IDS_START_LOGGING, 7, 122, 80, 16, uikit::kAnchorBottomLeft},
    {P::IDC_STOP, CtlKind::Button, IDS_STOP_LOGGING, 123, 122, 80, 16, uikit::kAnchorBottomRight},
    {P::IDC_SITE_EVENTS, CtlKind::Button, IDS_WRITE_SITE_EVENTS, 7, 142, 196, 16, uikit::kAnchorBottomWide},
};
constexpr DLG_ITEM kWideItems[] = {
    {IDC_LABEL, CtlKind::Static, IDS_CURRENT_FILE_A, 7, 7, 100, 9},
    {P::IDC_FILE_A, CtlKind::Static, 0, 110, 7, 193, 9, uikit::kAnchorTopWide},
    {IDC_LABEL, CtlKind::Static, IDS_CURRENT_FILE_B, 7, 20, 100, 9},
    {P::IDC_FILE_B, CtlKind::Static, 0, 110, 20, 193, 9, uikit::kAnchorTopWide},
    {IDC_LABEL, CtlKind::Static, IDS_LOGGING_PERIOD, 7, 37, 100, 9},
    {P::IDC_PERIOD, CtlKind::RealEdit, 0, 110, 35, 193, 14, uikit::kAnchorTopWide},
    {P::IDC_IMP_FIRST, CtlKind::CheckBox, IDS_LOG_IMP_FIRST, 7, 54, 140, 12},
    {P::IDC_IMP_SECOND, CtlKind::CheckBox, IDS_LOG_IMP_SECOND, 150, 54, 153, 12, uikit::kAnchorTopWide},
    {P::IDC_START, CtlKind::Button, IDS_START_LOGGING, 7, 74, 80, 16, uikit::kAnchorBottomLeft},
    {P::IDC_SITE_EVENTS, CtlKind::Button, IDS_WRITE_SITE_EVENTS, 93, 74, 124, 16, uikit::kAnchorBottomCentre},
    {P::IDC_STOP, CtlKind::Button, IDS_STOP_LOGGING, 223, 74, 80, 16, uikit::kAnchorBottomRight},
};
constexpr DLG_TEMPLATE kNormal{IDD_EXPLORER_LOGS, 210, 166, kNormalItems};
constexpr DLG_TEMPLATE kWide{IDD_EXPLORER_LOGS_WIDE, 310, 96, kWideItems};
const CLayoutRegistration kRegistered("CExplorerLogsPP", {{&kNormal, &kWide}});

constexpr double kPeriodMin = 0.05, kPeriodMax = 86400;

QString FileText(const ustring& name, std::uint64_t size) {
    if (name.empty()) return LoadResString(IDS_NOT_LOGGING).ToQString();
    const ustring bytes = ustring::FromQString(QLocale().toString(static_cast<qulonglong>(size)));
    return name.ToQString() + QStringLiteral(", ") + ustring::Format(LoadResString(IDS_FILE_SIZE_BYTES).c_str(), bytes).ToQString();
}

}  // namespace

CExplorerLogsPP::CExplorerLogsPP(basekit::CSmartPtr<devio::IReceiver> receiver)
    : CFenkPropertyPage(std::move(receiver), CLayoutFactory::Choose(kNormal, &kWide).number, LoadResString(IDS_PAGE_LOGS)),
      m_controls(CLayoutFactory::Build(this, kNormal, &kWide)) {
    connect(m_controls.Get<QPushButton>(IDC_START), &QPushButton::clicked, this, [this] { OnStartLogging(); });
    connect(m_controls.Get<QPushButton>(IDC_STOP), &QPushButton::clicked, this, [this] { OnStopLogging(); });
    connect(m_controls.Get<QPushButton>(IDC_SITE_EVENTS), &QPushButton::clicked, this, [this] { OnWriteSiteEvents(); });
    connect(m_controls.Get<QLineEdit>(IDC_PERIOD), &QLineEdit::textEdited, this, [this] { SetModified(); });
    for (const unsigned id : {IDC_IMP_FIRST, IDC_IMP_SECOND})
        connect(m_controls.Get<QCheckBox>(id), &QCheckBox::clicked, this, [this] { SetModified(); });
}

CExplorerLogsPP::~CExplorerLogsPP() { DestroyWindow(); }

bool CExplorerLogsPP::OnSetActive() {
    ReadReceiver();
    return CFenkPropertyPage::OnSetActive();
}

namespace {
struct LOG_FILES {
    ustring a, b;
    std::uint64_t sizeA = 0, sizeB = 0;
};
struct LOG_SETTINGS {
    double period = 0;
    bool first = false, second = false;
};
}  // namespace

// The settings the user may be editing are read once; the files every time, shown as soon as
// they are known.
void CExplorerLogsPP::ReadReceiver() {
    RunJob(
        [this, settingsRead = m_settingsRead](CJobContext& job) {
            devio::CVokReceiverMate& mate = job.Mate();
            LOG_FILES files;
            files.a = mate.GetCurrentFile(L'a');
            files.sizeA = files.a.empty() ? 0 : static_cast<std::uint64_t>(mate.Get(par::CurFileASize));
            files.b = mate.GetCurrentFile(L'b');
            files.sizeB = files.b.empty() ? 0 : static_cast<std::uint64_t>(mate.Get(par::CurFileBSize));
            job.Deliver(files, [this](const LOG_FILES& f) { ShowFiles(f.a, f.sizeA, f.b, f.sizeB); });
            if (settingsRead) return;
            LOG_SETTINGS settings;
            settings.period = mate.Get(par::LogScPeriod);
            mate.GetLogImp(settings.first, settings.second);
            job.Deliver(settings, [this](const LOG_SETTINGS& v) {
                if (m_settingsRead) return;
                // The receiver's own number form (C locale), as it will be written back.
                m_controls.Get<QLineEdit>(IDC_PERIOD)->setText(QString::number(v.period, 'f', 2));
                m_controls.Get<QCheckBox>(IDC_IMP_FIRST)->setChecked(v.first);
                m_controls.Get<QCheckBox>(IDC_IMP_SECOND)->setChecked(v.second);
                m_settingsRead = true;
            });
        },
        [](const JOB_RESULT<void>&) {});
}

void CExplorerLogsPP::ShowFiles(const ustring& a, std::uint64_t sizeA, const ustring& b, std::uint64_t sizeB) {
    m_controls.Get<QLabel>(IDC_FILE_A)->setText(FileText(a, sizeA));
    m_controls.Get<QLabel>(IDC_FILE_B)->setText(FileText(b, sizeB));
    m_logging = !a.empty();
}

void CExplorerLogsPP::UpdateControls() {
    const bool busy = IsBusy();
    m_controls.Item(IDC_START)->setEnabled(!busy && !m_logging);
    m_controls.Item(IDC_STOP)->setEnabled(!busy && m_logging);
    m_controls.Item(IDC_SITE_EVENTS)->setEnabled(!busy);
}

bool CExplorerLogsPP::OnApply() {
    if (!m_settingsRead) return true;   // nothing was shown, so nothing is written
    auto* edit = m_controls.Get<QLineEdit>(IDC_PERIOD);
    bool parsed = false;
    const double period = edit->text().trimmed().toDouble(&parsed);   // C locale, as the receiver writes it
    if (!parsed || period < kPeriodMin || period > kPeriodMax) {
        uikit::CMessageBoxService::Show(this,
                                        ustring::Format(LoadResString(IDS_ENTER_REAL_BETWEEN).c_str(), ustring(L"0.05"), ustring(L"86400")),
                                        {}, uikit::MB_OK | uikit::MB_ICONEXCLAMATION);
        edit->setFocus();
        edit->selectAll();
        return false;
    }
    ApplyAsJob(
        [period, first = m_controls.Get<QCheckBox>(IDC_IMP_FIRST)->isChecked(),
         second = m_controls.Get<QCheckBox>(IDC_IMP_SECOND)->isChecked()](CJobContext& job) {
            job.Mate().Set(par::LogScPeriod, period);
            job.Mate().SetLogImp(first, second);
        },
        [] {});
    return true;
}

// A forced new file is how the receiver starts logging into a file it names from its prefix.
void CExplorerLogsPP::OnStartLogging() {
    ChangeThenRead([](CJobContext& job) { job.Mate().Do(par::LogRotForce); });
}

void CExplorerLogsPP::OnStopLogging() {
    ChangeThenRead([](CJobContext& job) { job.Mate().SetCurrentFile(L'a', L""); });
}

// The files are read again whether the change worked or not: the receiver may have done part.
void CExplorerLogsPP::ChangeThenRead(std::function<void(CJobContext&)> change) {
    RunJob(std::move(change), [this](const JOB_RESULT<void>& r) {
        if (r.outcome != JobOutcome::Stopped) ReadReceiver();
    });
}

// The site the settings hold, so that the file being recorded says where it was recorded; a
// refused event ends the sequence with its error box, the ones before it stay.
void CExplorerLogsPP::OnWriteSiteEvents() {
    const SiteParameters site = CFenkGlobalSettings::Ref().GetSiteParameters();
    RunJob([site](CJobContext& job) { WriteSiteEvents(job.Mate(), site); }, [](const JOB_RESULT<void>&) {});
}
