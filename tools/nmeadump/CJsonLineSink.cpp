#include "tools/nmeadump/CJsonLineSink.h"

#include <array>
#include <cmath>
#include <string_view>

#include "tools/nmeadump/JsonTime.h"

namespace {

std::string_view SystemName(std::int32_t system)
{
    static constexpr std::array<std::string_view, 8> kNames{"unused", "GPS", "GLONASS", "SBAS", "QZSS",
                                                            "reserved", "Galileo", "BeiDou"};
    return system >= 0 && static_cast<std::size_t>(system) < kNames.size() ? kNames[system] : "unknown";
}

std::string_view SourceName(std::uint8_t source)
{
    static constexpr std::array<std::string_view, 5> kNames{"none", "GGA", "GNS", "RMC", "GLL"};
    return source < kNames.size() ? kNames[source] : "unknown";
}

// Optional values are left out rather than written as null, so old readers see old lines.
void OptionalFixed(CJsonWriter& out, std::string_view name, double value, int decimals)
{
    if (!std::isfinite(value))
        return;
    out.Key(name);
    out.Fixed(value, decimals);
}

}  // namespace

void CJsonLineSink::OnPosition(const devio::POSITION_RECORD& p)
{
    using P = devio::POSITION_RECORD;
    const unsigned extra = p.geoExtra;
    m_out.Raw(R"({"type":"position")");
    m_out.Key("lat");
    m_out.Fixed(p.lat, 9);
    m_out.Key("lon");
    m_out.Fixed(p.lon, 9);
    m_out.Key("height");
    m_out.Fixed(p.height, 3);
    m_out.Key("quality");
    m_out.Unsigned(extra & 0xFFu);
    m_out.Key("used");
    m_out.Unsigned((extra >> 8) & 0xFFu);
    m_out.Key("hdop");
    m_out.Fixed((extra >> 16) == 0xFFFFu ? NAN : (extra >> 16) / 100.0, 2);
    m_out.Key("source");
    m_out.String(SourceName(p.source));
    if (p.timeOfDay >= 0) {
        m_out.Key("time");
        WriteTimeOfDay(m_out, p.timeOfDay);
    }
    OptionalFixed(m_out, "altMsl", p.altitudeMsl, 3);
    OptionalFixed(m_out, "separation", p.geoidSeparation, 3);
    if (p.flags & P::kSeparationModelled)
        m_out.Raw(R"(,"separationModelled":true)");
    if (p.flags & P::kSeparationMissing)
        m_out.Raw(R"(,"separationMissing":true)");
    if (p.IsHeld())
        m_out.Raw(R"(,"held":true)");
    OptionalFixed(m_out, "speed", p.speed, 3);
    OptionalFixed(m_out, "course", p.course, 1);
    OptionalFixed(m_out, "sigmaLat", p.sigmaLat, 3);
    OptionalFixed(m_out, "sigmaLon", p.sigmaLon, 3);
    OptionalFixed(m_out, "sigmaHeight", p.sigmaHeight, 3);
    m_out.Char('}');
    m_out.EndLine();
}

void CJsonLineSink::OnSatList(const devio::SATLIST_RECORD& satellites)
{
    m_out.Raw(R"({"type":"satlist","used":)");
    m_out.Unsigned(devio::CountUsedSatellites(satellites));
    m_out.Raw(R"(,"sats":[)");
    bool first = true;
    for (const devio::SATELLITE_RECORD& s : satellites) {
        if (!first)
            m_out.Char(',');
        first = false;
        m_out.Raw(R"({"system":)");
        m_out.String(SystemName(s.system));
        m_out.Key("number");
        m_out.Int(s.number);
        if (s.elevation != devio::SATELLITE_RECORD::kUnknownElevation) {
            m_out.Key("el");
            m_out.Int(s.elevation);
        }
        if (s.azimuth != devio::SATELLITE_RECORD::kUnknownAzimuth) {
            m_out.Key("az");
            m_out.Unsigned(s.azimuth);
        }
        m_out.Key("snr");
        m_out.Unsigned(s.snr);
        m_out.Key("signal");
        m_out.Unsigned(s.signalId);
        m_out.Key("nav");
        m_out.Unsigned(s.navStatus);
        m_out.Char('}');
    }
    m_out.Raw("]}");
    m_out.EndLine();
}

void CJsonLineSink::OnDateTime(const devio::DATETIME_RECORD& t)
{
    m_out.Raw(R"({"type":"datetime","date":")");
    WriteDate(m_out, t);
    m_out.Raw(R"(","time":")");
    WriteClock(m_out, t.hour, t.minute, t.second, t.millisecond);
    m_out.Raw(R"(","zone":")");
    m_out.Char(t.zoneHours < 0 ? '-' : '+');
    WriteDigits(m_out, static_cast<unsigned>(std::abs(int{t.zoneHours})), 2);
    m_out.Char(':');
    WriteDigits(m_out, static_cast<unsigned>(std::abs(int{t.zoneMinutes})), 2);
    m_out.Raw("\"}");
    m_out.EndLine();
}

void CJsonLineSink::OnDataLink(const devio::DATALINK_RECORD& link)
{
    m_out.Raw(R"({"type":"datalink","port":")");
    m_out.Char(link.port);
    m_out.Raw(R"(","format":")");
    m_out.Char(link.format);
    m_out.Char('"');
    m_out.Key("station");
    m_out.Unsigned(link.stationId);
    m_out.Key("age");
    m_out.Fixed(double{link.age}, 1);
    m_out.Key("received");
    m_out.Unsigned(link.received);
    m_out.Key("errors");
    m_out.Unsigned(link.errors);
    m_out.Key("rate");
    m_out.Unsigned(link.rate);
    m_out.Char('}');
    m_out.EndLine();
}

void CJsonLineSink::WriteStats(const devio::LIVEDATA_COUNTERS& c)
{
    const std::pair<std::string_view, std::uint64_t> counters[] = {
        {"sentences", c.lexer.sentences},
        {"frames", c.lexer.frames},
        {"garbageBytes", c.lexer.garbageBytes},
        {"droppedFrames", c.lexer.droppedFrames},
        {"droppedSentences", c.lexer.droppedSentences},
        {"decoded", c.nmea.decoded},
        {"ignored", c.nmea.ignored},
        {"badChecksum", c.nmea.badChecksum},
        {"noChecksum", c.nmea.noChecksum},
        {"malformed", c.nmea.malformed},
        {"notSentence", c.nmea.notSentence},
        {"brokenGroups", c.nmea.brokenGroups},
        {"dataLinkMessages", c.dataLinkMessages},
        {"dataLinkMalformed", c.dataLinkMalformed},
        {"otherFrames", c.otherFrames},
    };
    m_out.Raw(R"({"type":"stats")");
    for (const auto& [name, value] : counters) {
        m_out.Key(name);
        m_out.Unsigned(value);
    }
    m_out.Char('}');
    m_out.EndLine();
}
