#pragma once
#include "fenklib/frame/CFenkPropertyPage.h"
#include "fenklib/receiver/VokEnums.h"

// What every page of a device port's sheet holds: the receiver (through the frame) and the port.
class CReceiverPortBasePP : public CFenkPropertyPage {
public:
    CReceiverPortBasePP(basekit::CSmartPtr<devio::IReceiver> receiver, devio::vok::EDev port, unsigned templateId,
                        const basekit::ustring& title)
        : CFenkPropertyPage(std::move(receiver), templateId, title), m_port(port) {}
    devio::vok::EDev Port() const { return m_port; }

protected:
    const devio::vok::EDev m_port;
};
