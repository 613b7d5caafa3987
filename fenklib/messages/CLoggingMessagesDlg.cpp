#include "fenklib/messages/CLoggingMessagesDlg.h"

#include <QLabel>
#include <QPushButton>
#include <QTreeWidget>

#include "fenklib/frame/CLayoutFactory.h"
#include "fenklib/frame/LibraryHelpers.h"
#include "fenklib/receiver/CVokReceiverMate.h"
#include "fenklib/resources/DialogIds.h"
#include "fenklib/resources/StringIds.h"

namespace {
enum : unsigned { IDC_LABEL_A = 100, IDC_LIST_A, IDC_LOAD_A, IDC_LABEL_B, IDC_LIST_B, IDC_LOAD_B };
constexpr DLG_ITEM kItems[] = {
    {IDC_LABEL_A, CtlKind::Static, IDS_LOG_FILE_A, 4, 4, 200, 10},
    {IDC_LIST_A, CtlKind::ListView, 0, 4, 16, 292, 80, {0, 0, 1, 0.5}},
    {IDC_LOAD_A, CtlKind::Static, 0, 4, 98, 292, 10, {0, 0.5, 1, 0}},
    {IDC_LABEL_B, CtlKind::Static, IDS_LOG_FILE_B, 4, 112, 200, 10, {0, 0.5, 0, 0}},
    {IDC_LIST_B, CtlKind::ListView, 0, 4, 124, 292, 80, {0, 0.5, 1, 0.5}},
    {IDC_LOAD_B, CtlKind::Static, 0, 4, 206, 292, 10, uikit::kAnchorBottomWide},
    {IDOK_BUTTON, CtlKind::Button, IDS_OK, 190, 220, 50, 14, uikit::kAnchorBottomRight},
    {IDCANCEL_BUTTON, CtlKind::Button, IDS_CANCEL, 246, 220, 50, 14, uikit::kAnchorBottomRight},
};
constexpr DLG_TEMPLATE kNormal{IDD_LOGGING_MESSAGES, 300, 238, kItems};
const CLayoutRegistration kRegistered("CLoggingMessagesDlg", {{&kNormal}});

struct LOG_LISTS {
    fenkmsg::MessageList a, b;
};
}  // namespace

CLoggingMessagesDlg::CLoggingMessagesDlg(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent)
    : CFenkDialog(receiver, IDD_LOGGING_MESSAGES, parent, L"CLoggingMessagesDlg"),
      m_controls(CLayoutFactory::Build(this, kNormal)),
      m_fileA(new CMessageListEditor(this, receiver, m_controls.Get<QTreeWidget>(IDC_LIST_A), m_controls.Get<QLabel>(IDC_LOAD_A))),
      m_fileB(new CMessageListEditor(this, receiver, m_controls.Get<QTreeWidget>(IDC_LIST_B), m_controls.Get<QLabel>(IDC_LOAD_B))) {
    setWindowTitle(LoadResString(IDS_LOGGING_MESSAGES).ToQString());
}

CLoggingMessagesDlg::~CLoggingMessagesDlg() { DestroyWindow(); }

bool CLoggingMessagesDlg::OnInitDialog() {
    CFenkDialog::OnInitDialog();
    RunJob(
        [](CJobContext& job) {
            return LOG_LISTS{job.Mate().GetPortMessages(devio::vok::CUR_FILE_A), job.Mate().GetPortMessages(devio::vok::CUR_FILE_B)};
        },
        [this](const JOB_RESULT<LOG_LISTS>& r) {
            if (!r.Ok()) return;
            m_fileA->SetMessages(r.value->a);
            m_fileB->SetMessages(r.value->b);
            m_read = true;
        });
    return true;
}

// Writing lists that were never read would throw away what the files record.
void CLoggingMessagesDlg::UpdateControls() { m_controls.Get<QPushButton>(IDOK_BUTTON)->setEnabled(!IsBusy() && m_read); }

void CLoggingMessagesDlg::accept() {
    if (!m_read) return;
    AcceptAsJob([a = m_fileA->Messages(), b = m_fileB->Messages()](CJobContext& job) {
        job.Mate().SetPortMessages(devio::vok::CUR_FILE_A, a);
        job.Mate().SetPortMessages(devio::vok::CUR_FILE_B, b);
    });
}
