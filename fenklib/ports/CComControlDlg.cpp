#include "fenklib/ports/CComControlDlg.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>

#include "fenklib/frame/CLayoutFactory.h"
#include "fenklib/frame/LibraryHelpers.h"
#include "fenklib/receiver/CVokReceiverMate.h"
#include "fenklib/resources/DialogIds.h"
#include "fenklib/resources/StringIds.h"

using basekit::ustring;
namespace par = devio::par;

namespace {

using D = CComControlDlg;
constexpr unsigned IDC_LABEL = 0xFFFF;
constexpr uikit::ANCHOR kWide = uikit::kAnchorTopWide;

constexpr DLG_ITEM kItems[] = {
    {IDC_LABEL, CtlKind::Static, IDS_COM_REPORT, 7, 9, 50, 9},
    {D::IDC_REPORT, CtlKind::Edit, 0, 60, 7, 173, 14, kWide},
    {IDC_LABEL, CtlKind::Static, IDS_COM_STATE, 7, 27, 50, 9},
    {D::IDC_STATE, CtlKind::Edit, 0, 60, 25, 173, 14, kWide},
    {IDC_LABEL, CtlKind::Static, IDS_COM_SCRIPT, 7, 45, 50, 9},
    {D::IDC_SCRIPT, CtlKind::Edit, 0, 60, 43, 173, 14, kWide},
    {IDC_LABEL, CtlKind::Static, IDS_COM_PROFILE, 7, 67, 50, 9},
    {D::IDC_PROFILE, CtlKind::DropList, 0, 60, 65, 173, 14, kWide},
    {D::IDC_START, CtlKind::Button, IDS_COM_START, 60, 84, 55, 14},
    {D::IDC_STOP, CtlKind::Button, IDS_COM_STOP, 119, 84, 55, 14},
    {D::IDC_REFRESH, CtlKind::Button, IDS_REFRESH, 7, 110, 60, 14, uikit::kAnchorBottomLeft},
    {IDCANCEL_BUTTON, CtlKind::Button, IDS_CLOSE, 173, 110, 60, 14, uikit::kAnchorBottomRight},
};
constexpr DLG_TEMPLATE kLayout{IDD_COM_CONTROL, 240, 128, kItems};
const CLayoutRegistration kRegistered("CComControlDlg", {{&kLayout}});

}  // namespace

CComControlDlg::CComControlDlg(basekit::CSmartPtr<devio::IReceiver> receiver, devio::vok::ECom port, QWidget* parent)
    : CFenkDialog(std::move(receiver), IDD_COM_CONTROL, parent, L"CComControlDlg"),
      m_controls(CLayoutFactory::Build(this, kLayout)),
      m_port(port) {
    setWindowTitle(ustring::Format(L"%s - %s", LoadResString(IDS_COM_CONTROL_TITLE), devio::vok::ToKeyword(port)).ToQString());
    for (const unsigned id : {IDC_REPORT, IDC_STATE, IDC_SCRIPT}) m_controls.Get<QLineEdit>(id)->setReadOnly(true);
    connect(m_controls.Get<QPushButton>(IDC_REFRESH), &QPushButton::clicked, this, [this] { Refresh(); });
    connect(m_controls.Get<QPushButton>(IDC_START), &QPushButton::clicked, this,
            [this] { RunProfile(ustring::FromQString(m_controls.Get<QComboBox>(IDC_PROFILE)->currentText())); });
    connect(m_controls.Get<QPushButton>(IDC_STOP), &QPushButton::clicked, this, [this] { RunProfile({}); });
}

CComControlDlg::~CComControlDlg() { DestroyWindow(); }

bool CComControlDlg::OnInitDialog() {
    CFenkDialog::OnInitDialog();
    Refresh();
    return true;
}

void CComControlDlg::UpdateControls() {
    const bool idle = !IsBusy();
    m_controls.Item(IDC_REFRESH)->setEnabled(idle);
    m_controls.Item(IDC_STOP)->setEnabled(idle);
    m_controls.Item(IDC_START)->setEnabled(idle && m_controls.Get<QComboBox>(IDC_PROFILE)->currentIndex() >= 0);
}

void CComControlDlg::Refresh() { Run(std::nullopt); }

void CComControlDlg::RunProfile(const ustring& profile) { Run(profile); }

// One job: the profile first when one is given, then everything the window shows.
void CComControlDlg::Run(std::optional<ustring> profile) {
    const ustring port = devio::vok::ToKeyword(m_port);
    const devio::vok::ECom com = m_port;
    RunJob(
        [port, com, profile](CJobContext& job) {
            devio::CVokReceiverMate& mate = job.Mate();
            if (profile) mate.Set(par::PortProfile, *profile, port);
            ENGINE_STATE s;
            s.profiles = mate.GetPortScriptList(com, L"profiles");
            s.profile = mate.Get(par::PortProfile, port);
            s.report = mate.Get(par::PortCurReport, port);
            s.state = mate.Get(par::PortCurState, port);
            s.script = mate.Get(par::PortCurScript, port);
            return s;
        },
        [this](const JOB_RESULT<ENGINE_STATE>& r) {
            if (r.Ok()) Show(*r.value);
        });
}

void CComControlDlg::Show(const ENGINE_STATE& s) {
    m_controls.Get<QLineEdit>(IDC_REPORT)->setText(s.report.ToQString());
    m_controls.Get<QLineEdit>(IDC_STATE)->setText(s.state.ToQString());
    m_controls.Get<QLineEdit>(IDC_SCRIPT)->setText(s.script.ToQString());
    auto* profiles = m_controls.Get<QComboBox>(IDC_PROFILE);
    profiles->clear();
    for (const ustring& name : s.profiles) profiles->addItem(name.ToQString());
    profiles->setCurrentIndex(profiles->findText(s.profile.ToQString()));
    if (profiles->currentIndex() < 0 && profiles->count() > 0) profiles->setCurrentIndex(0);
}
