#include "platform/devio/nmea/CNmeaDecoder.h"

#include <array>
#include <cmath>
#include <limits>

#include "platform/devio/nmea/NmeaFields.h"
#include "platform/devio/nmea/SatelliteMapping.h"

namespace devio {

namespace {

constexpr std::size_t kSatellitesPerGsv = (CNmeaSentence::kMaxFields - 3) / 4;

// Fields that may be empty: empty leaves the default, anything else must parse.
bool OptionalUnsigned(std::string_view field, unsigned& value)
{
    return field.empty() || ParseUnsigned(field, value);
}

bool OptionalSigned(std::string_view field, int& value)
{
    return field.empty() || ParseSigned(field, value);
}

bool OptionalDecimal(std::string_view field, double& value)
{
    return field.empty() || ParseDecimal(field, value);
}

bool ParseDate(std::string_view ddmmyy, DATETIME_RECORD& record)
{
    unsigned value = 0;
    if (ddmmyy.size() != 6 || !ParseUnsigned(ddmmyy, value))
        return false;
    const unsigned day = value / 10000;
    const unsigned month = value / 100 % 100;
    const unsigned year = value % 100;
    if (day < 1 || day > 31 || month < 1 || month > 12)
        return false;
    // Two-digit years: NMEA receivers appeared in the 1980s.
    record.year = static_cast<std::uint16_t>(year < 80 ? 2000 + year : 1900 + year);
    record.month = static_cast<std::uint8_t>(month);
    record.day = static_cast<std::uint8_t>(day);
    return true;
}

void SetTime(const UTC_TIME& time, DATETIME_RECORD& record)
{
    record.hour = time.hour;
    record.minute = time.minute;
    record.second = time.second;
    record.millisecond = time.millisecond;
}

// NMEA 4.11 signal id: one hexadecimal digit.
bool ParseSignalId(std::string_view field, std::uint8_t& signal)
{
    if (field.empty())
        return true;
    if (field.size() != 1)
        return false;
    const char c = field[0];
    if (c >= '0' && c <= '9')
        signal = static_cast<std::uint8_t>(c - '0');
    else if (c >= 'A' && c <= 'F')
        signal = static_cast<std::uint8_t>(c - 'A' + 10);
    else
        return false;
    return true;
}

// One "id,elevation,azimuth,snr" block; false when it does not parse. An empty id is a
// padding block and leaves satellite.system Unused.
bool ParseSatelliteBlock(std::string_view talker, std::string_view id, std::string_view elevation,
                         std::string_view azimuth, std::string_view snr, SATELLITE_RECORD& satellite)
{
    satellite = SATELLITE_RECORD{};
    if (id.empty())
        return true;
    unsigned nmeaId = 0;
    int el = SATELLITE_RECORD::kUnknownElevation;
    unsigned az = SATELLITE_RECORD::kUnknownAzimuth;
    unsigned cn0 = 0;
    if (!ParseUnsigned(id, nmeaId) || !OptionalSigned(elevation, el) || !OptionalUnsigned(azimuth, az)
        || !OptionalUnsigned(snr, cn0))
        return false;
    if (!elevation.empty() && (el < -90 || el > 90))
        return false;
    if (!azimuth.empty() && az > 360)
        return false;
    if (cn0 > 99)
        return false;
    const SAT_ID mapped = MapSatellite(talker, nmeaId);
    satellite.system = mapped.system;
    satellite.number = mapped.number;
    satellite.elevation = static_cast<std::int8_t>(el);
    satellite.azimuth = static_cast<std::uint16_t>(azimuth.empty() ? az : az % 360);
    satellite.snr = static_cast<std::uint8_t>(cn0);
    return true;
}

}  // namespace

const CNmeaDecoder::SENTENCE_ROW CNmeaDecoder::kSentenceTable[] = {
    {"GGA", 14, &CNmeaDecoder::DecodeGga},
    {"RMC", 11, &CNmeaDecoder::DecodeRmc},
    {"GSA", 17, &CNmeaDecoder::DecodeGsa},
    {"GSV", 3, &CNmeaDecoder::DecodeGsv},
    {"ZDA", 6, &CNmeaDecoder::DecodeZda},
};

CNmeaDecoder::CNmeaDecoder(INmeaSink& sink) : m_sink(sink) {}

NMEA_COUNTERS CNmeaDecoder::Counters() const
{
    NMEA_COUNTERS counters = m_counters;
    counters.brokenGroups = m_gsv.BrokenGroups();
    return counters;
}

void CNmeaDecoder::Decode(std::string_view text)
{
    if (text.empty() || (text[0] != '$' && text[0] != '!')) {
        ++m_counters.notSentence;
        return;
    }
    switch (m_sentence.Parse(text)) {
    case CNmeaSentence::Status::Ok: DecodeGood(); return;
    case CNmeaSentence::Status::NoChecksum: ++m_counters.noChecksum; return;
    case CNmeaSentence::Status::BadChecksum: ++m_counters.badChecksum; return;
    case CNmeaSentence::Status::Malformed: ++m_counters.malformed; return;
    }
}

void CNmeaDecoder::Flush() { m_sky.Publish(m_sink); }

const CNmeaDecoder::SENTENCE_ROW* CNmeaDecoder::Find(std::string_view type) const
{
    for (const SENTENCE_ROW& row : kSentenceTable) {
        if (row.type == type)
            return &row;
    }
    return nullptr;
}

void CNmeaDecoder::DecodeGood()
{
    // Talker-less sentences (proprietary, '!' data) are never in the table.
    const SENTENCE_ROW* row = m_sentence.Talker().empty() ? nullptr : Find(m_sentence.Type());
    const bool isGsa = row != nullptr && row->decode == &CNmeaDecoder::DecodeGsa;
    if (row == nullptr) {
        ++m_counters.ignored;
    } else if (m_sentence.Split() && m_sentence.FieldCount() >= row->minFields && (this->*row->decode)()) {
        ++m_counters.decoded;
    } else {
        ++m_counters.malformed;
    }
    m_lastWasGsa = isGsa;
}

void CNmeaDecoder::OnEpochTime(std::int32_t millisecondOfDay)
{
    if (millisecondOfDay == m_epochTime)
        return;
    m_sky.Publish(m_sink);
    m_epochTime = millisecondOfDay;
}

bool CNmeaDecoder::DecodeGga()
{
    const CNmeaSentence& s = m_sentence;
    UTC_TIME time;
    if (!s.Field(0).empty() && !ParseUtcTime(s.Field(0), time))
        return false;
    const bool hasPosition = !s.Field(1).empty() || !s.Field(3).empty();
    double lat = 0;
    double lon = 0;
    if (hasPosition && (!ParseLatitude(s.Field(1), s.Field(2), lat) || !ParseLongitude(s.Field(3), s.Field(4), lon)))
        return false;
    unsigned quality = 0;
    unsigned used = 0;
    double hdop = -1;
    double altitude = std::numeric_limits<double>::quiet_NaN();
    double separation = 0;
    if (!OptionalUnsigned(s.Field(5), quality) || !OptionalUnsigned(s.Field(6), used)
        || !OptionalDecimal(s.Field(7), hdop) || !OptionalDecimal(s.Field(8), altitude)
        || !OptionalDecimal(s.Field(10), separation))
        return false;

    if (!s.Field(0).empty())
        OnEpochTime(time.MillisecondOfDay());
    // Quality 0 means the receiver has no fix; its coordinates are stale or made up.
    if (!hasPosition || quality == 0)
        return true;
    POSITION_RECORD position;
    position.geoValid = 1;
    position.lat = lat;
    position.lon = lon;
    // GGA altitude is above the geoid; adding the separation gives the ellipsoidal height.
    position.height = altitude + separation;
    position.geoExtra = POSITION_RECORD::MakeExtra(quality, used, hdop);
    m_sink.OnPosition(position);
    return true;
}

bool CNmeaDecoder::DecodeRmc()
{
    const CNmeaSentence& s = m_sentence;
    UTC_TIME time;
    DATETIME_RECORD record;
    if (!s.Field(0).empty() && !ParseUtcTime(s.Field(0), time))
        return false;
    if (!s.Field(8).empty() && !ParseDate(s.Field(8), record))
        return false;
    if (s.Field(0).empty())
        return true;
    OnEpochTime(time.MillisecondOfDay());
    // ZDA carries the time zone and, on most receivers, a more careful date; RMC stands in
    // only until the first ZDA arrives.
    if (s.Field(8).empty() || m_zdaSeen)
        return true;
    SetTime(time, record);
    m_sink.OnDateTime(record);
    return true;
}

bool CNmeaDecoder::DecodeGsa()
{
    const CNmeaSentence& s = m_sentence;
    unsigned fixMode = 0;
    unsigned systemId = 0;
    if (!OptionalUnsigned(s.Field(1), fixMode) || !OptionalUnsigned(s.Field(17), systemId))
        return false;
    std::array<unsigned, 12> ids{};
    for (std::size_t i = 0; i < ids.size(); ++i) {
        if (!OptionalUnsigned(s.Field(2 + i), ids[i]))
            return false;
    }
    if (!m_lastWasGsa)
        m_sky.BeginUsedSet();
    // Fix mode 1 is "no fix": some receivers still list satellites, but none is used.
    const std::string_view talker = systemId != 0 ? TalkerOfSystemId(systemId) : s.Talker();
    if (fixMode == 1 || talker.empty())
        return true;
    for (const unsigned id : ids)
        m_sky.MarkUsed(MapSatellite(talker, id));
    return true;
}

bool CNmeaDecoder::DecodeGsv()
{
    const CNmeaSentence& s = m_sentence;
    unsigned total = 0;
    unsigned part = 0;
    unsigned count = 0;
    if (!ParseUnsigned(s.Field(0), total) || !ParseUnsigned(s.Field(1), part)
        || !ParseUnsigned(s.Field(2), count))
        return false;
    if (total < 1 || total > 9 || part < 1 || part > total)
        return false;
    const std::size_t blockFields = s.FieldCount() - 3;
    if (blockFields % 4 > 1)
        return false;
    std::uint8_t signal = 0;
    if (blockFields % 4 == 1 && !ParseSignalId(s.Field(s.FieldCount() - 1), signal))
        return false;

    std::array<SATELLITE_RECORD, kSatellitesPerGsv> satellites;
    std::size_t found = 0;
    for (std::size_t block = 0; block < blockFields / 4; ++block) {
        const std::size_t f = 3 + block * 4;
        SATELLITE_RECORD& satellite = satellites[found];
        if (!ParseSatelliteBlock(s.Talker(), s.Field(f), s.Field(f + 1), s.Field(f + 2), s.Field(f + 3), satellite))
            return false;
        satellite.signalId = signal;
        if (satellite.system != SATELLITE_RECORD::Unused)
            ++found;
    }
    const GSV_GROUP* group = m_gsv.Add(s.Talker(), total, part, signal, satellites.data(), found);
    if (group == nullptr)
        return true;
    if (!m_sky.CanAdd(*group))
        m_sky.Publish(m_sink);
    m_sky.Add(*group);
    return true;
}

bool CNmeaDecoder::DecodeZda()
{
    const CNmeaSentence& s = m_sentence;
    if (s.Field(0).empty() || s.Field(1).empty() || s.Field(2).empty() || s.Field(3).empty())
        return true;  // the receiver does not know the time yet
    UTC_TIME time;
    unsigned day = 0;
    unsigned month = 0;
    unsigned year = 0;
    int zoneHours = 0;
    int zoneMinutes = 0;
    if (!ParseUtcTime(s.Field(0), time) || !ParseUnsigned(s.Field(1), day) || !ParseUnsigned(s.Field(2), month)
        || !ParseUnsigned(s.Field(3), year) || !OptionalSigned(s.Field(4), zoneHours)
        || !OptionalSigned(s.Field(5), zoneMinutes))
        return false;
    if (day < 1 || day > 31 || month < 1 || month > 12 || year > 9999 || zoneHours < -13 || zoneHours > 13
        || zoneMinutes < -59 || zoneMinutes > 59)
        return false;
    OnEpochTime(time.MillisecondOfDay());
    m_zdaSeen = true;
    DATETIME_RECORD record;
    record.year = static_cast<std::uint16_t>(year);
    record.month = static_cast<std::uint8_t>(month);
    record.day = static_cast<std::uint8_t>(day);
    SetTime(time, record);
    record.zoneHours = static_cast<std::int8_t>(zoneHours);
    record.zoneMinutes = static_cast<std::int8_t>(zoneMinutes);
    m_sink.OnDateTime(record);
    return true;
}

}  // namespace devio
