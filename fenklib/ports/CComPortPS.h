#pragma once
#include "fenklib/frame/CFenkPropertySheet.h"
#include "fenklib/ports/CReceiverPortComAdvancedPP.h"
#include "fenklib/ports/CReceiverPortComDriverPP.h"
#include "fenklib/ports/CReceiverPortComGeneralPP.h"

// A script port's sheet. DoModal gives 3 without showing anything when the receiver no longer
// lists the port.
class CComPortPS : public CFenkPropertySheet {
public:
    static constexpr int kResultPortGone = 3;
    CComPortPS(basekit::CSmartPtr<devio::IReceiver> receiver, devio::vok::ECom port, QWidget* parent);
    ~CComPortPS() override;
    int DoModal() override;
    CReceiverPortComDriverPP& DriverPage() { return m_driver; }
    CReceiverPortComAdvancedPP& AdvancedPage() { return m_advanced; }

private:
    devio::vok::ECom m_port;
    CReceiverPortComGeneralPP m_general;
    CReceiverPortComDriverPP m_driver;
    CReceiverPortComAdvancedPP m_advanced;
};
