#pragma once
#include <cstdint>

#include "platform/devio/DateTimeRecord.h"
#include "tools/nmeadump/CJsonWriter.h"

// Zero-padded clock and date texts for both output shapes.
inline void WriteDigits(CJsonWriter& out, unsigned value, int width)
{
    char text[10];
    for (int i = width - 1; i >= 0; --i) {
        text[i] = static_cast<char>('0' + value % 10);
        value /= 10;
    }
    out.Raw(std::string_view(text, static_cast<std::size_t>(width)));
}

// hh:mm:ss.sss
inline void WriteClock(CJsonWriter& out, unsigned hour, unsigned minute, unsigned second, unsigned millisecond)
{
    WriteDigits(out, hour, 2);
    out.Char(':');
    WriteDigits(out, minute, 2);
    out.Char(':');
    WriteDigits(out, second, 2);
    out.Char('.');
    WriteDigits(out, millisecond, 3);
}

// yyyy-mm-dd
inline void WriteDate(CJsonWriter& out, const devio::DATETIME_RECORD& t)
{
    WriteDigits(out, t.year, 4);
    out.Char('-');
    WriteDigits(out, t.month, 2);
    out.Char('-');
    WriteDigits(out, t.day, 2);
}

// "hh:mm:ss.sss" from a UTC millisecond of day.
inline void WriteTimeOfDay(CJsonWriter& out, std::int32_t ms)
{
    const auto m = static_cast<unsigned>(ms);
    out.Char('"');
    WriteClock(out, m / 3600000, m / 60000 % 60, m / 1000 % 60, m % 1000);
    out.Char('"');
}
