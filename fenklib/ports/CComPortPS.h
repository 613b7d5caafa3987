#pragma once
#include "fenklib/frame/CFenkPropertySheet.h"
#include "fenklib/ports/CReceiverPortComGeneralPP.h"

// A script port's sheet. DoModal gives 3 without showing anything when the receiver no longer
// lists the port.
class CComPortPS : public CFenkPropertySheet {
public:
    static constexpr int kResultPortGone = 3;
    CComPortPS(basekit::CSmartPtr<devio::IReceiver> receiver, devio::vok::ECom port, QWidget* parent);
    ~CComPortPS() override;
    int DoModal() override;

private:
    devio::vok::ECom m_port;
    CReceiverPortComGeneralPP m_general;
};
