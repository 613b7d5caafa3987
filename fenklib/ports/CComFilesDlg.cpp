#include "fenklib/ports/CComFilesDlg.h"

#include <QHeaderView>
#include <QLocale>
#include <QPushButton>

#include "fenklib/frame/CLayoutFactory.h"
#include "fenklib/frame/LibraryHelpers.h"
#include "fenklib/receiver/CVokReceiverMate.h"
#include "fenklib/resources/DialogIds.h"
#include "fenklib/resources/StringIds.h"

using basekit::ustring;

namespace {

enum : unsigned { IDC_LIST = 100, IDC_REFRESH };

constexpr DLG_ITEM kItems[] = {
    {IDC_LIST, CtlKind::ListView, 0, 4, 4, 232, 150, uikit::kAnchorFill},
    {IDC_REFRESH, CtlKind::Button, IDS_REFRESH, 4, 160, 60, 14, uikit::kAnchorBottomLeft},
    {IDCANCEL_BUTTON, CtlKind::Button, IDS_CLOSE, 176, 160, 60, 14, uikit::kAnchorBottomRight},
};
constexpr DLG_TEMPLATE kLayout{IDD_COM_FILES, 240, 178, kItems};
const CLayoutRegistration kRegistered("CComFilesDlg", {{&kLayout}});
constexpr int kNameWidth = 120;

}  // namespace

CComFilesDlg::CComFilesDlg(basekit::CSmartPtr<devio::IReceiver> receiver, devio::vok::ECom port, QWidget* parent)
    : CFenkDialog(std::move(receiver), IDD_COM_FILES, parent, L"CComFilesDlg"),
      m_controls(CLayoutFactory::Build(this, kLayout)),
      m_list(m_controls.Get<QTreeWidget>(IDC_LIST)),
      m_port(port) {
    setWindowTitle(ustring::Format(L"%s - %s", LoadResString(IDS_COM_DRIVER_FILES), devio::vok::ToKeyword(port)).ToQString());
    m_list->setColumnCount(3);
    m_list->setHeaderLabels({LoadResString(IDS_COL_NAME).ToQString(), LoadResString(IDS_COM_COL_KIND).ToQString(),
                             LoadResString(IDS_COL_SIZE).ToQString()});
    m_list->header()->resizeSection(0, kNameWidth);
    connect(m_controls.Get<QPushButton>(IDC_REFRESH), &QPushButton::clicked, this, [this] { Refresh(); });
}

CComFilesDlg::~CComFilesDlg() { DestroyWindow(); }

bool CComFilesDlg::OnInitDialog() {
    CFenkDialog::OnInitDialog();
    Refresh();
    return true;
}

void CComFilesDlg::UpdateControls() { m_controls.Item(IDC_REFRESH)->setEnabled(!IsBusy()); }

void CComFilesDlg::Refresh() {
    const devio::vok::ECom port = m_port;
    RunJob(
        [port](CJobContext& job) {
            std::vector<DRIVER_FILE> files;
            for (const ustring& name : job.Mate().GetPortScriptList(port, L"scripts"))
                files.push_back({name, false, static_cast<std::uint64_t>(job.Mate().Get(devio::par::ComScriptSize, name))});
            for (const ustring& name : job.Mate().GetPortScriptList(port, L"profiles"))
                files.push_back({name, true, static_cast<std::uint64_t>(job.Mate().Get(devio::par::ComProfileSize, name))});
            return files;
        },
        [this](const JOB_RESULT<std::vector<DRIVER_FILE>>& r) {
            if (r.Ok()) Show(*r.value);
        });
}

void CComFilesDlg::Show(const std::vector<DRIVER_FILE>& files) {
    m_list->clear();
    const QLocale locale;   // sizes are read by a person
    for (const DRIVER_FILE& f : files) {
        auto* item = new QTreeWidgetItem(m_list);
        item->setText(0, f.name.ToQString());
        item->setText(1, LoadResString(f.profile ? IDS_COM_KIND_PROFILE : IDS_COM_KIND_SCRIPT).ToQString());
        item->setText(2, locale.toString(static_cast<qulonglong>(f.size)));
        item->setTextAlignment(2, Qt::AlignRight | Qt::AlignVCenter);
    }
}
