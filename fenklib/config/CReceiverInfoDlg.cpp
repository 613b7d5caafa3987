#include "fenklib/config/CReceiverInfoDlg.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QDir>
#include <QFileInfo>
#include <QHeaderView>
#include <QLabel>
#include <QLocale>
#include <QProgressBar>
#include <QPushButton>
#include <QSaveFile>
#include <QTreeWidget>

#include "fenklib/config/ReceiverInfoRows.h"
#include "fenklib/frame/CFenkLibDoc.h"
#include "fenklib/frame/CLayoutFactory.h"
#include "fenklib/frame/LibraryHelpers.h"
#include "fenklib/resources/DialogIds.h"
#include "fenklib/resources/ImageIds.h"
#include "fenklib/resources/StringIds.h"
#include "platform/basekit/CCommException.h"
#include "platform/basekit/Registry.h"
#include "platform/uikit/CFileDialogService.h"

using basekit::ustring;

namespace {

enum : unsigned { IDC_LIST = 100, IDC_REFRESH, IDC_SAVE, IDC_CANCEL_WORK, IDC_PROGRESS, IDC_STATUS };

// The list takes the room; the buttons stay in reach below it (normal) or beside it (wide).
constexpr DLG_ITEM kNormalItems[] = {
    {IDC_LIST, CtlKind::ListView, 0, 4, 4, 232, 236, uikit::kAnchorFill},
    {IDC_STATUS, CtlKind::Static, 0, 4, 244, 232, 10, uikit::kAnchorBottomWide},
    {IDC_PROGRESS, CtlKind::Progress, 0, 4, 258, 176, 14, uikit::kAnchorBottomWide},
    {IDC_CANCEL_WORK, CtlKind::Button, IDS_CANCEL, 184, 258, 52, 14, uikit::kAnchorBottomRight},
    {IDC_REFRESH, CtlKind::Button, IDS_REFRESH, 4, 276, 60, 14, uikit::kAnchorBottomLeft},
    {IDC_SAVE, CtlKind::Button, IDS_SAVE_TO_FILE, 166, 276, 70, 14, uikit::kAnchorBottomRight},
};
constexpr DLG_ITEM kWideItems[] = {
    {IDC_LIST, CtlKind::ListView, 0, 4, 4, 300, 150, uikit::kAnchorFill},
    {IDC_REFRESH, CtlKind::Button, IDS_REFRESH, 310, 4, 70, 14, uikit::kAnchorTopRight},
    {IDC_SAVE, CtlKind::Button, IDS_SAVE_TO_FILE, 310, 22, 70, 14, uikit::kAnchorTopRight},
    {IDC_PROGRESS, CtlKind::Progress, 0, 310, 44, 70, 14, uikit::kAnchorTopRight},
    {IDC_CANCEL_WORK, CtlKind::Button, IDS_CANCEL, 310, 62, 70, 14, uikit::kAnchorTopRight},
    {IDC_STATUS, CtlKind::Static, 0, 4, 158, 376, 10, uikit::kAnchorBottomWide},
};
constexpr DLG_TEMPLATE kNormal{IDD_RECEIVER_INFO, 240, 294, kNormalItems};
constexpr DLG_TEMPLATE kWide{IDD_RECEIVER_INFO_WIDE, 384, 172, kWideItems};
const CLayoutRegistration kRegistered("CReceiverInfoDlg", {{&kNormal, &kWide}});

constexpr int kColumnWidth = 100;

// The reason a reading failed, on one line, for the row's value.
ustring FailureText(const basekit::CStdException& e) {
    ustring reason;
    if (const auto* w = dynamic_cast<const basekit::CWinException*>(&e)) reason = basekit::CWinException::SystemMessage(w->Code());
    else if (const auto* c = dynamic_cast<const basekit::CCommException*>(&e)) reason = c->Reply();
    else reason = e.GetMessage();
    for (wchar_t& ch : reason)
        if (ch == L'\n' || ch == L'\r') ch = L' ';
    return ustring::Format(LoadResString(IDS_ROW_READ_FAILED).c_str(), reason);
}

// The header's date and time as locale 1033 writes them, whatever the user's locale.
ustring FileHeader() {
    const QLocale english(QLocale::English, QLocale::UnitedStates);
    const QDateTime now = QDateTime::currentDateTime();
    return ustring::Format(L"// %s %s, %s\r\n// %s %s\r\n\r\n", LoadResString(IDS_CREATED_BY), CFenkLibDoc::GetLongApplicationName(true),
                           CFenkLibDoc::GetApplicationVersion(true),
                           ustring::FromQString(english.toString(now.date(), QStringLiteral("M/d/yyyy"))),
                           ustring::FromQString(english.toString(now.time(), QStringLiteral("h:mm:ss AP"))));
}

void WriteFile(const QString& path, const std::string& bytes) {
    QSaveFile file(path);   // the old file stays whole until the new one is complete
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes.data(), static_cast<qint64>(bytes.size())) != static_cast<qint64>(bytes.size()) ||
        !file.commit())
        throw basekit::CWinException("ReceiverInfoDlg", __LINE__, ustring::FromQString(path),
                                     static_cast<unsigned>(file.error() == QFileDevice::OpenError ? EACCES : EIO));
}

}  // namespace

CReceiverInfoDlg::CReceiverInfoDlg(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent)
    : CFenkDialog(std::move(receiver), IDD_RECEIVER_INFO, parent, L"CReceiverInfoDlg", IDI_RECEIVER_INFO),
      m_controls(CLayoutFactory::Build(this, kNormal, &kWide)),
      m_list(m_controls.Get<QTreeWidget>(IDC_LIST)),
      m_defaultFileName(LoadResString(IDS_INFO_TXT)),
      m_registryKey(basekit::RegGetDefaultKeyName(L"private\\CReceiverInfoDlg")) {
    setWindowTitle(LoadResString(IDS_RECEIVER_INFO).ToQString());
    m_list->setIconSize(QSize(16, 16));
    m_list->setColumnCount(2);
    m_list->setHeaderLabels({LoadResString(IDS_COL_NAME).ToQString(), LoadResString(IDS_COL_VALUE).ToQString()});
    m_list->header()->resizeSection(0, kColumnWidth);
    m_list->header()->resizeSection(1, kColumnWidth);
    m_list->setContextMenuPolicy(Qt::ActionsContextMenu);
    auto* copy = new QAction(LoadResString(IDS_COPY_VALUE).ToQString(), m_list);
    copy->setShortcut(QKeySequence::Copy);
    m_list->addAction(copy);
    connect(copy, &QAction::triggered, this, [this] { OnCopyValue(); });
    auto* refresh = m_controls.Get<QPushButton>(IDC_REFRESH);
    auto* save = m_controls.Get<QPushButton>(IDC_SAVE);
    refresh->setShortcut(QKeySequence::Refresh);
    save->setShortcut(QKeySequence::Save);
    m_controls.Get<QProgressBar>(IDC_PROGRESS)->setTextVisible(true);
    connect(refresh, &QPushButton::clicked, this, [this] { OnRefresh(); });
    connect(save, &QPushButton::clicked, this, [this] { OnSaveToFile(); });
    connect(m_controls.Get<QPushButton>(IDC_CANCEL_WORK), &QPushButton::clicked, this, [this] { OnCancelWork(); });
}

CReceiverInfoDlg::~CReceiverInfoDlg() { DestroyWindow(); }

bool CReceiverInfoDlg::OnInitDialog() {
    CFenkDialog::OnInitDialog();
    for (const unsigned id : {IDI_RECEIVER, IDI_RAM, IDI_FLASH, IDI_BATTERY, IDI_CPU}) m_icons[id] = FenkIcon(id);
    OnRefresh();
    return true;
}

void CReceiverInfoDlg::UpdateControls() {
    const bool busy = IsBusy();
    m_controls.Get<QPushButton>(IDC_REFRESH)->setEnabled(!busy && !m_stateChanged && IsReceiverReady());
    m_controls.Get<QPushButton>(IDC_SAVE)->setEnabled(!busy || m_stateChanged);
    m_controls.Get<QProgressBar>(IDC_PROGRESS)->setVisible(busy);
    m_controls.Get<QPushButton>(IDC_CANCEL_WORK)->setVisible(busy);
}

void CReceiverInfoDlg::OnRefresh() {
    const uikit::CBusyCursor busy;
    m_list->clear();
    ClearFailed();
    m_controls.Get<QLabel>(IDC_STATUS)->clear();
    auto* progress = m_controls.Get<QProgressBar>(IDC_PROGRESS);
    progress->setRange(0, static_cast<int>(ReceiverInfoRows().size()));
    progress->setValue(0);
    progress->setFormat(QStringLiteral("%v / %m"));
    RunJob(
        [this](CJobContext& job) {
            for (const RECEIVER_INFO_ROW& row : ReceiverInfoRows()) {
                if (job.IsStopping()) return;
                ROW_VALUE value{row.labelId, row.iconId, {}, true};
                try {
                    if (row.read) value.value = row.read(job.Mate());
                } catch (const basekit::CStdException& e) {
                    if (job.IsStopping()) return;
                    value = ROW_VALUE{row.labelId, row.iconId, FailureText(e), false};
                }
                job.Deliver(std::move(value), [this](ROW_VALUE v) { AddRow(v); });
            }
        },
        [this](const JOB_RESULT<void>&) { m_readAt = QDateTime::currentDateTime(); });
}

void CReceiverInfoDlg::AddRow(const ROW_VALUE& row) {
    auto* item = new QTreeWidgetItem(m_list);
    if (row.labelId) item->setText(0, LoadResString(row.labelId).ToQString());
    if (const auto icon = m_icons.find(row.iconId); icon != m_icons.end()) item->setIcon(0, icon->second);
    item->setText(1, row.value.ToQString());
    if (!row.read) MarkFailed();
    if (row.labelId == IDS_ROW_ID && row.read) m_defaultFileName = row.value + LoadResString(IDS_TXT_EXTENSION);
    // The labels carry the units, so the names must be readable whole.
    m_list->resizeColumnToContents(0);
    if (m_list->columnWidth(0) < kColumnWidth) m_list->setColumnWidth(0, kColumnWidth);
    m_controls.Get<QProgressBar>(IDC_PROGRESS)->setValue(m_list->topLevelItemCount());
}

// Values read before the link was lost stay, marked with the time they were read.
void CReceiverInfoDlg::MarkStale() {
    if (!m_readAt.isValid()) return;
    const ustring when = ustring::FromQString(QLocale().toString(m_readAt.time(), QLocale::ShortFormat));
    for (int i = 0; i < m_list->topLevelItemCount(); ++i) {
        QTreeWidgetItem* item = m_list->topLevelItem(i);
        if (item->text(1).isEmpty() || item->data(1, Qt::UserRole).isValid()) continue;
        item->setData(1, Qt::UserRole, item->text(1));
        item->setText(1, ustring::Format(LoadResString(IDS_STALE_SINCE).c_str(), ustring::FromQString(item->text(1)), when).ToQString());
        item->setForeground(1, palette().color(QPalette::Disabled, QPalette::Text));
    }
}

void CReceiverInfoDlg::OnReceiverNotice(std::uintptr_t, std::intptr_t) {
    m_stateChanged = true;
    if (!IsReceiverReady()) MarkStale();
}

void CReceiverInfoDlg::OnReceiverError(std::uintptr_t, std::intptr_t) { m_stateChanged = true; }

void CReceiverInfoDlg::OnCopyValue() {
    const QTreeWidgetItem* item = m_list->currentItem();
    if (!item) return;
    const QVariant fresh = item->data(1, Qt::UserRole);
    QApplication::clipboard()->setText(fresh.isValid() ? fresh.toString() : item->text(1));
}

void CReceiverInfoDlg::OnSaveToFile() {
    ustring folder;
    basekit::RegGetValue(basekit::HKEY_CURRENT_USER, m_registryKey, L"InfoPath", folder);
    const QString proposal =
        folder.empty() ? m_defaultFileName.ToQString() : QDir(folder.ToQString()).filePath(m_defaultFileName.ToQString());
    const ustring path = uikit::CFileDialogService::GetSaveFileName(this, ustring::FromQString(proposal), LoadResString(IDS_TEXT_FILE_FILTER),
                                                                    LoadResString(IDS_TXT_EXTENSION));
    if (path.empty()) return;
    basekit::RegWriteValue(basekit::HKEY_CURRENT_USER, m_registryKey, L"InfoPath",
                           ustring::FromQString(QFileInfo(path.ToQString()).absolutePath()));
    SaveListing(path);
}

void CReceiverInfoDlg::SaveListing(const ustring& path) {
    m_controls.Get<QLabel>(IDC_STATUS)->clear();
    auto* progress = m_controls.Get<QProgressBar>(IDC_PROGRESS);
    progress->setRange(0, 0);   // the listing's size is not known before it has arrived
    m_tip = std::make_unique<uikit::CTipWindow>(this, LoadResString(IDS_SAVING_RECEIVER_SETTINGS));
    RunJob(
        [path](CJobContext& job) {
            const ustring listing = job.Mate().ReadSettingsListing([&job](std::uint64_t bytes, int done, int parts) {
                job.Progress(bytes, 0, ustring::Format(L"%d / %d", done, parts));
            });
            const std::string bytes = FileHeader().ToUtf8() + listing.ToUtf8();
            if (job.IsStopping()) return std::uint64_t{0};
            WriteFile(path.ToQString(), bytes);
            return static_cast<std::uint64_t>(bytes.size());
        },
        [this, path](const JOB_RESULT<std::uint64_t>& result) {
            m_tip.reset();
            if (!result.Ok()) return;
            const ustring size = ustring::FromQString(QLocale().formattedDataSize(static_cast<qint64>(*result.value)));
            m_controls.Get<QLabel>(IDC_STATUS)->setText(
                ustring::Format(LoadResString(IDS_SAVED_TO).c_str(), size, path).ToQString());
        },
        [progress](const JOB_PROGRESS& p) {
            progress->setFormat(ustring::FromQString(QLocale().formattedDataSize(static_cast<qint64>(p.done))).ToQString());
        });
}

int CReceiverInfoDlg::RowCount() const { return m_list->topLevelItemCount(); }
ustring CReceiverInfoDlg::RowLabel(int row) const { return ustring::FromQString(m_list->topLevelItem(row)->text(0)); }
ustring CReceiverInfoDlg::RowValue(int row) const { return ustring::FromQString(m_list->topLevelItem(row)->text(1)); }
bool CReceiverInfoDlg::RowHasIcon(int row) const { return !m_list->topLevelItem(row)->icon(0).isNull(); }
ustring CReceiverInfoDlg::StatusText() const { return ustring::FromQString(m_controls.Get<QLabel>(IDC_STATUS)->text()); }
bool CReceiverInfoDlg::IsRefreshEnabled() const { return m_controls.Get<QPushButton>(IDC_REFRESH)->isEnabled(); }
bool CReceiverInfoDlg::IsSaveEnabled() const { return m_controls.Get<QPushButton>(IDC_SAVE)->isEnabled(); }
