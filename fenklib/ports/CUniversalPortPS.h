#pragma once
#include "fenklib/frame/CFenkPropertySheet.h"
#include "fenklib/ports/CReceiverPortGeneralPP.h"

// The sheet of a USB, TCP or MVP port: its general page only.
class CUniversalPortPS : public CFenkPropertySheet {
public:
    CUniversalPortPS(basekit::CSmartPtr<devio::IReceiver> receiver, devio::vok::EDev port, QWidget* parent);
    ~CUniversalPortPS() override;
    CReceiverPortGeneralPP& GeneralPage() { return m_general; }

private:
    CReceiverPortGeneralPP m_general;
};
