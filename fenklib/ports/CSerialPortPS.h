#pragma once
#include <cstdint>

#include "fenklib/frame/CFenkPropertySheet.h"
#include "fenklib/ports/CReceiverPortGeneralPP.h"
#include "fenklib/ports/CReceiverPortSerialPP.h"

// A serial port's sheet. DoModal gives 3 without showing anything when the receiver no longer
// lists the port, and 4 when the controller's own port was reconfigured during the run.
class CSerialPortPS : public CFenkPropertySheet {
public:
    static constexpr int kResultPortGone = 3;
    static constexpr int kResultReconnect = 4;

    CSerialPortPS(basekit::CSmartPtr<devio::IReceiver> receiver, devio::vok::EDev port, QWidget* parent);
    ~CSerialPortPS() override;
    int DoModal() override;

    CReceiverPortGeneralPP& GeneralPage() { return m_general; }
    CReceiverPortSerialPP& SerialPage() { return m_serial; }

private:
    devio::vok::EDev m_port;
    std::uint8_t m_portChanged = 0;   // only ever set, never cleared
    CReceiverPortGeneralPP m_general;
    CReceiverPortSerialPP m_serial;
};
