#pragma once
#include <cstdint>

namespace devio {

// State of one differential-correction link, from the receiver's "DL" periodic message.
struct DATALINK_RECORD {
    char port = 0;                        // 'A'..'D' serial, 'E'..'I' TCP, 'L' Bluetooth, 'U' USB
    char format = 0;                      // 'C' CMR, 'J' native, 'R' RTCM 2.x, 'T' RTCM 3.0
    std::uint32_t stationId = 0;
    float age = 0;                        // seconds since the last correction
    std::uint32_t received = 0;
    std::uint32_t errors = 0;
    std::uint32_t rate = 0;               // bytes per second
};

}  // namespace devio
