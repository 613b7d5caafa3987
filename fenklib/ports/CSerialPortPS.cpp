#include "fenklib/ports/CSerialPortPS.h"

#include <algorithm>

#include "fenklib/ports/PortGroups.h"
#include "fenklib/ports/PortSheetCaption.h"

CSerialPortPS::CSerialPortPS(basekit::CSmartPtr<devio::IReceiver> receiver, devio::vok::EDev port, QWidget* parent)
    : CFenkPropertySheet(receiver, PortSheetCaption(devio::vok::ToKeyword(port)), parent, L"CSerialPortPS"),
      m_port(port),
      m_general(receiver, port),
      m_serial(receiver, port, &m_portChanged) {
    AddPage(&m_general);
    AddPage(&m_serial);
}

CSerialPortPS::~CSerialPortPS() { DestroyWindow(); }

int CSerialPortPS::DoModal() {
    std::vector<basekit::ustring> ports;
    if (!WithReceiver([&](devio::CVokReceiverMate& mate) { ports = ListGroupPorts(mate, PortGroupOf(EPortKind::Serial)); }))
        return 2;
    if (std::find(ports.begin(), ports.end(), devio::vok::ToKeyword(m_port)) == ports.end()) return kResultPortGone;
    const int result = CFenkPropertySheet::DoModal();
    return m_portChanged ? kResultReconnect : result;
}
