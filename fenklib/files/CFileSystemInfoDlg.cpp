#include "fenklib/files/CFileSystemInfoDlg.h"

#include <QLabel>
#include <QLocale>
#include <QProgressBar>
#include <QTreeWidget>

#include "fenklib/frame/CLayoutFactory.h"
#include "fenklib/frame/LibraryHelpers.h"
#include "fenklib/resources/DialogIds.h"
#include "fenklib/resources/StringIds.h"

using basekit::ustring;
namespace par = devio::par;

namespace {

enum : unsigned { IDC_LIST = 100, IDC_USED_BAR, IDC_USED_TEXT };

constexpr DLG_ITEM kItems[] = {
    {IDC_LIST, CtlKind::ListView, 0, 4, 4, 212, 130, uikit::kAnchorFill},
    {IDC_USED_BAR, CtlKind::Progress, 0, 4, 138, 212, 12, uikit::kAnchorBottomWide},
    {IDC_USED_TEXT, CtlKind::Static, 0, 4, 153, 212, 10, uikit::kAnchorBottomWide},
    {IDOK_BUTTON, CtlKind::Button, IDS_CLOSE, 166, 168, 50, 14, uikit::kAnchorBottomRight},
};
constexpr DLG_TEMPLATE kLayout{IDD_FILE_SYSTEM_INFO, 220, 186, kItems};
const CLayoutRegistration kRegistered("CFileSystemInfoDlg", {{&kLayout}});
constexpr int kBarSteps = 1000;   // a few megabytes on a large medium still show

}  // namespace

CFileSystemInfoDlg::CFileSystemInfoDlg(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent)
    : CFenkDialog(std::move(receiver), IDD_FILE_SYSTEM_INFO, parent, L"CFileSystemInfoDlg"),
      m_controls(CLayoutFactory::Build(this, kLayout)),
      m_list(m_controls.Get<QTreeWidget>(IDC_LIST)) {
    setWindowTitle(LoadResString(IDS_FILE_SYSTEM_INFO).ToQString());
    m_list->setColumnCount(2);
    m_list->setHeaderLabels({LoadResString(IDS_COL_NAME).ToQString(), LoadResString(IDS_COL_VALUE).ToQString()});
    m_controls.Get<QProgressBar>(IDC_USED_BAR)->setRange(0, kBarSteps);
    m_controls.Get<QProgressBar>(IDC_USED_BAR)->setValue(0);
}

CFileSystemInfoDlg::~CFileSystemInfoDlg() { DestroyWindow(); }

bool CFileSystemInfoDlg::OnInitDialog() {
    CFenkDialog::OnInitDialog();
    RunJob(
        [](CJobContext& job) {
            auto& mate = job.Mate();
            FS_INFO info;
            info.size = mate.Get(par::DevBlkASize);
            info.free = mate.Get(par::DevBlkAFree);
            info.blockSize = mate.Get(par::DevBlkABlockSize);
            info.blocks = mate.Get(par::DevBlkABlocks);
            info.maxFiles = mate.Get(par::DevBlkAMaxFiles);
            info.files = mate.Get(par::DevBlkAFiles);
            info.badBlocks = mate.Get(par::DevBlkABadBlocks);
            info.version = mate.Get(par::DevBlkAVer);
            info.timeFormat = mate.Get(par::DevBlkATfmt);
            for (const int state : mate.GetFsInitState())
                info.initState += (info.initState.empty() ? L"" : L", ") + ustring::Format(L"%d", state);
            return info;
        },
        [this](const JOB_RESULT<FS_INFO>& r) {
            if (r.Ok()) Show(*r.value);
        });
    return true;
}

void CFileSystemInfoDlg::UpdateControls() {}

void CFileSystemInfoDlg::Show(const FS_INFO& info) {
    const QLocale locale;
    const auto number = [&](std::uint64_t v) { return locale.toString(static_cast<qulonglong>(v)); };
    const std::pair<unsigned, QString> rows[] = {
        {IDS_FS_SIZE, number(info.size)},          {IDS_FS_FREE, number(info.free)},
        {IDS_FS_BLOCK_SIZE, number(info.blockSize)}, {IDS_FS_BLOCKS, number(info.blocks)},
        {IDS_FS_MAX_FILES, number(info.maxFiles)},  {IDS_FS_FILES, number(info.files)},
        {IDS_FS_BAD_BLOCKS, number(info.badBlocks)}, {IDS_FS_VERSION, number(info.version)},
        {IDS_FS_TIME_FORMAT, info.timeFormat.ToQString()}, {IDS_FS_INIT_STATE, info.initState.ToQString()},
    };
    m_list->clear();
    for (const auto& [label, value] : rows) {
        auto* item = new QTreeWidgetItem(m_list);
        item->setText(0, LoadResString(label).ToQString());
        item->setText(1, value);
    }
    m_list->resizeColumnToContents(0);
    const std::uint64_t used = info.size > info.free ? info.size - info.free : 0;
    m_controls.Get<QProgressBar>(IDC_USED_BAR)->setValue(info.size ? static_cast<int>(used * kBarSteps / info.size) : 0);
    m_controls.Get<QLabel>(IDC_USED_TEXT)->setText(
        ustring::Format(LoadResString(IDS_FS_USED_OF).c_str(),
                        ustring::FromQString(locale.formattedDataSize(static_cast<qint64>(used))),
                        ustring::FromQString(locale.formattedDataSize(static_cast<qint64>(info.free))))
            .ToQString());
}

int CFileSystemInfoDlg::RowCount() const { return m_list->topLevelItemCount(); }
ustring CFileSystemInfoDlg::RowValue(int row) const { return ustring::FromQString(m_list->topLevelItem(row)->text(1)); }
int CFileSystemInfoDlg::UsedPerMille() const { return m_controls.Get<QProgressBar>(IDC_USED_BAR)->value(); }
