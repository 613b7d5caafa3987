#pragma once
#include <optional>

#include "fenklib/receiver/VokEnums.h"
#include "platform/devio/SerialLine.h"

// A serial port's five line settings as the receiver words them; a setting not read (or not
// one of its table's members) is empty.
struct SERIAL_VALUES {
    std::optional<devio::vok::EBaudRate> rate;
    std::optional<devio::vok::ERtsControl> rts;
    std::optional<devio::vok::EStopBits> stops;
    std::optional<devio::vok::EParity> parity;
    std::optional<devio::vok::EByteSize> bits;
    bool operator==(const SERIAL_VALUES&) const = default;
};

// Every empty setting given its default: 115200 bit/s, 8 bits, no parity, 1 stop, no flow control.
SERIAL_VALUES WithDefaults(SERIAL_VALUES values);

// The framing a host's serial line needs to talk to a port at these settings ("fodd" and
// "feven" frame the line as odd and even do).
devio::SerialLineSettings LineOf(const SERIAL_VALUES& values);
