#pragma once
#include <cstdint>
#include <vector>

#include "platform/basekit/ustring.h"

namespace devio::vok {

// One scheduled receiver message on a port: "em,/port,name:{period,phase,count,0xflags}".
struct MSG {
    basekit::ustring name;
    double period = 1.0;     // seconds
    double phase = 0.0;      // seconds
    int count = 0;           // 0: without end
    unsigned flags = 0;

    bool operator==(const MSG&) const = default;
};

// A Cartesian earth-centred position, metres.
struct POS_XYZ {
    double x = 0, y = 0, z = 0;
    bool operator==(const POS_XYZ&) const = default;
};

// A geodetic position: latitude and longitude in degrees, height in metres.
struct POS_GEO {
    double lat = 0, lon = 0, height = 0;
    bool operator==(const POS_GEO&) const = default;
};

// One entry of a satellite lock list ("120=y").
struct SAT_LOCK {
    int satellite = 0;
    bool locked = false;
    bool operator==(const SAT_LOCK&) const = default;
};

// One file of the receiver's log folder, as "print,/log/&[name,size,time]" lists it.
struct LOG_FILE {
    basekit::ustring name;
    std::uint64_t size = 0;
    basekit::ustring time;   // the receiver's "YYYY/MM/DD hh:mm:ss"
    bool operator==(const LOG_FILE&) const = default;
};

}  // namespace devio::vok
