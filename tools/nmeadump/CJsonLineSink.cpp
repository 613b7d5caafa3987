#include "tools/nmeadump/CJsonLineSink.h"

#include <array>
#include <cmath>
#include <cstdarg>

namespace {

const char* SystemName(std::int32_t system)
{
    static constexpr std::array<const char*, 8> kNames{"unused", "GPS", "GLONASS", "SBAS", "QZSS",
                                                       "reserved", "Galileo", "BeiDou"};
    return system >= 0 && static_cast<std::size_t>(system) < kNames.size() ? kNames[system] : "unknown";
}

[[gnu::format(printf, 2, 3)]] void Append(std::string& line, const char* format, ...)
{
    std::array<char, 256> text{};
    va_list args;
    va_start(args, format);
    const int n = std::vsnprintf(text.data(), text.size(), format, args);
    va_end(args);
    if (n > 0)
        line.append(text.data(), std::min(static_cast<std::size_t>(n), text.size() - 1));
}

// JSON has no NaN: an unknown height is null.
void AppendNumber(std::string& line, const char* name, double value, int decimals)
{
    if (std::isfinite(value))
        Append(line, ",\"%s\":%.*f", name, decimals, value);
    else
        Append(line, ",\"%s\":null", name);
}

}  // namespace

void CJsonLineSink::WriteLine()
{
    m_line += "}\n";
    std::fwrite(m_line.data(), 1, m_line.size(), m_out);
    m_line.clear();
}

void CJsonLineSink::OnPosition(const devio::POSITION_RECORD& position)
{
    const unsigned extra = position.geoExtra;
    m_line = "{\"type\":\"position\"";
    AppendNumber(m_line, "lat", position.lat, 9);
    AppendNumber(m_line, "lon", position.lon, 9);
    AppendNumber(m_line, "height", position.height, 3);
    Append(m_line, ",\"quality\":%u,\"used\":%u", extra & 0xFFu, (extra >> 8) & 0xFFu);
    if ((extra >> 16) == 0xFFFFu)
        m_line += ",\"hdop\":null";
    else
        Append(m_line, ",\"hdop\":%.2f", (extra >> 16) / 100.0);
    WriteLine();
}

void CJsonLineSink::OnSatList(const devio::SATLIST_RECORD& satellites)
{
    m_line = "{\"type\":\"satlist\",\"sats\":[";
    const char* separator = "";
    for (const devio::SATELLITE_RECORD& s : satellites) {
        Append(m_line, "%s{\"system\":\"%s\",\"number\":%d", separator, SystemName(s.system), s.number);
        separator = ",";
        if (s.elevation != devio::SATELLITE_RECORD::kUnknownElevation)
            Append(m_line, ",\"el\":%d", s.elevation);
        if (s.azimuth != devio::SATELLITE_RECORD::kUnknownAzimuth)
            Append(m_line, ",\"az\":%u", static_cast<unsigned>(s.azimuth));
        Append(m_line, ",\"snr\":%u,\"signal\":%u,\"nav\":%u}", static_cast<unsigned>(s.snr),
               static_cast<unsigned>(s.signalId), static_cast<unsigned>(s.navStatus));
    }
    m_line += "]";
    WriteLine();
}

void CJsonLineSink::OnDateTime(const devio::DATETIME_RECORD& t)
{
    m_line = "{\"type\":\"datetime\"";
    Append(m_line, ",\"date\":\"%04u-%02u-%02u\",\"time\":\"%02u:%02u:%02u.%03u\",\"zone\":\"%+03d:%02d\"",
           unsigned{t.year}, unsigned{t.month}, unsigned{t.day}, unsigned{t.hour}, unsigned{t.minute},
           unsigned{t.second}, unsigned{t.millisecond}, int{t.zoneHours}, std::abs(int{t.zoneMinutes}));
    WriteLine();
}

void CJsonLineSink::OnDataLink(const devio::DATALINK_RECORD& link)
{
    m_line = "{\"type\":\"datalink\"";
    Append(m_line, ",\"port\":\"%c\",\"format\":\"%c\",\"station\":%u,\"age\":%.1f,\"received\":%u,"
                   "\"errors\":%u,\"rate\":%u",
           link.port, link.format, unsigned{link.stationId}, double{link.age}, unsigned{link.received},
           unsigned{link.errors}, unsigned{link.rate});
    WriteLine();
}

void CJsonLineSink::WriteStats(const devio::LIVEDATA_COUNTERS& c)
{
    using ull = unsigned long long;
    m_line = "{\"type\":\"stats\"";
    Append(m_line, ",\"sentences\":%llu,\"frames\":%llu,\"garbageBytes\":%llu,\"droppedFrames\":%llu,"
                   "\"droppedSentences\":%llu",
           ull{c.lexer.sentences}, ull{c.lexer.frames}, ull{c.lexer.garbageBytes}, ull{c.lexer.droppedFrames},
           ull{c.lexer.droppedSentences});
    Append(m_line, ",\"decoded\":%llu,\"ignored\":%llu,\"badChecksum\":%llu,\"noChecksum\":%llu,"
                   "\"malformed\":%llu,\"notSentence\":%llu,\"brokenGroups\":%llu",
           ull{c.nmea.decoded}, ull{c.nmea.ignored}, ull{c.nmea.badChecksum}, ull{c.nmea.noChecksum},
           ull{c.nmea.malformed}, ull{c.nmea.notSentence}, ull{c.nmea.brokenGroups});
    Append(m_line, ",\"dataLinkMessages\":%llu,\"dataLinkMalformed\":%llu,\"otherFrames\":%llu",
           ull{c.dataLinkMessages}, ull{c.dataLinkMalformed}, ull{c.otherFrames});
    WriteLine();
}
