#include "fenklib/ports/CReceiverPortComDriverPP.h"

#include <QLineEdit>
#include <QPushButton>

#include "fenklib/frame/CLayoutFactory.h"
#include "fenklib/frame/LibraryHelpers.h"
#include "fenklib/frame/TransferJob.h"
#include "fenklib/ports/CComFilesDlg.h"
#include "fenklib/ports/CComUpdateDriverDlg.h"
#include "fenklib/receiver/CVokReceiverMate.h"
#include "fenklib/resources/DialogIds.h"
#include "fenklib/resources/StringIds.h"

using basekit::ustring;

namespace {

using P = CReceiverPortComDriverPP;
constexpr unsigned IDC_LABEL = 0xFFFF;
constexpr uikit::ANCHOR kWide = uikit::kAnchorTopWide;
// A version file is a line of text; a copy that takes longer than this has lost its link.

constexpr DLG_ITEM kNormalItems[] = {
    {IDC_LABEL, CtlKind::Static, IDS_DRIVER_NAME, 7, 7, 196, 9},
    {P::IDC_DRIVER_NAME, CtlKind::Edit, 0, 7, 17, 196, 14, kWide},
    {IDC_LABEL, CtlKind::Static, IDS_DRIVER_VERSION, 7, 34, 196, 9},
    {P::IDC_DRIVER_VERSION, CtlKind::Edit, 0, 7, 44, 196, 14, kWide},
    {IDC_LABEL, CtlKind::Static, IDS_DRIVER_DESCRIPTION, 7, 61, 196, 9},
    {P::IDC_DRIVER_DESCRIPTION, CtlKind::Edit, 0, 7, 71, 196, 14, kWide},
    {P::IDC_DRIVER_DETAILS, CtlKind::Button, IDS_DRIVER_DETAILS, 7, 94, 70, 14},
    {IDC_LABEL, CtlKind::Static, IDS_NOTE_DRIVER_DETAILS, 82, 94, 121, 20, kWide},
    {P::IDC_UPDATE_DRIVER, CtlKind::Button, IDS_UPDATE_DRIVER, 7, 118, 70, 14},
    {IDC_LABEL, CtlKind::Static, IDS_NOTE_UPDATE_DRIVER, 82, 118, 121, 20, kWide},
    {P::IDC_UNINSTALL, CtlKind::Button, IDS_UNINSTALL, 7, 142, 70, 14},
    {IDC_LABEL, CtlKind::Static, IDS_NOTE_UNINSTALL, 82, 142, 121, 20, kWide},
};
constexpr DLG_ITEM kWideItems[] = {
    {IDC_LABEL, CtlKind::Static, IDS_DRIVER_NAME, 7, 9, 100, 9},
    {P::IDC_DRIVER_NAME, CtlKind::Edit, 0, 110, 7, 193, 14, kWide},
    {IDC_LABEL, CtlKind::Static, IDS_DRIVER_VERSION, 7, 27, 100, 9},
    {P::IDC_DRIVER_VERSION, CtlKind::Edit, 0, 110, 25, 193, 14, kWide},
    {IDC_LABEL, CtlKind::Static, IDS_DRIVER_DESCRIPTION, 7, 45, 100, 9},
    {P::IDC_DRIVER_DESCRIPTION, CtlKind::Edit, 0, 110, 43, 193, 14, kWide},
    {P::IDC_DRIVER_DETAILS, CtlKind::Button, IDS_DRIVER_DETAILS, 7, 64, 70, 14},
    {IDC_LABEL, CtlKind::Static, IDS_NOTE_DRIVER_DETAILS, 82, 66, 221, 10, kWide},
    {P::IDC_UPDATE_DRIVER, CtlKind::Button, IDS_UPDATE_DRIVER, 7, 82, 70, 14},
    {IDC_LABEL, CtlKind::Static, IDS_NOTE_UPDATE_DRIVER, 82, 84, 221, 10, kWide},
    {P::IDC_UNINSTALL, CtlKind::Button, IDS_UNINSTALL, 7, 100, 70, 14},
    {IDC_LABEL, CtlKind::Static, IDS_NOTE_UNINSTALL, 82, 102, 221, 10, kWide},
};
constexpr DLG_TEMPLATE kNormal{IDD_PORT_COM_DRIVER, 210, 164, kNormalItems};
constexpr DLG_TEMPLATE kWideLayout{IDD_PORT_COM_DRIVER_WIDE, 310, 120, kWideItems};
const CLayoutRegistration kRegistered("CReceiverPortComDriverPP", {{&kNormal, &kWideLayout}});

}  // namespace

CReceiverPortComDriverPP::CReceiverPortComDriverPP(basekit::CSmartPtr<devio::IReceiver> receiver, devio::vok::ECom port)
    : CFenkPropertyPage(std::move(receiver), CLayoutFactory::Choose(kNormal, &kWideLayout).number, LoadResString(IDS_PAGE_DRIVER)),
      m_controls(CLayoutFactory::Build(this, kNormal, &kWideLayout)),
      m_port(port) {
    for (const unsigned id : {IDC_DRIVER_NAME, IDC_DRIVER_VERSION, IDC_DRIVER_DESCRIPTION}) m_controls.Get<QLineEdit>(id)->setReadOnly(true);
    connect(m_controls.Get<QPushButton>(IDC_DRIVER_DETAILS), &QPushButton::clicked, this, [this] { OnDriverDetails(); });
    connect(m_controls.Get<QPushButton>(IDC_UPDATE_DRIVER), &QPushButton::clicked, this, [this] { OnUpdateDriver(); });
    connect(m_controls.Get<QPushButton>(IDC_UNINSTALL), &QPushButton::clicked, this, [this] { OnUninstall(); });
}

CReceiverPortComDriverPP::~CReceiverPortComDriverPP() { DestroyWindow(); }

bool CReceiverPortComDriverPP::OnInitDialog() {
    CFenkPropertyPage::OnInitDialog();
    ShowVersion();
    return true;
}

namespace {
struct SHOWN_VERSION {
    DRIVER_VERSION version;
    bool failed = false;   // not read for another reason than a missing driver
};
}  // namespace

// A port without a driver has no version file: the fields stay empty, nothing is reported.
void CReceiverPortComDriverPP::ShowVersion() {
    RunJob(
        [path = ustring::Format(L"/%s/script/%s", devio::vok::ToKeyword(m_port), L"version")](CJobContext& job) {
            SHOWN_VERSION shown;
            try {
                shown.version = ParseDriverVersion(CTransfer(job).Download(path));
            } catch (const basekit::CWinException& e) {
                if (job.IsStopping()) throw;
                shown.failed = e.Code() != basekit::kErrorInvalidData;   // refused: no driver installed
            }
            return shown;
        },
        [this](const JOB_RESULT<SHOWN_VERSION>& r) {
            if (!r.Ok()) return;
            if (r.value->failed) MarkFailed();
            m_controls.Get<QLineEdit>(IDC_DRIVER_NAME)->setText(r.value->version.name.ToQString());
            m_controls.Get<QLineEdit>(IDC_DRIVER_VERSION)->setText(r.value->version.version.ToQString());
            m_controls.Get<QLineEdit>(IDC_DRIVER_DESCRIPTION)->setText(r.value->version.description.ToQString());
        });
}

void CReceiverPortComDriverPP::UpdateControls() {
    for (const unsigned id : {IDC_DRIVER_DETAILS, IDC_UPDATE_DRIVER, IDC_UNINSTALL}) m_controls.Item(id)->setEnabled(!IsBusy());
}

void CReceiverPortComDriverPP::OnDriverDetails() {
    CComFilesDlg files(GetReceiver(), m_port, this);
    files.DoModal();
}

void CReceiverPortComDriverPP::OnUpdateDriver() {
    CComUpdateDriverDlg update(GetReceiver(), m_port, this);
    if (update.DoModal() == 1) ShowVersion();
}

void CReceiverPortComDriverPP::OnUninstall() {
    const int answer = uikit::CMessageBoxService::Show(this, LoadResString(IDS_CONFIRM_DELETE_DRIVER), {},
                                                       uikit::MB_YESNO | uikit::MB_ICONQUESTION | uikit::MB_DEFBUTTON2);
    if (answer != uikit::IDYES) return;
    RunJob([port = m_port](CJobContext& job) { job.Mate().Do(devio::par::PortClear, port); },
           [this](const JOB_RESULT<void>& r) {
               if (r.Ok()) ShowVersion();
           });
}
