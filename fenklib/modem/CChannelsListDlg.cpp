#include "fenklib/modem/CChannelsListDlg.h"

#include <QListWidget>
#include <QPushButton>

#include "fenklib/frame/CLayoutFactory.h"
#include "fenklib/frame/LibraryHelpers.h"
#include "fenklib/resources/DialogIds.h"
#include "fenklib/resources/StringIds.h"
#include "platform/uikit/CBusyCursor.h"

using basekit::ustring;

namespace {

constexpr unsigned IDC_CHANNELS = 3368;
constexpr int kDecimals = 5;

// The list takes all the growth; OK and Cancel keep to the middle of the bottom edge.
constexpr uikit::ANCHOR kButtons{0.5f, 1, 0, 0};
constexpr DLG_ITEM kItems[] = {
    {IDC_CHANNELS, CtlKind::ListBox, 0, 4, 4, 152, 172, uikit::kAnchorFill},
    {IDOK_BUTTON, CtlKind::Button, IDS_OK, 26, 182, 50, 14, kButtons},
    {IDCANCEL_BUTTON, CtlKind::Button, IDS_CANCEL, 84, 182, 50, 14, kButtons},
};
constexpr DLG_TEMPLATE kLayout{IDD_CHANNELS_LIST, 160, 200, kItems};
const CLayoutRegistration kRegistered("CChannelsListDlg", {{&kLayout}});

// A line ordered character by character, as a sorted list box orders it: the user's collation
// would put "20.00000" before "2.90000" where it ignores the point.
class CChannelLine final : public QListWidgetItem {
public:
    using QListWidgetItem::QListWidgetItem;
    bool operator<(const QListWidgetItem& other) const override { return text().compare(other.text(), Qt::CaseSensitive) < 0; }
};

}  // namespace

CChannelsListDlg::CChannelsListDlg(QWidget* parent, const std::vector<double>& channels, double& result)
    : CResizableDialog(parent, L"CChannelsListDlg"),
      m_channels(channels),
      m_result(result),
      m_controls(CLayoutFactory::Build(this, kLayout)),
      m_list(m_controls.Get<QListWidget>(IDC_CHANNELS)) {
    setWindowTitle(LoadResString(IDS_CHANNELS).ToQString());
    m_list->setSortingEnabled(true);
    m_list->setSelectionMode(QAbstractItemView::SingleSelection);
    connect(m_list, &QListWidget::itemSelectionChanged, this, [this] { UpdateControls(); });
}

bool CChannelsListDlg::OnInitDialog() {
    CResizableDialog::OnInitDialog();
    {
        const uikit::CBusyCursor busy;
        for (size_t i = 0; i < m_channels.size(); ++i) {
            auto* line = new CChannelLine(ustring::fcvt(m_channels[i], kDecimals).ToQString());
            line->setData(Qt::UserRole, static_cast<qulonglong>(i));
            m_list->addItem(line);   // the list owns the line and sorts it in
        }
    }
    UpdateControls();
    return true;
}

void CChannelsListDlg::UpdateControls() {
    m_controls.Get<QPushButton>(IDOK_BUTTON)->setEnabled(!m_list->selectedItems().isEmpty());
}

bool CChannelsListDlg::IsOkEnabled() const { return m_controls.Get<QPushButton>(IDOK_BUTTON)->isEnabled(); }

void CChannelsListDlg::accept() {
    const QList<QListWidgetItem*> selected = m_list->selectedItems();
    if (selected.isEmpty()) return;
    const auto index = selected.front()->data(Qt::UserRole).toULongLong();
    if (index >= m_channels.size()) return;
    m_result = m_channels[index];
    CResizableDialog::accept();
}
