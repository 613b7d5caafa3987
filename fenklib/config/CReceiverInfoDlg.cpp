#include "fenklib/config/CReceiverInfoDlg.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLocale>
#include <QProgressBar>
#include <QPushButton>
#include <QSaveFile>
#include <QTreeWidget>
#include <QVBoxLayout>

#include "fenklib/config/ReceiverInfoRows.h"
#include "fenklib/frame/CFenkLibDoc.h"
#include "fenklib/frame/LibraryHelpers.h"
#include "fenklib/resources/DialogIds.h"
#include "fenklib/resources/ImageIds.h"
#include "fenklib/resources/StringIds.h"
#include "platform/basekit/CCommException.h"
#include "platform/basekit/CWinException.h"
#include "platform/basekit/Registry.h"
#include "platform/uikit/CFileDialogService.h"
#include "platform/uikit/CTipWindow.h"

using basekit::CLocker;
using basekit::ustring;

namespace {

constexpr int kColumnWidth = 100;
// Bytes a parameter listing may reach; its time-out follows from it and the line rate.
constexpr unsigned kListingBytes = 16u * 1024u * 1024u;

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

}  // namespace

CReceiverInfoDlg::CReceiverInfoDlg(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent)
    : CFenkDialog(std::move(receiver), IDD_RECEIVER_INFO, parent, L"CReceiverInfoDlg", IDI_RECEIVER_INFO),
      m_defaultFileName(LoadResString(IDS_INFO_TXT)),
      m_registryKey(basekit::RegGetDefaultKeyName(L"private\\CReceiverInfoDlg")) {
    setWindowTitle(LoadResString(IDS_RECEIVER_INFO).ToQString());
    BuildControls();
}

CReceiverInfoDlg::~CReceiverInfoDlg() { DestroyWindow(); }

void CReceiverInfoDlg::BuildControls() {
    m_list = new QTreeWidget(this);
    m_list->setRootIsDecorated(false);
    m_list->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_list->setIconSize(QSize(16, 16));
    m_list->setColumnCount(2);
    m_list->setHeaderLabels({LoadResString(IDS_COL_NAME).ToQString(), LoadResString(IDS_COL_VALUE).ToQString()});
    m_list->header()->resizeSection(0, kColumnWidth);
    m_list->header()->resizeSection(1, kColumnWidth);
    m_refresh = new QPushButton(LoadResString(IDS_REFRESH).ToQString(), this);
    m_save = new QPushButton(LoadResString(IDS_SAVE_TO_FILE).ToQString(), this);
    m_cancel = new QPushButton(LoadResString(IDS_CANCEL).ToQString(), this);
    m_progress = new QProgressBar(this);
    m_progress->setTextVisible(true);
    auto* buttons = new QHBoxLayout();
    buttons->addWidget(m_refresh);
    buttons->addWidget(m_progress, 1);
    buttons->addWidget(m_cancel);
    buttons->addStretch();
    buttons->addWidget(m_save);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_list, 1);
    layout->addLayout(buttons);
    connect(m_refresh, &QPushButton::clicked, this, [this] { OnRefresh(); });
    connect(m_save, &QPushButton::clicked, this, [this] { OnSaveToFile(); });
    connect(m_cancel, &QPushButton::clicked, this, [this] { OnCancelWork(); });
    resize(360, 480);
}

bool CReceiverInfoDlg::OnInitDialog() {
    CFenkDialog::OnInitDialog();
    for (const unsigned id : {IDI_RECEIVER, IDI_RAM, IDI_FLASH, IDI_BATTERY, IDI_CPU}) m_icons[id] = FenkIcon(id);
    OnRefresh();
    return true;
}

void CReceiverInfoDlg::OnRefresh() {
    const uikit::CBusyCursor busy;
    StopWorker();
    m_list->clear();
    m_shownRows = 0;
    {
        const CLocker lock(m_lock);
        m_queue.clear();
        m_job = Job::Read;
    }
    m_refresh->setEnabled(false);
    m_save->setEnabled(false);
    m_progress->setRange(0, static_cast<int>(ReceiverInfoRows().size()));
    m_progress->setValue(0);
    SetBusy(true);
    StartWorker();
}

void CReceiverInfoDlg::SetBusy(bool busy) {
    // Tells a host's headless tour when the window has finished its work.
    setProperty("fenkIdle", !busy);
    m_progress->setVisible(busy);
    m_cancel->setVisible(busy);
}

void CReceiverInfoDlg::OnCancelWork() { m_stopEvent.Set(); }

void CReceiverInfoDlg::Post(Notify what) { basekit::PostWindowMessage(GetSafeHwnd(), WM_FENK_NOTIFY, what, 0); }

unsigned CReceiverInfoDlg::WorkerProc() {
    Job job;
    {
        const CLocker lock(m_lock);
        job = m_job;
    }
    return job == Job::Read ? ReadRows() : SaveListing();
}

unsigned CReceiverInfoDlg::ReadRows() {
    try {
        // The stop event doubles as the abort event: closing the window ends a waiting command.
        devio::CVokReceiverMate mate(m_receiver, &m_stopEvent);
        for (const RECEIVER_INFO_ROW& row : ReceiverInfoRows()) {
            if (m_stopEvent.IsSet()) break;
            ustring value;
            try {
                if (row.read) value = row.read(mate);
            } catch (const basekit::CStdException& e) {
                if (m_stopEvent.IsSet()) break;
                value = FailureText(e);
            }
            {
                const CLocker lock(m_lock);
                m_queue.push_back(Row{row.labelId, row.iconId, value});
                if (row.labelId == IDS_ROW_ID && !value.empty()) m_defaultFileName = value + LoadResString(IDS_TXT_EXTENSION);
            }
            Post(RowsWaiting);
        }
    } catch (const basekit::CStdException& e) {
        // No command layer at all (no port): one row says why.
        const CLocker lock(m_lock);
        m_queue.push_back(Row{IDS_ROW_MODEL, IDI_RECEIVER, FailureText(e)});
        Post(RowsWaiting);
    }
    Post(Finished);
    return 0;
}

std::intptr_t CReceiverInfoDlg::OnWindowMessage(unsigned message, std::uintptr_t wParam, std::intptr_t lParam) {
    if (message != WM_FENK_NOTIFY) return CFenkDialog::OnWindowMessage(message, wParam, lParam);
    switch (wParam) {
        case RowsWaiting: MoveQueuedRows(); break;
        case Finished: OnFinished(); break;
        case SaveProgress: {
            const CLocker lock(m_lock);
            m_progress->setFormat(m_saveStep.ToQString());
            m_progress->setValue(m_progress->value() + 1);
            break;
        }
        default: break;
    }
    return 0;
}

void CReceiverInfoDlg::MoveQueuedRows() {
    std::deque<Row> rows;
    {
        const CLocker lock(m_lock);
        rows.swap(m_queue);
    }
    for (const Row& row : rows) {
        auto* item = new QTreeWidgetItem(m_list);
        if (row.labelId) item->setText(0, LoadResString(row.labelId).ToQString());
        if (const auto icon = m_icons.find(row.iconId); icon != m_icons.end()) item->setIcon(0, icon->second);
        item->setText(1, row.value.ToQString());
        ++m_shownRows;
    }
    m_progress->setValue(m_shownRows);
}

void CReceiverInfoDlg::OnFinished() {
    StopWorker();
    m_tip.reset();
    SetBusy(false);
    m_progress->setFormat(QStringLiteral("%v / %m"));
    m_refresh->setEnabled(m_receiver && m_receiver->IsReady());
    m_save->setEnabled(true);
    ustring failure;
    {
        const CLocker lock(m_lock);
        if (!m_saveError.IsEmpty()) failure = m_saveError.GetMessage();
        m_saveError.Clear();
    }
    if (!failure.empty()) uikit::CMessageBoxService::Show(this, failure, LoadResString(IDS_RECEIVER_INFO), uikit::MB_OK | uikit::MB_ICONERROR);
}

void CReceiverInfoDlg::OnReceiverNotice(std::uintptr_t, std::intptr_t) {
    m_refresh->setEnabled(false);
    m_save->setEnabled(true);
}

void CReceiverInfoDlg::OnReceiverError(std::uintptr_t, std::intptr_t) {
    m_refresh->setEnabled(false);
    m_save->setEnabled(true);
}

void CReceiverInfoDlg::OnSaveToFile() {
    ustring folder;
    basekit::RegGetValue(basekit::HKEY_CURRENT_USER, m_registryKey, L"InfoPath", folder);
    ustring fileName;
    {
        const CLocker lock(m_lock);
        fileName = m_defaultFileName;
    }
    const QString proposal = folder.empty() ? fileName.ToQString() : QDir(folder.ToQString()).filePath(fileName.ToQString());
    const ustring path = uikit::CFileDialogService::GetSaveFileName(
        this, ustring::FromQString(proposal), LoadResString(IDS_TEXT_FILE_FILTER), LoadResString(IDS_TXT_EXTENSION));
    if (path.empty()) return;
    basekit::RegWriteValue(basekit::HKEY_CURRENT_USER, m_registryKey, L"InfoPath",
                           ustring::FromQString(QFileInfo(path.ToQString()).absolutePath()));
    StopWorker();
    {
        const CLocker lock(m_lock);
        m_job = Job::Save;
        m_savePath = path.ToQString();
        m_saveStep.clear();
        m_saveError.Clear();
    }
    m_refresh->setEnabled(false);
    m_save->setEnabled(false);
    m_progress->setRange(0, 4);
    m_progress->setValue(0);
    SetBusy(true);
    m_tip = std::make_unique<uikit::CTipWindow>(this, LoadResString(IDS_SAVING_RECEIVER_SETTINGS));
    StartWorker();
}

unsigned CReceiverInfoDlg::SaveListing() {
    QString path;
    {
        const CLocker lock(m_lock);
        path = m_savePath;
    }
    try {
        devio::CVokReceiverMate mate(m_receiver, &m_stopEvent);
        const unsigned timeout = mate.GetCommandTimeout(kListingBytes);
        const QLocale english(QLocale::English, QLocale::UnitedStates);
        const QDateTime now = QDateTime::currentDateTime();
        const ustring header = ustring::Format(
            L"// %s %s, %s\r\n// %s %s\r\n\r\n", LoadResString(IDS_CREATED_BY), CFenkLibDoc::GetLongApplicationName(true),
            CFenkLibDoc::GetApplicationVersion(true), ustring::FromQString(english.toString(now.date(), QLocale::ShortFormat)),
            ustring::FromQString(english.toString(now.time(), QLocale::LongFormat)));
        ustring body;
        const wchar_t* queries[] = {L"/par:on", L"/dev/blk/a&blocks:on", L"/dev/blk/a&block_size:on"};
        for (const wchar_t* query : queries) {
            {
                const CLocker lock(m_lock);
                m_saveStep = ustring(L"print,") + query;
            }
            Post(SaveProgress);
            if (!body.empty()) body += L"\r\n";
            body += mate.GetParameterDump(query, timeout);
        }
        QSaveFile file(path);
        const QByteArray bytes = QByteArray::fromStdString(header.ToUtf8() + body.ToUtf8());
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit())
            throw basekit::CWinException("ReceiverInfoDlg", __LINE__, ustring::FromQString(path),
                                         static_cast<unsigned>(file.error() == QFileDevice::OpenError ? EACCES : EIO));
        Post(SaveProgress);
    } catch (const basekit::CStdException& e) {
        const CLocker lock(m_lock);
        if (!m_stopEvent.IsSet()) m_saveError.Capture(e);
    }
    Post(Finished);
    return 0;
}

int CReceiverInfoDlg::RowCount() const { return m_list->topLevelItemCount(); }
ustring CReceiverInfoDlg::RowLabel(int row) const { return ustring::FromQString(m_list->topLevelItem(row)->text(0)); }
ustring CReceiverInfoDlg::RowValue(int row) const { return ustring::FromQString(m_list->topLevelItem(row)->text(1)); }
bool CReceiverInfoDlg::RowHasIcon(int row) const { return !m_list->topLevelItem(row)->icon(0).isNull(); }
ustring CReceiverInfoDlg::DefaultFileName() const {
    const CLocker lock(const_cast<basekit::CCriticalSection&>(m_lock));
    return m_defaultFileName;
}
bool CReceiverInfoDlg::IsRefreshEnabled() const { return m_refresh->isEnabled(); }
bool CReceiverInfoDlg::IsSaveEnabled() const { return m_save->isEnabled(); }
