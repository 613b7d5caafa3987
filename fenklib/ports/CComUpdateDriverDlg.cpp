#include "fenklib/ports/CComUpdateDriverDlg.h"

#include <QFileInfo>
#include <QHeaderView>
#include <QLineEdit>
#include <QLocale>
#include <QProgressBar>
#include <QPushButton>
#include <QTreeWidget>

#include "fenklib/frame/CLayoutFactory.h"
#include "fenklib/frame/LibraryHelpers.h"
#include "fenklib/frame/TransferJob.h"
#include "fenklib/receiver/CReceiverEnumWrapper.h"
#include "fenklib/resources/DialogIds.h"
#include "fenklib/resources/StringIds.h"
#include "platform/uikit/CFileDialogService.h"

using basekit::ustring;

namespace {

using D = CComUpdateDriverDlg;
constexpr unsigned IDC_LABEL = 0xFFFF;
constexpr int kBarSteps = 1000;
constexpr int kNameWidth = 80;

constexpr DLG_ITEM kItems[] = {
    {IDC_LABEL, CtlKind::Static, IDS_COM_BUNDLE_FOLDER, 4, 6, 60, 9},
    {D::IDC_FOLDER, CtlKind::Edit, 0, 66, 4, 146, 14, uikit::kAnchorTopWide},
    {D::IDC_BROWSE, CtlKind::Button, IDS_BROWSE, 216, 4, 20, 14, uikit::kAnchorTopRight},
    {D::IDC_LIST, CtlKind::ListView, 0, 4, 22, 232, 120, uikit::kAnchorFill},
    {D::IDC_PROGRESS, CtlKind::Progress, 0, 4, 146, 232, 12, uikit::kAnchorBottomWide},
    {D::IDC_INSTALL, CtlKind::Button, IDS_COM_INSTALL, 122, 162, 55, 14, uikit::kAnchorBottomRight},
    {IDCANCEL_BUTTON, CtlKind::Button, IDS_CANCEL, 181, 162, 55, 14, uikit::kAnchorBottomRight},
};
constexpr DLG_TEMPLATE kLayout{IDD_COM_UPDATE_DRIVER, 240, 180, kItems};
const CLayoutRegistration kRegistered("CComUpdateDriverDlg", {{&kLayout}});

}  // namespace

CComUpdateDriverDlg::CComUpdateDriverDlg(basekit::CSmartPtr<devio::IReceiver> receiver, devio::vok::ECom port, QWidget* parent)
    : CFenkDialog(std::move(receiver), IDD_COM_UPDATE_DRIVER, parent, L"CComUpdateDriverDlg"),
      m_controls(CLayoutFactory::Build(this, kLayout)),
      m_port(port) {
    setWindowTitle(ustring::Format(L"%s - %s", LoadResString(IDS_COM_UPDATE_DRIVER_TITLE), devio::vok::ToKeyword(port)).ToQString());
    m_controls.Get<QLineEdit>(IDC_FOLDER)->setReadOnly(true);
    auto* list = m_controls.Get<QTreeWidget>(IDC_LIST);
    list->setColumnCount(3);
    list->setHeaderLabels({LoadResString(IDS_COL_NAME).ToQString(), LoadResString(IDS_COM_COL_TARGET).ToQString(),
                           LoadResString(IDS_COL_SIZE).ToQString()});
    list->header()->resizeSection(0, kNameWidth);
    m_controls.Get<QProgressBar>(IDC_PROGRESS)->setRange(0, kBarSteps);
    m_controls.Get<QProgressBar>(IDC_PROGRESS)->setValue(0);
    connect(m_controls.Get<QPushButton>(IDC_BROWSE), &QPushButton::clicked, this, [this] { OnBrowse(); });
    connect(m_controls.Get<QPushButton>(IDC_INSTALL), &QPushButton::clicked, this, [this] { Install(); });
}

CComUpdateDriverDlg::~CComUpdateDriverDlg() { DestroyWindow(); }

void CComUpdateDriverDlg::UpdateControls() {
    m_controls.Item(IDC_BROWSE)->setEnabled(!IsBusy());
    m_controls.Item(IDC_INSTALL)->setEnabled(!IsBusy() && !m_files.empty());
}

// Closing while files go out stops the upload first; the window stays to show where it ended.
void CComUpdateDriverDlg::reject() {
    if (IsBusy()) CancelJob();
    else CFenkDialog::reject();
}

// There is no folder chooser on every controller: the user opens the driver's version file.
void CComUpdateDriverDlg::OnBrowse() {
    const ustring path = uikit::CFileDialogService::GetOpenFileName(
        this, ustring::FromQString(m_controls.Get<QLineEdit>(IDC_FOLDER)->text()), LoadResString(IDS_COM_BUNDLE_FILTER), {});
    if (!path.empty()) SetFolder(QFileInfo(path.ToQString()).absolutePath());
}

void CComUpdateDriverDlg::SetFolder(const QString& folder) {
    m_controls.Get<QLineEdit>(IDC_FOLDER)->setText(folder);
    m_files = ListDriverBundle(folder, devio::vok::ToKeyword(m_port));
    auto* list = m_controls.Get<QTreeWidget>(IDC_LIST);
    list->clear();
    const QLocale locale;   // sizes are read by a person
    for (const BUNDLE_FILE& f : m_files) {
        auto* item = new QTreeWidgetItem(list);
        item->setText(0, QFileInfo(f.local.ToQString()).fileName());
        item->setText(1, f.target.ToQString());
        item->setText(2, locale.toString(static_cast<qulonglong>(f.size)));
    }
    m_controls.Get<QProgressBar>(IDC_PROGRESS)->setValue(0);
    if (m_files.empty() && !folder.isEmpty())
        uikit::CMessageBoxService::Show(this, LoadResString(IDS_COM_BUNDLE_EMPTY), {}, uikit::MB_OK | uikit::MB_ICONWARNING);
    UpdateControls();
}

// The files go one after another as one transfer job of the window; Cancel stops it.
void CComUpdateDriverDlg::Install() {
    std::uint64_t total = 0;
    for (const BUNDLE_FILE& f : m_files) total += f.size;
    RunJob(
        [files = m_files, total](CJobContext& job) {
            CTransfer transfer(job, total);
            for (const BUNDLE_FILE& f : files) transfer.Upload(f.local, f.target, f.target);
        },
        [this](const JOB_RESULT<void>& r) {
            if (r.Ok()) EndDialog(1);
        },
        [this](const JOB_PROGRESS& p) {
            if (p.total) m_controls.Get<QProgressBar>(IDC_PROGRESS)->setValue(static_cast<int>(static_cast<double>(p.done) / static_cast<double>(p.total) * kBarSteps));
        });
}
