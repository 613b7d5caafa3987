#pragma once
#include <cstdint>
#include <string_view>

namespace devio {

// Field parsers for NMEA text. Each returns false unless the whole field is consumed, so a
// stray character never passes as a number.

bool ParseUnsigned(std::string_view field, unsigned& value);
bool ParseSigned(std::string_view field, int& value);   // an optional '+' or '-' first
bool ParseDecimal(std::string_view field, double& value);

struct UTC_TIME {
    std::uint8_t hour = 0, minute = 0, second = 0;
    std::uint16_t millisecond = 0;
    std::int32_t MillisecondOfDay() const
    {
        return ((hour * 60 + minute) * 60 + second) * 1000 + millisecond;
    }
};

// "hhmmss" with an optional fraction of any length; the fraction is cut to milliseconds.
bool ParseUtcTime(std::string_view field, UTC_TIME& time);

// "ddmm.mmm" / "dddmm.mmm" plus its hemisphere letter, to signed degrees.
bool ParseLatitude(std::string_view field, std::string_view hemisphere, double& degrees);
bool ParseLongitude(std::string_view field, std::string_view hemisphere, double& degrees);

}  // namespace devio
