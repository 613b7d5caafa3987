#include "fenklib/msglist/CRcvMessageListDlg.h"

#include <QPushButton>
#include <QTreeWidget>

#include "fenklib/frame/CLayoutFactory.h"
#include "fenklib/frame/LibraryHelpers.h"
#include "fenklib/msglist/MessageViews.h"
#include "fenklib/resources/DialogIds.h"
#include "fenklib/resources/StringIds.h"

namespace {
enum : unsigned { IDC_TREE = 100 };
constexpr DLG_ITEM kItems[] = {
    {IDC_TREE, CtlKind::Tree, 0, 4, 4, 172, 180, uikit::kAnchorFill},
    {IDOK_BUTTON, CtlKind::Button, IDS_OK, 70, 188, 50, 14, uikit::kAnchorBottomRight},
    {IDCANCEL_BUTTON, CtlKind::Button, IDS_CANCEL, 126, 188, 50, 14, uikit::kAnchorBottomRight},
};
constexpr DLG_TEMPLATE kNormal{IDD_RCV_MESSAGE_LIST, 180, 206, kItems};
const CLayoutRegistration kRegistered("CRcvMessageListDlg", {{&kNormal}});
}  // namespace

CRcvMessageListDlg::CRcvMessageListDlg(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent, basekit::ustring& name)
    : CFenkDialog(std::move(receiver), IDD_RCV_MESSAGE_LIST, parent, L"CRcvMessageListDlg"),
      m_controls(CLayoutFactory::Build(this, kNormal)),
      m_tree(m_controls.Get<QTreeWidget>(IDC_TREE)),
      m_name(name) {
    setWindowTitle(LoadResString(IDS_RECEIVER_MESSAGE_LIST).ToQString());
    connect(m_tree, &QTreeWidget::currentItemChanged, this, [this] { UpdateControls(); });
    connect(m_tree, &QTreeWidget::itemDoubleClicked, this, [this] { if (IsOkEnabled()) accept(); });
}

CRcvMessageListDlg::~CRcvMessageListDlg() { DestroyWindow(); }

bool CRcvMessageListDlg::OnInitDialog() {
    CFenkDialog::OnInitDialog();
    RunJob([](CJobContext& job) { return fenkmsg::ReadCatalogue(job.Mate()); },
           [this](const JOB_RESULT<std::vector<fenkmsg::CATALOGUE_GROUP>>& r) {
               if (r.Ok()) fenkmsg::FillCatalogueTree(m_tree, *r.value, fenkmsg::CMessageRegistry::Instance());
           });
    return true;
}

void CRcvMessageListDlg::UpdateControls() {
    m_controls.Get<QPushButton>(IDOK_BUTTON)->setEnabled(!IsBusy() && !fenkmsg::CatalogueFullName(m_tree->currentItem()).empty());
}

bool CRcvMessageListDlg::IsOkEnabled() const { return m_controls.Get<QPushButton>(IDOK_BUTTON)->isEnabled(); }

void CRcvMessageListDlg::accept() {
    const basekit::ustring chosen = fenkmsg::CatalogueFullName(m_tree->currentItem());
    if (chosen.empty()) return;
    m_name = chosen;
    CFenkDialog::accept();
}
