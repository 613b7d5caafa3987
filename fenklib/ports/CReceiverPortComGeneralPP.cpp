#include "fenklib/ports/CReceiverPortComGeneralPP.h"

#include <QLineEdit>

#include "fenklib/frame/CLayoutFactory.h"
#include "fenklib/frame/LibraryHelpers.h"
#include "fenklib/receiver/CReceiverEnumWrapper.h"
#include "fenklib/resources/DialogIds.h"
#include "fenklib/resources/StringIds.h"

namespace {

using P = CReceiverPortComGeneralPP;
constexpr unsigned IDC_LABEL = 0xFFFF;

constexpr DLG_ITEM kNormalItems[] = {
    {IDC_LABEL, CtlKind::Static, IDS_DEVICE_ID, 7, 7, 196, 9},
    {P::IDC_DEVICE_ID, CtlKind::Edit, 0, 7, 17, 196, 14, uikit::kAnchorTopWide},
};
constexpr DLG_ITEM kWideItems[] = {
    {IDC_LABEL, CtlKind::Static, IDS_DEVICE_ID, 7, 9, 100, 9},
    {P::IDC_DEVICE_ID, CtlKind::Edit, 0, 110, 7, 193, 14, uikit::kAnchorTopWide},
};
constexpr DLG_TEMPLATE kNormal{IDD_PORT_COM_GENERAL, 210, 40, kNormalItems};
constexpr DLG_TEMPLATE kWideLayout{IDD_PORT_COM_GENERAL_WIDE, 310, 30, kWideItems};
const CLayoutRegistration kRegistered("CReceiverPortComGeneralPP", {{&kNormal, &kWideLayout}});

}  // namespace

CReceiverPortComGeneralPP::CReceiverPortComGeneralPP(basekit::CSmartPtr<devio::IReceiver> receiver, devio::vok::ECom port)
    : CFenkPropertyPage(std::move(receiver), CLayoutFactory::Choose(kNormal, &kWideLayout).number, LoadResString(IDS_GENERAL)),
      m_controls(CLayoutFactory::Build(this, kNormal, &kWideLayout)) {
    auto* edit = m_controls.Get<QLineEdit>(IDC_DEVICE_ID);
    edit->setReadOnly(true);
    edit->setText(devio::vok::ToKeyword(port).ToQString());
}

CReceiverPortComGeneralPP::~CReceiverPortComGeneralPP() { DestroyWindow(); }
