#include "fenklib/msglist/CMessageListDlg.h"

#include <QLabel>
#include <QTreeWidget>

#include "fenklib/frame/CLayoutFactory.h"
#include "fenklib/frame/LibraryHelpers.h"
#include "fenklib/resources/DialogIds.h"
#include "fenklib/resources/StringIds.h"

namespace {
enum : unsigned { IDC_LIST = 100, IDC_LOAD };
constexpr DLG_ITEM kItems[] = {
    {IDC_LIST, CtlKind::ListView, 0, 4, 4, 292, 150, uikit::kAnchorFill},
    {IDC_LOAD, CtlKind::Static, 0, 4, 158, 292, 10, uikit::kAnchorBottomWide},
    {IDOK_BUTTON, CtlKind::Button, IDS_OK, 190, 172, 50, 14, uikit::kAnchorBottomRight},
    {IDCANCEL_BUTTON, CtlKind::Button, IDS_CANCEL, 246, 172, 50, 14, uikit::kAnchorBottomRight},
};
constexpr DLG_TEMPLATE kNormal{IDD_MESSAGE_LIST, 300, 190, kItems};
const CLayoutRegistration kRegistered("CMessageListDlg", {{&kNormal}});

}  // namespace

CMessageListDlg::CMessageListDlg(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent, fenkmsg::MessageList& list)
    : CFenkDialog(receiver, IDD_MESSAGE_LIST, parent, L"CMessageListDlg"),
      m_controls(CLayoutFactory::Build(this, kNormal)),
      m_result(list),
      m_editor(new CMessageListEditor(this, receiver, m_controls.Get<QTreeWidget>(IDC_LIST), m_controls.Get<QLabel>(IDC_LOAD))) {
    setWindowTitle(LoadResString(IDS_MESSAGES).ToQString());
}

CMessageListDlg::~CMessageListDlg() { DestroyWindow(); }

bool CMessageListDlg::OnInitDialog() {
    CFenkDialog::OnInitDialog();
    m_editor->SetLineRate(m_lineRate);
    m_editor->SetMessages(m_result);
    return true;
}

void CMessageListDlg::accept() {
    if (!m_editor->ConfirmLoad()) return;
    m_result = m_editor->Messages();
    CFenkDialog::accept();
}
