#include "fenklib/msglist/CRcvMessageMulListDlg.h"

#include <QAction>
#include <algorithm>
#include <QKeyEvent>
#include <QTreeWidget>

#include "fenklib/frame/CLayoutFactory.h"
#include "fenklib/frame/LibraryHelpers.h"
#include "fenklib/msglist/MessageViews.h"
#include "fenklib/resources/DialogIds.h"
#include "fenklib/resources/StringIds.h"

using basekit::ustring;

namespace {
enum : unsigned { IDC_TREE = 100, IDC_LIST };
// Normal: the catalogue above the chosen list; wide: side by side.
constexpr DLG_ITEM kNormalItems[] = {
    {IDC_TREE, CtlKind::Tree, 0, 4, 4, 232, 120, {0, 0, 1, 0.5}},
    {IDC_LIST, CtlKind::ListView, 0, 4, 128, 232, 100, {0, 0.5, 1, 0.5}},
    {IDOK_BUTTON, CtlKind::Button, IDS_OK, 130, 232, 50, 14, uikit::kAnchorBottomRight},
    {IDCANCEL_BUTTON, CtlKind::Button, IDS_CANCEL, 186, 232, 50, 14, uikit::kAnchorBottomRight},
};
constexpr DLG_ITEM kWideItems[] = {
    {IDC_TREE, CtlKind::Tree, 0, 4, 4, 140, 150, {0, 0, 0.4, 1}},
    {IDC_LIST, CtlKind::ListView, 0, 148, 4, 232, 150, {0.4, 0, 0.6, 1}},
    {IDOK_BUTTON, CtlKind::Button, IDS_OK, 274, 158, 50, 14, uikit::kAnchorBottomRight},
    {IDCANCEL_BUTTON, CtlKind::Button, IDS_CANCEL, 330, 158, 50, 14, uikit::kAnchorBottomRight},
};
constexpr DLG_TEMPLATE kNormal{IDD_RCV_MESSAGE_MUL_LIST, 240, 250, kNormalItems};
constexpr DLG_TEMPLATE kWide{IDD_RCV_MESSAGE_MUL_LIST_WIDE, 384, 176, kWideItems};
const CLayoutRegistration kRegistered("CRcvMessageMulListDlg", {{&kNormal, &kWide}});
}  // namespace

CRcvMessageMulListDlg::CRcvMessageMulListDlg(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent, fenkmsg::MessageList& list)
    : CFenkDialog(std::move(receiver), IDD_RCV_MESSAGE_MUL_LIST, parent, L"CRcvMessageMulListDlg"),
      m_controls(CLayoutFactory::Build(this, kNormal, &kWide)),
      m_tree(m_controls.Get<QTreeWidget>(IDC_TREE)),
      m_list(m_controls.Get<QTreeWidget>(IDC_LIST)),
      m_result(list),
      m_chosen(list) {
    setWindowTitle(LoadResString(IDS_RECEIVER_MESSAGE_LIST).ToQString());
    fenkmsg::SetupMessageColumns(m_list);
    connect(m_tree, &QTreeWidget::itemDoubleClicked, this, [this](QTreeWidgetItem* item) { OnAddNode(item); });
    m_tree->installEventFilter(this);
    m_list->setContextMenuPolicy(Qt::ActionsContextMenu);
    auto* remove = new QAction(LoadResString(IDS_MENU_DELETE).ToQString(), m_list);
    remove->setShortcut(QKeySequence::Delete);
    m_list->addAction(remove);
    connect(remove, &QAction::triggered, this, [this] { OnDelete(); });
}

CRcvMessageMulListDlg::~CRcvMessageMulListDlg() { DestroyWindow(); }

bool CRcvMessageMulListDlg::OnInitDialog() {
    CFenkDialog::OnInitDialog();
    fenkmsg::ShowMessages(m_list, m_chosen, fenkmsg::CMessageRegistry::Instance());
    RunJob([](CJobContext& job) { return fenkmsg::ReadCatalogue(job.Mate()); },
           [this](const JOB_RESULT<std::vector<fenkmsg::CATALOGUE_GROUP>>& r) {
               if (r.Ok()) fenkmsg::FillCatalogueTree(m_tree, *r.value, fenkmsg::CMessageRegistry::Instance());
               AddNext();
           });
    return true;
}

bool CRcvMessageMulListDlg::eventFilter(QObject* watched, QEvent* event) {
    if (watched == m_tree && event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Space) {
        OnAddNode(m_tree->currentItem());
        return true;
    }
    return CFenkDialog::eventFilter(watched, event);
}

void CRcvMessageMulListDlg::OnAddNode(const QTreeWidgetItem* item) {
    const ustring name = fenkmsg::CatalogueFullName(item);
    if (name.empty() || fenkmsg::Contains(m_chosen, name)) return;
    if (std::find(m_adding.begin(), m_adding.end(), name) != m_adding.end()) return;
    m_adding.push_back(name);
    // One exchange at a time: the catalogue's reading or the add before this one ends first.
    if (!IsBusy()) AddNext();
}

// A new message starts with the schedule the receiver would give it; the adds the user asked
// for meanwhile follow in their order. A refusal ends them all with its one box.
void CRcvMessageMulListDlg::AddNext() {
    if (m_adding.empty()) return;
    RunJob(
        [name = m_adding.front()](CJobContext& job) {
            devio::vok::MSG msg = job.Mate().GetDefaultSchedule(name);
            msg.name = name;
            return msg;
        },
        [this](const JOB_RESULT<devio::vok::MSG>& r) {
            if (!r.Ok()) return m_adding.clear();
            m_adding.erase(m_adding.begin());
            if (!fenkmsg::Contains(m_chosen, r.value->name)) {
                m_chosen.push_back(*r.value);
                fenkmsg::ShowMessageRow(new QTreeWidgetItem(m_list), *r.value, fenkmsg::CMessageRegistry::Instance());
            }
            AddNext();
        });
}

void CRcvMessageMulListDlg::UpdateControls() { m_controls.Item(IDOK_BUTTON)->setEnabled(!IsBusy()); }

void CRcvMessageMulListDlg::OnDelete() {
    const std::vector<int> rows = fenkmsg::SelectedRows(m_list);
    if (rows.empty()) return;
    if (uikit::CMessageBoxService::Show(this, LoadResString(IDS_CONFIRM_DELETION), {}, uikit::MB_YESNO | uikit::MB_ICONQUESTION) !=
        uikit::IDYES)
        return;
    fenkmsg::RemoveRows(m_chosen, rows);
    fenkmsg::ShowMessages(m_list, m_chosen, fenkmsg::CMessageRegistry::Instance());
}

void CRcvMessageMulListDlg::accept() {
    m_result = m_chosen;
    CFenkDialog::accept();
}
