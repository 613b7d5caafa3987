#include "fenklib/ports/CReceiverPortsDlg.h"

#include "fenklib/frame/CLayoutFactory.h"
#include "fenklib/frame/LibraryHelpers.h"
#include "fenklib/ports/CComPortPS.h"
#include "fenklib/ports/CPortList.h"
#include "fenklib/ports/CSerialPortPS.h"
#include "fenklib/ports/CUniversalPortPS.h"
#include "fenklib/ports/OwnPortChange.h"
#include "fenklib/ports/PortGroups.h"
#include "fenklib/resources/DialogIds.h"
#include "fenklib/resources/StringIds.h"

namespace {

using D = CReceiverPortsDlg;
namespace vok = devio::vok;

constexpr DLG_ITEM kItems[] = {
    {D::IDC_PORT_TREE, CtlKind::Custom, 0, 4, 4, 172, 192, uikit::kAnchorFill},
};
constexpr DLG_TEMPLATE kLayout{IDD_RECEIVER_PORTS, 180, 200, kItems};
const CLayoutRegistration kRegistered("CReceiverPortsDlg", {{&kLayout}});

constexpr int kKindRole = Qt::UserRole;

}  // namespace

CReceiverPortsDlg::CReceiverPortsDlg(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent)
    : CFenkDialog(std::move(receiver), IDD_RECEIVER_PORTS, parent, L"CReceiverPortsDlg") {
    setWindowTitle(LoadResString(IDS_RECEIVER_PORTS).ToQString());
    m_controls = CLayoutFactory::Build(this, kLayout, nullptr, [this](const DLG_ITEM&, QWidget* window) {
        m_list = new CPortList(window);
        return m_list;
    });
    m_list->SetOnActivate([this](QTreeWidgetItem* item) { OnOpenPort(item); });
    m_list->setProperty("fenkItemsOpenWindows", true);   // a port opens its sheet (the host's tour opens one per group)
    m_list->SetOnRefresh([this] { Refresh(); });
    ForgetOwnPortChange();
}

CReceiverPortsDlg::~CReceiverPortsDlg() { DestroyWindow(); }

bool CReceiverPortsDlg::OnInitDialog() {
    CFenkDialog::OnInitDialog();
    m_list->AttachImages();
    List(false);
    return true;
}

// A group that cannot be listed is left out and the others are shown; only when no group could
// be listed is there nothing to show.
CReceiverPortsDlg::LISTING CReceiverPortsDlg::ListGroups(devio::CVokReceiverMate& mate) {
    LISTING listing;
    for (const PORT_GROUP& group : PortGroups()) {
        try {
            listing.groups.emplace_back(&group, ListGroupPorts(mate, group));
        } catch (const basekit::CStdException&) {
            if (listing.firstError.IsEmpty()) listing.firstError.Capture();
        }
    }
    return listing;
}

void CReceiverPortsDlg::List(bool again) {
    RunJob([](CJobContext& job) { return ListGroups(job.Mate()); },
           [this, again](const JOB_RESULT<LISTING>& r) {
               if (r.outcome == JobOutcome::Stopped) return;
               if (r.Ok() && !r.value->groups.empty()) {
                   FillTree(*r.value);
                   return;
               }
               if (r.Ok()) {   // the frame has shown a failed job already
                   MarkFailed();
                   try {
                       r.value->firstError.Rethrow();
                   } catch (const basekit::CStdException& e) {
                       uikit::CMessageBoxService::ReportError(this, e);
                   }
               }
               // Listed again (F5): the tree stays as it was.
               if (!again) EndDialog(2);
           });
}

void CReceiverPortsDlg::FillTree(const LISTING& listing) {
    const QString current = m_list->currentItem() ? m_list->currentItem()->text(0) : QString();
    m_list->clear();
    for (const auto& [group, ports] : listing.groups) {
        if (ports.empty()) continue;
        auto* node = new QTreeWidgetItem(m_list, QStringList(LoadResString(group->captionId).ToQString()));
        node->setIcon(0, m_list->GroupImage(group->imageId));
        for (const basekit::ustring& keyword : ports) {
            auto* child = new QTreeWidgetItem(node, QStringList(keyword.ToQString()));
            child->setIcon(0, m_list->GroupImage(group->imageId));
            child->setData(0, kKindRole, static_cast<int>(group->kind));
        }
        node->setExpanded(true);
    }
    // The port that was chosen stays chosen when it is still there.
    const QList<QTreeWidgetItem*> same = m_list->findItems(current, Qt::MatchExactly | Qt::MatchRecursive);
    if (!current.isEmpty() && !same.isEmpty()) m_list->setCurrentItem(same.front());
}

void CReceiverPortsDlg::Refresh() { List(true); }

void CReceiverPortsDlg::OnOpenPort(QTreeWidgetItem* item) {
    if (!item || !item->parent()) return;
    const int kind = item->data(0, kKindRole).toInt();
    if (RunSheet(kind, basekit::ustring::FromQString(item->text(0))) == kResultReconnect) EndDialog(kResultReconnect);
}

int CReceiverPortsDlg::RunSheet(int kind, const basekit::ustring& keyword) {
    switch (static_cast<EPortKind>(kind)) {
    case EPortKind::Serial: {
        CSerialPortPS sheet(m_receiver, vok::FromKeyword<vok::EDev>(keyword), this);
        return sheet.DoModal();
    }
    case EPortKind::Usb:
    case EPortKind::Tcp:
    case EPortKind::Mvp: {
        CUniversalPortPS sheet(m_receiver, vok::FromKeyword<vok::EDev>(keyword), this);
        return sheet.DoModal();
    }
    case EPortKind::Script: {
        CComPortPS sheet(m_receiver, vok::FromKeyword<vok::ECom>(keyword), this);
        return sheet.DoModal();
    }
    default:
        return 0;
    }
}
