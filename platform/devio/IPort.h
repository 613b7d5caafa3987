#pragma once
#include <string_view>

#include "platform/devio/IPortAddr.h"

namespace devio {

// An open port: the byte stream below a receiver or a modem.
struct IPort : basekit::IRefCounted {
    virtual CSmartPtr<IPortAddr> GetAddress() const = 0;
    virtual bool IsOpen() const = 0;
    // Writes bytes without any framing; throws basekit::CWinException when the link fails.
    virtual void WriteRaw(std::string_view bytes) = 0;

protected:
    ~IPort() = default;
};

}  // namespace devio
