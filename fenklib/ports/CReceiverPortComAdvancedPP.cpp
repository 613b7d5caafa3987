#include "fenklib/ports/CReceiverPortComAdvancedPP.h"

#include <QPushButton>

#include "fenklib/frame/CLayoutFactory.h"
#include "fenklib/frame/LibraryHelpers.h"
#include "fenklib/ports/CComControlDlg.h"
#include "fenklib/ports/CComVariablesDlg.h"
#include "fenklib/resources/DialogIds.h"
#include "fenklib/resources/StringIds.h"

namespace {

using P = CReceiverPortComAdvancedPP;
constexpr unsigned IDC_LABEL = 0xFFFF;

constexpr DLG_ITEM kNormalItems[] = {
    {P::IDC_VARIABLES, CtlKind::Button, IDS_VARIABLES, 7, 7, 70, 14},
    {IDC_LABEL, CtlKind::Static, IDS_NOTE_VARIABLES, 82, 7, 121, 20, uikit::kAnchorTopWide},
    {P::IDC_CONTROL, CtlKind::Button, IDS_CONTROL, 7, 31, 70, 14},
    {IDC_LABEL, CtlKind::Static, IDS_NOTE_CONTROL, 82, 31, 121, 20, uikit::kAnchorTopWide},
};
constexpr DLG_ITEM kWideItems[] = {
    {P::IDC_VARIABLES, CtlKind::Button, IDS_VARIABLES, 7, 7, 70, 14},
    {IDC_LABEL, CtlKind::Static, IDS_NOTE_VARIABLES, 82, 9, 221, 10, uikit::kAnchorTopWide},
    {P::IDC_CONTROL, CtlKind::Button, IDS_CONTROL, 7, 25, 70, 14},
    {IDC_LABEL, CtlKind::Static, IDS_NOTE_CONTROL, 82, 27, 221, 10, uikit::kAnchorTopWide},
};
constexpr DLG_TEMPLATE kNormal{IDD_PORT_COM_ADVANCED, 210, 60, kNormalItems};
constexpr DLG_TEMPLATE kWideLayout{IDD_PORT_COM_ADVANCED_WIDE, 310, 46, kWideItems};
const CLayoutRegistration kRegistered("CReceiverPortComAdvancedPP", {{&kNormal, &kWideLayout}});

}  // namespace

CReceiverPortComAdvancedPP::CReceiverPortComAdvancedPP(basekit::CSmartPtr<devio::IReceiver> receiver, devio::vok::ECom port)
    : CFenkPropertyPage(std::move(receiver), CLayoutFactory::Choose(kNormal, &kWideLayout).number, LoadResString(IDS_PAGE_ADVANCED)),
      m_controls(CLayoutFactory::Build(this, kNormal, &kWideLayout)),
      m_port(port) {
    connect(m_controls.Get<QPushButton>(IDC_VARIABLES), &QPushButton::clicked, this, [this] { OnVariables(); });
    connect(m_controls.Get<QPushButton>(IDC_CONTROL), &QPushButton::clicked, this, [this] { OnControl(); });
}

CReceiverPortComAdvancedPP::~CReceiverPortComAdvancedPP() { DestroyWindow(); }

void CReceiverPortComAdvancedPP::OnVariables() {
    CComVariablesDlg variables(GetReceiver(), m_port, this);
    variables.DoModal();
}

void CReceiverPortComAdvancedPP::OnControl() {
    CComControlDlg control(GetReceiver(), m_port, this);
    control.DoModal();
}
