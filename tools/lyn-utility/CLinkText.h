#pragma once
#include "platform/basekit/ustring.h"
#include "platform/devio/IPortAddr.h"
#include "platform/devio/LinkHealth.h"

// The texts the host shows about a link: where it leads and how it is doing.
class CLinkText {
public:
    // "TCP 127.0.0.1:4001", "serial /dev/ttyUSB0 at 115200 bit/s", "built-in simulator".
    static basekit::ustring Describe(const devio::IPortAddr& address);
    // "in 120 B/s · out 3 B/s · last byte 0.2 s ago · NMEA 5.0/s · dropped frames 0 · bad sentences 0".
    static basekit::ustring Health(const devio::LINK_HEALTH& health);
};
