#pragma once
#include <cstdint>

namespace devio {

// The receiver's UTC date and time (from ZDA, or RMC when no ZDA is output).
struct DATETIME_RECORD {
    std::uint16_t year = 0;
    std::uint8_t month = 0, day = 0;
    std::uint8_t hour = 0, minute = 0, second = 0;
    std::uint16_t millisecond = 0;
    std::int8_t zoneHours = 0, zoneMinutes = 0;
};

}  // namespace devio
