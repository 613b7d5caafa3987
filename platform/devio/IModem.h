#pragma once
#include "platform/devio/IPort.h"

namespace devio {

// A radio modem reached through a port; its dialogs talk to it over that port.
struct IModem : basekit::IRefCounted {
    virtual CSmartPtr<IPort> GetPort() const = 0;
    virtual ustring GetModelName() const = 0;

protected:
    ~IModem() = default;
};

}  // namespace devio
