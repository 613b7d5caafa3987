#include "fenklib/ports/CComPortPS.h"

#include <algorithm>

#include "fenklib/ports/PortGroups.h"
#include "fenklib/ports/PortSheetCaption.h"

CComPortPS::CComPortPS(basekit::CSmartPtr<devio::IReceiver> receiver, devio::vok::ECom port, QWidget* parent)
    : CFenkPropertySheet(receiver, PortSheetCaption(devio::vok::ToKeyword(port)), parent, L"CComPortPS"),
      m_port(port),
      m_general(receiver, port),
      m_driver(receiver, port),
      m_advanced(receiver, port) {
    AddPage(&m_general);
    AddPage(&m_driver);
    AddPage(&m_advanced);
}

CComPortPS::~CComPortPS() { DestroyWindow(); }

int CComPortPS::DoModal() {
    std::vector<basekit::ustring> ports;
    if (!WithReceiver([&](devio::CVokReceiverMate& mate) { ports = ListGroupPorts(mate, PortGroupOf(EPortKind::Script)); }))
        return 2;
    if (std::find(ports.begin(), ports.end(), devio::vok::ToKeyword(m_port)) == ports.end()) return kResultPortGone;
    return CFenkPropertySheet::DoModal();
}
