#include "fenklib/files/CExplorerFilesPP.h"

#include <QDir>
#include <QFileInfo>
#include <QHeaderView>
#include <QLineEdit>
#include <QLocale>
#include <QPushButton>
#include <QTreeWidget>

#include "fenklib/files/CCopyFileDlg.h"
#include "fenklib/files/CFileSystemInfoDlg.h"
#include "fenklib/frame/CLayoutFactory.h"
#include "fenklib/frame/LibraryHelpers.h"
#include "fenklib/receiver/CVokReceiverMate.h"
#include "fenklib/resources/DialogIds.h"
#include "fenklib/resources/StringIds.h"
#include "platform/uikit/CFileDialogService.h"
#include "platform/uikit/CMessageBoxService.h"

using basekit::ustring;
namespace par = devio::par;

namespace {

using P = CExplorerFilesPP;
constexpr unsigned IDC_LABEL = 0xFFFF;

constexpr DLG_ITEM kNormalItems[] = {
    {P::IDC_LIST, CtlKind::ListView, 0, 4, 4, 202, 118, uikit::kAnchorFill},
    {P::IDC_REFRESH, CtlKind::Button, IDS_REFRESH, 4, 126, 48, 14, uikit::kAnchorBottomLeft},
    {P::IDC_DOWNLOAD, CtlKind::Button, IDS_DOWNLOAD, 56, 126, 56, 14, uikit::kAnchorBottomLeft},
    {P::IDC_DELETE, CtlKind::Button, IDS_DELETE, 116, 126, 42, 14, uikit::kAnchorBottomLeft},
    {P::IDC_FILE_SYSTEM, CtlKind::Button, IDS_FILE_SYSTEM, 146, 144, 60, 14, uikit::kAnchorBottomRight},
    {IDC_LABEL, CtlKind::Static, IDS_CREATE_PREFIX, 4, 146, 26, 10, uikit::kAnchorBottomLeft},
    {P::IDC_PREFIX, CtlKind::TextEdit, 0, 32, 144, 40, 14, uikit::kAnchorBottomLeft},
    {P::IDC_NEW, CtlKind::Button, IDS_NEW_LOG_FILE, 76, 144, 60, 14, uikit::kAnchorBottomLeft},
};
constexpr DLG_ITEM kWideItems[] = {
    {P::IDC_LIST, CtlKind::ListView, 0, 4, 4, 236, 132, uikit::kAnchorFill},
    {P::IDC_REFRESH, CtlKind::Button, IDS_REFRESH, 246, 4, 60, 14, uikit::kAnchorTopRight},
    {P::IDC_DOWNLOAD, CtlKind::Button, IDS_DOWNLOAD, 246, 22, 60, 14, uikit::kAnchorTopRight},
    {P::IDC_DELETE, CtlKind::Button, IDS_DELETE, 246, 40, 60, 14, uikit::kAnchorTopRight},
    {P::IDC_FILE_SYSTEM, CtlKind::Button, IDS_FILE_SYSTEM, 246, 58, 60, 14, uikit::kAnchorTopRight},
    {IDC_LABEL, CtlKind::Static, IDS_CREATE_PREFIX, 246, 82, 60, 10, uikit::kAnchorTopRight},
    {P::IDC_PREFIX, CtlKind::TextEdit, 0, 246, 92, 60, 14, uikit::kAnchorTopRight},
    {P::IDC_NEW, CtlKind::Button, IDS_NEW_LOG_FILE, 246, 110, 60, 14, uikit::kAnchorTopRight},
};
constexpr DLG_TEMPLATE kNormal{IDD_EXPLORER_FILES, 210, 162, kNormalItems};
constexpr DLG_TEMPLATE kWide{IDD_EXPLORER_FILES_WIDE, 310, 140, kWideItems};
const CLayoutRegistration kRegistered("CExplorerFilesPP", {{&kNormal, &kWide}});

enum Column { ColName, ColSize, ColTime };
constexpr int kSortRole = Qt::UserRole;
// A file list of hundreds of entries at a slow line rate takes seconds.
constexpr unsigned kListTimeoutMs = 60000;

// Sorts sizes as numbers and the rest by the text the receiver gave (times sort as text).
class CFileItem final : public QTreeWidgetItem {
public:
    using QTreeWidgetItem::QTreeWidgetItem;
    bool operator<(const QTreeWidgetItem& other) const override {
        const int column = treeWidget() ? treeWidget()->sortColumn() : 0;
        return QVariant::compare(data(column, kSortRole), other.data(column, kSortRole)) == QPartialOrdering::Less;
    }
};

}  // namespace

CExplorerFilesPP::CExplorerFilesPP(basekit::CSmartPtr<devio::IReceiver> receiver)
    : CFenkPropertyPage(std::move(receiver), CLayoutFactory::Choose(kNormal, &kWide).number, LoadResString(IDS_PAGE_FILES)),
      m_controls(CLayoutFactory::Build(this, kNormal, &kWide)),
      m_list(m_controls.Get<QTreeWidget>(IDC_LIST)) {
    m_list->setColumnCount(3);
    m_list->setHeaderLabels({LoadResString(IDS_COL_NAME).ToQString(), LoadResString(IDS_COL_SIZE).ToQString(),
                             LoadResString(IDS_COL_TIME).ToQString()});
    m_list->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_list->setSortingEnabled(true);
    m_list->sortByColumn(ColName, Qt::AscendingOrder);
    connect(m_list, &QTreeWidget::itemSelectionChanged, this, [this] { UpdateControls(); });
    connect(m_controls.Get<QPushButton>(IDC_REFRESH), &QPushButton::clicked, this, [this] { OnRefresh(); });
    connect(m_controls.Get<QPushButton>(IDC_DOWNLOAD), &QPushButton::clicked, this, [this] { OnDownload(); });
    connect(m_controls.Get<QPushButton>(IDC_DELETE), &QPushButton::clicked, this, [this] { OnDelete(); });
    connect(m_controls.Get<QPushButton>(IDC_NEW), &QPushButton::clicked, this, [this] { OnNewLogFile(); });
    connect(m_controls.Get<QPushButton>(IDC_FILE_SYSTEM), &QPushButton::clicked, this, [this] { OnFileSystem(); });
}

CExplorerFilesPP::~CExplorerFilesPP() { DestroyWindow(); }

bool CExplorerFilesPP::OnSetActive() {
    OnRefresh();
    return CFenkPropertyPage::OnSetActive();
}

void CExplorerFilesPP::UpdateControls() {
    const bool busy = IsBusy();
    const bool selected = !m_list->selectedItems().isEmpty();
    m_controls.Item(IDC_REFRESH)->setEnabled(!busy);
    m_controls.Item(IDC_DOWNLOAD)->setEnabled(!busy && selected);
    m_controls.Item(IDC_DELETE)->setEnabled(!busy && selected);
    m_controls.Item(IDC_NEW)->setEnabled(!busy && !m_controls.Get<QLineEdit>(IDC_PREFIX)->text().isEmpty());
    m_controls.Item(IDC_FILE_SYSTEM)->setEnabled(!busy);
}

void CExplorerFilesPP::OnRefresh() {
    RunJob(
        [](CJobContext& job) {
            LISTING listing;
            listing.files = job.Mate().ListLogFiles(kListTimeoutMs);
            listing.currentA = job.Mate().GetCurrentFile(L'a');
            listing.currentB = job.Mate().GetCurrentFile(L'b');
            listing.prefix = job.Mate().Get(par::CmdCreatePrefix);
            return listing;
        },
        [this](const JOB_RESULT<LISTING>& r) {
            if (r.Ok()) ShowListing(*r.value);
        });
}

void CExplorerFilesPP::ShowListing(const LISTING& listing) {
    m_files = listing.files;
    m_list->setSortingEnabled(false);
    m_list->clear();
    const QLocale locale;
    for (const auto& file : m_files) {
        auto* item = new CFileItem(m_list);
        ustring name = file.name;
        for (const auto& [current, channel] : {std::pair{listing.currentA, L'A'}, std::pair{listing.currentB, L'B'}}) {
            if (current != file.name) continue;
            name = ustring::Format(LoadResString(IDS_CURRENT_FILE_MARK).c_str(), name, channel);
            QFont bold = item->font(ColName);
            bold.setBold(true);
            item->setFont(ColName, bold);
        }
        item->setText(ColName, name.ToQString());
        item->setData(ColName, kSortRole, file.name.ToQString());
        item->setData(ColName, Qt::UserRole + 1, file.name.ToQString());
        item->setText(ColSize, locale.toString(static_cast<qulonglong>(file.size)));
        item->setData(ColSize, kSortRole, static_cast<qulonglong>(file.size));
        item->setTextAlignment(ColSize, Qt::AlignRight | Qt::AlignVCenter);
        item->setText(ColTime, file.time.ToQString());
        item->setData(ColTime, kSortRole, file.time.ToQString());
    }
    m_list->setSortingEnabled(true);
    for (int c = 0; c < 3; ++c) m_list->resizeColumnToContents(c);
    auto* prefix = m_controls.Get<QLineEdit>(IDC_PREFIX);
    if (prefix->text().isEmpty()) prefix->setText(listing.prefix.ToQString());
    UpdateControls();
}

std::vector<devio::vok::LOG_FILE> CExplorerFilesPP::SelectedFiles() const {
    std::vector<devio::vok::LOG_FILE> selected;
    for (const QTreeWidgetItem* item : m_list->selectedItems()) {
        const ustring name = ustring::FromQString(item->data(ColName, Qt::UserRole + 1).toString());
        for (const auto& file : m_files)
            if (file.name == name) selected.push_back(file);
    }
    return selected;
}

void CExplorerFilesPP::SelectFiles(const std::vector<ustring>& names) {
    m_list->clearSelection();
    for (int i = 0; i < m_list->topLevelItemCount(); ++i) {
        QTreeWidgetItem* item = m_list->topLevelItem(i);
        const ustring name = ustring::FromQString(item->data(ColName, Qt::UserRole + 1).toString());
        if (std::find(names.begin(), names.end(), name) != names.end()) item->setSelected(true);
    }
}

// The first file's place decides the folder of all of them.
void CExplorerFilesPP::OnDownload() {
    const auto files = SelectedFiles();
    if (files.empty()) return;
    const ustring first = uikit::CFileDialogService::GetSaveFileName(this, files.front().name, {}, {});
    if (first.empty()) return;
    const QDir folder = QFileInfo(first.ToQString()).absoluteDir();
    std::vector<COPY_ITEM> items;
    for (size_t i = 0; i < files.size(); ++i) {
        const ustring target = i == 0 ? first : ustring::FromQString(folder.filePath(files[i].name.ToQString()));
        items.push_back(COPY_ITEM{L"/log/" + files[i].name, target, files[i].size});
    }
    CCopyFileDlg copy(GetReceiver(), this, std::move(items));
    copy.DoModal();
}

void CExplorerFilesPP::OnDelete() {
    const auto files = SelectedFiles();
    if (files.empty()) return;
    ustring names;
    for (const auto& file : files) names += (names.empty() ? L"" : L"\n") + file.name;
    const ustring question =
        ustring::Format(LoadResString(IDS_CONFIRM_DELETE_FILES).c_str(), static_cast<int>(files.size()), names);
    if (uikit::CMessageBoxService::Show(this, question, {}, uikit::MB_YESNO | uikit::MB_ICONQUESTION) != uikit::IDYES) return;
    ChangeThenRefresh([files](CJobContext& job) {
        for (const auto& file : files) job.Mate().RemoveItem(L"/log/" + file.name);
    });
}

// The receiver names a new file from its prefix; forcing a new file starts it at once.
void CExplorerFilesPP::OnNewLogFile() {
    const ustring prefix = ustring::FromQString(m_controls.Get<QLineEdit>(IDC_PREFIX)->text().trimmed());
    if (prefix.empty()) return;
    ChangeThenRefresh([prefix](CJobContext& job) {
        job.Mate().Set(par::CmdCreatePrefix, prefix);
        job.Mate().Do(par::LogRotForce);
    });
}

// The list shows what the receiver holds afterwards, whether the change worked or not.
void CExplorerFilesPP::ChangeThenRefresh(std::function<void(CJobContext&)> change) {
    RunJob(std::move(change), [this](const JOB_RESULT<void>& r) {
        if (r.outcome != JobOutcome::Stopped) OnRefresh();
    });
}

void CExplorerFilesPP::OnFileSystem() {
    CFileSystemInfoDlg info(GetReceiver(), this);
    info.DoModal();
}
