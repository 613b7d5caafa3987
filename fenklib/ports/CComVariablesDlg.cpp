#include "fenklib/ports/CComVariablesDlg.h"

#include <QHeaderView>
#include <QPushButton>

#include "fenklib/frame/CLayoutFactory.h"
#include "fenklib/frame/LibraryHelpers.h"
#include "fenklib/receiver/CVokReceiverMate.h"
#include "fenklib/resources/DialogIds.h"
#include "fenklib/resources/StringIds.h"

using basekit::ustring;
namespace par = devio::par;

namespace {

enum : unsigned { IDC_LIST = 100, IDC_HINT, IDC_REFRESH };
constexpr int kValueColumn = 1;

constexpr DLG_ITEM kItems[] = {
    {IDC_LIST, CtlKind::ListView, 0, 4, 4, 232, 140, uikit::kAnchorFill},
    {IDC_HINT, CtlKind::Static, IDS_COM_EDIT_HINT, 4, 148, 232, 10, uikit::kAnchorBottomWide},
    {IDC_REFRESH, CtlKind::Button, IDS_REFRESH, 4, 162, 60, 14, uikit::kAnchorBottomLeft},
    {IDOK_BUTTON, CtlKind::Button, IDS_OK, 122, 162, 55, 14, uikit::kAnchorBottomRight},
    {IDCANCEL_BUTTON, CtlKind::Button, IDS_CANCEL, 181, 162, 55, 14, uikit::kAnchorBottomRight},
};
constexpr DLG_TEMPLATE kLayout{IDD_COM_VARIABLES, 240, 180, kItems};
const CLayoutRegistration kRegistered("CComVariablesDlg", {{&kLayout}});
constexpr int kNameWidth = 100;

}  // namespace

CComVariablesDlg::CComVariablesDlg(basekit::CSmartPtr<devio::IReceiver> receiver, devio::vok::ECom port, QWidget* parent)
    : CFenkDialog(std::move(receiver), IDD_COM_VARIABLES, parent, L"CComVariablesDlg"),
      m_controls(CLayoutFactory::Build(this, kLayout)),
      m_list(m_controls.Get<QTreeWidget>(IDC_LIST)),
      m_port(port) {
    setWindowTitle(ustring::Format(L"%s - %s", LoadResString(IDS_COM_VARIABLES_TITLE), devio::vok::ToKeyword(port)).ToQString());
    m_list->setColumnCount(2);
    m_list->setHeaderLabels({LoadResString(IDS_COL_NAME).ToQString(), LoadResString(IDS_COL_VALUE).ToQString()});
    m_list->header()->resizeSection(0, kNameWidth);
    // Only the value is the user's to change; the name belongs to the driver.
    m_list->setEditTriggers(QAbstractItemView::NoEditTriggers);
    connect(m_list, &QTreeWidget::itemDoubleClicked, this, [this](QTreeWidgetItem* item, int) { m_list->editItem(item, kValueColumn); });
    connect(m_controls.Get<QPushButton>(IDC_REFRESH), &QPushButton::clicked, this, [this] { Refresh(); });
}

CComVariablesDlg::~CComVariablesDlg() { DestroyWindow(); }

bool CComVariablesDlg::OnInitDialog() {
    CFenkDialog::OnInitDialog();
    Refresh();
    return true;
}

void CComVariablesDlg::UpdateControls() {
    for (const unsigned id : {static_cast<unsigned>(IDC_REFRESH), IDOK_BUTTON}) m_controls.Item(id)->setEnabled(!IsBusy());
}

// The receiver answers the first number past the last variable with the error that reads as
// the empty name: that ends the list.
void CComVariablesDlg::Refresh() {
    const ustring port = devio::vok::ToKeyword(m_port);
    RunJob(
        [port](CJobContext& job) {
            std::vector<VARIABLE> variables;
            for (int index = 1; index <= kMaxVariables && !job.IsStopping(); ++index) {
                ustring name = job.Mate().GetScriptVariableName(port, index);
                if (name.empty()) break;
                variables.push_back({index, std::move(name), job.Mate().Get(par::PortVarValue, port, index)});
            }
            return variables;
        },
        [this](const JOB_RESULT<std::vector<VARIABLE>>& r) {
            if (r.Ok()) Show(*r.value);
        });
}

void CComVariablesDlg::Show(std::vector<VARIABLE> variables) {
    m_read = std::move(variables);
    m_list->clear();
    for (const VARIABLE& v : m_read) {
        auto* item = new QTreeWidgetItem(m_list);
        item->setText(0, v.name.ToQString());
        item->setText(kValueColumn, v.value.ToQString());
        item->setFlags(item->flags() | Qt::ItemIsEditable);
    }
}

void CComVariablesDlg::accept() {
    std::vector<VARIABLE> changed;
    for (int row = 0; row < m_list->topLevelItemCount() && row < static_cast<int>(m_read.size()); ++row) {
        const ustring value = ustring::FromQString(m_list->topLevelItem(row)->text(kValueColumn));
        const VARIABLE& read = m_read[static_cast<size_t>(row)];
        if (value != read.value) changed.push_back({read.index, read.name, value});
    }
    const ustring port = devio::vok::ToKeyword(m_port);
    RunJob(
        [changed, port](CJobContext& job) {
            for (const VARIABLE& v : changed) job.Mate().Set(par::PortVarValue, v.value, port, v.index);
        },
        [this](const JOB_RESULT<void>& r) {
            if (r.Ok()) EndDialog(1);
        });
}
