#include "fenklib/config/CToolsDlg.h"

#include <QLabel>
#include <QPushButton>

#include "fenklib/frame/WideLayout.h"
#include "fenklib/frame/CLayoutFactory.h"
#include "fenklib/frame/LibraryHelpers.h"
#include "fenklib/resources/DialogIds.h"
#include "fenklib/resources/ImageIds.h"
#include "fenklib/resources/StringIds.h"
#include "platform/uikit/CMessageBoxService.h"

namespace {

enum : unsigned { IDC_INIT_PARAMETERS = 100, IDC_INIT_NVRAM, IDC_RESET, IDC_STATUS, IDC_HINT_PARAMETERS, IDC_HINT_NVRAM, IDC_HINT_RESET };

constexpr DLG_ITEM kItems[] = {
    {IDC_INIT_PARAMETERS, CtlKind::Button, IDS_INIT_PARAMETERS, 4, 4, 84, 16, uikit::kAnchorTopLeft},
    {IDC_HINT_PARAMETERS, CtlKind::Static, IDS_INIT_PARAMETERS_HINT, 94, 4, 142, 24, uikit::kAnchorTopWide},
    {IDC_INIT_NVRAM, CtlKind::Button, IDS_INIT_NVRAM, 4, 34, 84, 16, uikit::kAnchorTopLeft},
    {IDC_HINT_NVRAM, CtlKind::Static, IDS_INIT_NVRAM_HINT, 94, 34, 142, 24, uikit::kAnchorTopWide},
    {IDC_RESET, CtlKind::Button, IDS_RESET_RECEIVER, 4, 64, 84, 16, uikit::kAnchorTopLeft},
    {IDC_HINT_RESET, CtlKind::Static, IDS_RESET_RECEIVER_HINT, 94, 64, 142, 24, uikit::kAnchorTopWide},
    {IDC_STATUS, CtlKind::Static, 0, 4, 96, 170, 10, uikit::kAnchorBottomWide},
    {IDCANCEL_BUTTON, CtlKind::Button, IDS_CLOSE, 180, 94, 56, 14, uikit::kAnchorBottomRight},
};
constexpr DLG_TEMPLATE kNormal{IDD_RECEIVER_TOOLS, 240, 112, kItems};
constexpr auto kWideItems = Widened(kItems);
constexpr DLG_TEMPLATE kWide{IDD_RECEIVER_TOOLS_WIDE, 240 + kWideGrow, 112, kWideItems};
const CLayoutRegistration kRegistered("CToolsDlg", {{&kNormal, &kWide}});

// Each operation's button and question, in the order of CToolsDlg::Operation.
struct OPERATION_ROW {
    unsigned button;
    unsigned question;
    void (devio::CVokReceiverMateCore::*run)();
};
constexpr OPERATION_ROW kOperations[] = {
    {IDC_INIT_PARAMETERS, IDS_CONFIRM_INIT_PARAMETERS, &devio::CVokReceiverMateCore::InitParameters},
    {IDC_INIT_NVRAM, IDS_CONFIRM_INIT_NVRAM, &devio::CVokReceiverMateCore::InitNvram},
    {IDC_RESET, IDS_CONFIRM_RESET_RECEIVER, &devio::CVokReceiverMateCore::ResetReceiver},
};

const OPERATION_ROW& RowOf(CToolsDlg::Operation operation) { return kOperations[static_cast<int>(operation)]; }

}  // namespace

CToolsDlg::CToolsDlg(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent)
    : CFenkDialog(std::move(receiver), CLayoutFactory::Choose(kNormal, &kWide).number, parent, L"CToolsDlg", IDI_TOOLS_DIALOG),
      m_controls(CLayoutFactory::Build(this, kNormal, &kWide)) {
    setWindowTitle(LoadResString(IDS_RECEIVER_TOOLS).ToQString());
    for (const unsigned hint : {IDC_HINT_PARAMETERS, IDC_HINT_NVRAM, IDC_HINT_RESET}) m_controls.Get<QLabel>(hint)->setWordWrap(true);
    for (const auto operation : {Operation::InitParameters, Operation::InitNvram, Operation::ResetReceiver})
        connect(m_controls.Get<QPushButton>(RowOf(operation).button), &QPushButton::clicked, this, [this, operation] { Run(operation); });
}

CToolsDlg::~CToolsDlg() { DestroyWindow(); }

bool CToolsDlg::OnInitDialog() {
    CFenkDialog::OnInitDialog();
    UpdateControls();
    return true;
}

bool CToolsDlg::Run(Operation operation) {
    const OPERATION_ROW& row = RowOf(operation);
    if (uikit::CMessageBoxService::Show(this, LoadResString(row.question), LoadResString(IDS_RECEIVER_TOOLS),
                                        uikit::MB_YESNO | uikit::MB_ICONWARNING | uikit::MB_DEFBUTTON2) != uikit::IDYES)
        return false;
    m_controls.Get<QLabel>(IDC_STATUS)->setText(LoadResString(IDS_WAITING_FOR_RECEIVER).ToQString());
    // The mate swallows the time-out of a receiver that restarts instead of answering.
    RunJob([run = row.run](CJobContext& job) { (job.Mate().*run)(); },
           [this](const JOB_RESULT<void>& r) {
               m_controls.Get<QLabel>(IDC_STATUS)->clear();
               if (r.Ok()) EndDialog(kReconnect);
           });
    return true;
}

bool CToolsDlg::IsOperationEnabled(Operation operation) const {
    return m_controls.Get<QPushButton>(RowOf(operation).button)->isEnabled();
}

void CToolsDlg::UpdateControls() {
    const bool usable = !IsBusy() && IsReceiverReady();
    for (const OPERATION_ROW& row : kOperations) m_controls.Get<QPushButton>(row.button)->setEnabled(usable);
}
