#include "platform/devio/nmea/NmeaFields.h"

#include <charconv>

namespace devio {

namespace {

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

bool AllDigits(std::string_view text)
{
    for (const char c : text) {
        if (!IsDigit(c))
            return false;
    }
    return !text.empty();
}

unsigned TwoDigits(const char* p) { return static_cast<unsigned>((p[0] - '0') * 10 + (p[1] - '0')); }

// Degrees and minutes: everything before the last two integer digits is degrees.
bool ParseDegreesMinutes(std::string_view field, unsigned maxDegrees, double& degrees)
{
    const std::size_t dot = field.find('.');
    const std::size_t intDigits = dot == std::string_view::npos ? field.size() : dot;
    if (intDigits < 3 || intDigits > 5 || !AllDigits(field.substr(0, intDigits)))
        return false;
    unsigned whole = 0;
    if (!ParseUnsigned(field.substr(0, intDigits - 2), whole))
        return false;
    double minutes = 0;
    if (!ParseDecimal(field.substr(intDigits - 2), minutes) || minutes >= 60.0)
        return false;
    degrees = whole + minutes / 60.0;
    return degrees <= maxDegrees;
}

bool ApplyHemisphere(std::string_view hemisphere, char positive, char negative, double& degrees)
{
    if (hemisphere.size() != 1)
        return false;
    if (hemisphere[0] == negative) {
        degrees = -degrees;
        return true;
    }
    return hemisphere[0] == positive;
}

}  // namespace

bool ParseUnsigned(std::string_view field, unsigned& value)
{
    if (!AllDigits(field))
        return false;
    const auto [end, ec] = std::from_chars(field.data(), field.data() + field.size(), value);
    return ec == std::errc() && end == field.data() + field.size();
}

bool ParseSigned(std::string_view field, int& value)
{
    bool negative = false;
    if (!field.empty() && (field[0] == '+' || field[0] == '-')) {
        negative = field[0] == '-';
        field.remove_prefix(1);
    }
    unsigned magnitude = 0;
    if (!ParseUnsigned(field, magnitude) || magnitude > 0x7FFFFFFFu)
        return false;
    value = negative ? -static_cast<int>(magnitude) : static_cast<int>(magnitude);
    return true;
}

bool ParseDecimal(std::string_view field, double& value)
{
    // from_chars would also take "inf", "nan" and exponents, none of which NMEA sends.
    if (field.empty())
        return false;
    std::size_t start = (field[0] == '-' || field[0] == '+') ? 1 : 0;
    bool digit = false;
    bool dot = false;
    for (std::size_t i = start; i < field.size(); ++i) {
        if (IsDigit(field[i])) {
            digit = true;
        } else if (field[i] == '.' && !dot) {
            dot = true;
        } else {
            return false;
        }
    }
    if (!digit)
        return false;
    if (field[0] == '+')
        field.remove_prefix(1);
    const auto [end, ec] = std::from_chars(field.data(), field.data() + field.size(), value);
    return ec == std::errc() && end == field.data() + field.size();
}

bool ParseUtcTime(std::string_view field, UTC_TIME& time)
{
    if (field.size() < 6 || !AllDigits(field.substr(0, 6)))
        return false;
    unsigned millisecond = 0;
    if (field.size() > 6) {
        const std::string_view fraction = field.substr(7);
        if (field[6] != '.' || !AllDigits(fraction))
            return false;
        for (std::size_t i = 0; i < 3; ++i)
            millisecond = millisecond * 10 + (i < fraction.size() ? fraction[i] - '0' : 0);
    }
    const unsigned hour = TwoDigits(field.data());
    const unsigned minute = TwoDigits(field.data() + 2);
    const unsigned second = TwoDigits(field.data() + 4);
    if (hour > 23 || minute > 59 || second > 60)  // 60: a leap second
        return false;
    time = UTC_TIME{static_cast<std::uint8_t>(hour), static_cast<std::uint8_t>(minute),
                    static_cast<std::uint8_t>(second), static_cast<std::uint16_t>(millisecond)};
    return true;
}

bool ParseLatitude(std::string_view field, std::string_view hemisphere, double& degrees)
{
    return ParseDegreesMinutes(field, 90, degrees) && ApplyHemisphere(hemisphere, 'N', 'S', degrees);
}

bool ParseLongitude(std::string_view field, std::string_view hemisphere, double& degrees)
{
    return ParseDegreesMinutes(field, 180, degrees)
        && ApplyHemisphere(hemisphere, 'E', 'W', degrees);
}

}  // namespace devio
