#pragma once
#include <QVariant>
#include <map>

#include "platform/basekit/CSmartPtr.h"
#include "platform/basekit/ustring.h"

namespace devio {

using basekit::CSmartPtr;
using basekit::ustring;

// Kind of a port; 0 is a local serial port (the only kind that can be a controller's internal one).
// A replayed capture and a gpsd feed carry NMEA only: they take no receiver commands.
enum EPortType : int { PortSerial = 0, PortUsb = 1, PortBluetooth = 2, PortNetwork = 3, PortInProcess = 4,
                       PortReplay = 5, PortGpsd = 6 };

// Named properties of a port address ("BaudRate", "ByteSize", "Parity", "StopBits", "RtsCts",
// "Host", "Port").
struct IPropertyContainer : basekit::IRefCounted {
    // An invalid QVariant when the property is missing.
    virtual QVariant GetProperty(const ustring& name) const = 0;

protected:
    ~IPropertyContainer() = default;
};

// Where a port leads: its kind, its name and its properties; made from a link text such as
// "serial:/dev/ttyUSB0?baud=115200", "tcp://127.0.0.1:4001", "sim:", a capture replayed at a
// line rate "file:/path/capture.log?rate=115200&loop=1", or a gpsd's NMEA "gpsd://host:2947".
struct IPortAddr : basekit::IRefCounted {
    virtual EPortType GetType() const = 0;
    virtual ustring GetName() const = 0;
    virtual CSmartPtr<IPropertyContainer> GetProperties() const = 0;
    virtual ustring ToUrl() const = 0;

    // Throws basekit::CWinException for a text that names no link.
    static CSmartPtr<IPortAddr> Parse(const ustring& url);

protected:
    ~IPortAddr() = default;
};

}  // namespace devio
