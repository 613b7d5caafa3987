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


// Mode indicators of RMC, GLL, VTG and GNS on the GGA quality scale; 0 is "no fix".
unsigned QualityOfMode(char mode)
{
    switch (mode) {
    case 'A': return 1;
    case 'D': return 2;
    case 'P': return 3;
    case 'R': return 4;
    case 'F': return 5;
    case 'E': return 6;
    case 'M': return 7;
    case 'S': return 8;
    default: return 0;
    }
}

// GNS gives one mode letter per system; the best of them speaks for the fix.
unsigned QualityOfModes(std::string_view modes)
{
    static constexpr std::string_view kBestFirst = "RFPDAEMS";
    for (const char mode : kBestFirst) {
        if (modes.find(mode) != std::string_view::npos)
            return QualityOfMode(mode);
    }
    return 0;
}

constexpr double kKnot = 1852.0 / 3600.0;  // metres per second

// GSA ids run from field 2 to the DOP triplet; NMEA 4.10 adds a one-digit system id after
// it. Some receivers list more than 12 ids, so the layout is read from the end.
struct GSA_LAYOUT {
    std::size_t idEnd = 0;                // one past the last id field
    std::string_view systemId;
};

GSA_LAYOUT GsaLayout(const CNmeaSentence& s)
{
    const std::size_t n = s.FieldCount();
    const std::string_view last = s.Field(n - 1);
    const bool hasSystem = n >= 18 && last.size() <= 1 && last.find('.') == std::string_view::npos;
    return GSA_LAYOUT{n - (hasSystem ? 4 : 3), hasSystem ? last : std::string_view()};
}

// Fields that only add to a record (age, dilutions): a receiver's odd text there must not
// cost the sentence its position, so what does not parse is unknown.
double LenientDecimal(std::string_view field)
{
    double v = POSITION_RECORD::kUnknown;
    if (field.empty() || !OptionalDecimal(field, v))
        return POSITION_RECORD::kUnknown;
    return v;
}

}  // namespace

const CNmeaDecoder::SENTENCE_ROW CNmeaDecoder::kSentenceTable[] = {
    {"GGA", 14, &CNmeaDecoder::DecodeGga},
    {"GNS", 10, &CNmeaDecoder::DecodeGns},
    {"GLL", 4, &CNmeaDecoder::DecodeGll},
    {"RMC", 11, &CNmeaDecoder::DecodeRmc},
    {"VTG", 8, &CNmeaDecoder::DecodeVtg},
    {"GST", 8, &CNmeaDecoder::DecodeGst},
    {"GSA", 17, &CNmeaDecoder::DecodeGsa},
    {"GSV", 3, &CNmeaDecoder::DecodeGsv},
    {"ZDA", 6, &CNmeaDecoder::DecodeZda},
};

const CNmeaDecoder::PROPRIETARY_ROW CNmeaDecoder::kProprietaryTable[] = {
    {"PQGSV", "GSV", "QZ"},
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

void CNmeaDecoder::Flush()
{
    m_position.Flush(m_sink);
    m_sky.Publish(m_sink);
}

const CNmeaDecoder::SENTENCE_ROW* CNmeaDecoder::Find(std::string_view type) const
{
    if (type.size() != 3)
        return nullptr;
    for (const SENTENCE_ROW& row : kSentenceTable) {
        if (row.type[0] == type[0] && row.type[1] == type[1] && row.type[2] == type[2])
            return &row;
    }
    return nullptr;
}

const CNmeaDecoder::SENTENCE_ROW* CNmeaDecoder::FindRow()
{
    m_talker = m_groupKey = m_sentence.Talker();
    if (!m_talker.empty())
        return Find(m_sentence.Type());
    for (const PROPRIETARY_ROW& row : kProprietaryTable) {
        if (row.address == m_sentence.Address()) {
            m_talker = row.talker;
            m_groupKey = m_sentence.Address().substr(0, 2);
            return Find(row.type);
        }
    }
    return nullptr;  // other proprietary sentences, '!' data
}

void CNmeaDecoder::DecodeGood()
{
    const SENTENCE_ROW* row = FindRow();
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

bool CNmeaDecoder::TakeTime(std::string_view field, bool& hasTime)
{
    hasTime = !field.empty();
    if (!hasTime)
        return true;
    UTC_TIME time;
    if (!ParseUtcTime(field, time))
        return false;
    OnEpochTime(time.MillisecondOfDay());
    return true;
}

void CNmeaDecoder::OnEpochTime(std::int32_t millisecondOfDay)
{
    if (millisecondOfDay == m_epochTime)
        return;
    m_position.BeginEpoch(m_sink, millisecondOfDay);
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
    FIX_REPORT fix;
    fix.source = POSITION_RECORD::SourceGga;
    fix.usedKnown = true;
    if (hasPosition && (!ParseLatitude(s.Field(1), s.Field(2), fix.lat) || !ParseLongitude(s.Field(3), s.Field(4), fix.lon)))
        return false;
    if (!OptionalUnsigned(s.Field(5), fix.quality) || !OptionalUnsigned(s.Field(6), fix.used)
        || !OptionalDecimal(s.Field(7), fix.hdop) || !OptionalDecimal(s.Field(8), fix.altitudeMsl)
        || !OptionalDecimal(s.Field(10), fix.separation))
        return false;
    fix.correctionAge = LenientDecimal(s.Field(12));
    OfferTimedFix(s.Field(0), hasPosition, CEpochPosition::KindGga, fix);
    return true;
}

bool CNmeaDecoder::DecodeGns()
{
    const CNmeaSentence& s = m_sentence;
    UTC_TIME time;
    if (!s.Field(0).empty() && !ParseUtcTime(s.Field(0), time))
        return false;
    const bool hasPosition = !s.Field(1).empty() || !s.Field(3).empty();
    FIX_REPORT fix;
    fix.source = POSITION_RECORD::SourceGns;
    fix.usedKnown = true;
    if (hasPosition && (!ParseLatitude(s.Field(1), s.Field(2), fix.lat) || !ParseLongitude(s.Field(3), s.Field(4), fix.lon)))
        return false;
    if (!OptionalUnsigned(s.Field(6), fix.used) || !OptionalDecimal(s.Field(7), fix.hdop)
        || !OptionalDecimal(s.Field(8), fix.altitudeMsl) || !OptionalDecimal(s.Field(9), fix.separation))
        return false;
    fix.correctionAge = LenientDecimal(s.Field(10));
    fix.quality = QualityOfModes(s.Field(5));
    OfferTimedFix(s.Field(0), hasPosition, CEpochPosition::KindGns, fix);
    return true;
}

bool CNmeaDecoder::DecodeGll()
{
    const CNmeaSentence& s = m_sentence;
    const bool hasPosition = !s.Field(0).empty() || !s.Field(2).empty();
    FIX_REPORT fix;
    fix.source = POSITION_RECORD::SourceGll;
    if (hasPosition && (!ParseLatitude(s.Field(0), s.Field(1), fix.lat) || !ParseLongitude(s.Field(2), s.Field(3), fix.lon)))
        return false;
    UTC_TIME time;
    if (!s.Field(4).empty() && !ParseUtcTime(s.Field(4), time))
        return false;
    // Status A is valid; the NMEA 2.3 mode, when present, says how.
    const std::string_view mode = s.Field(6);
    fix.quality = s.Field(5) == "A" ? (mode.empty() ? 1 : QualityOfMode(mode[0])) : 0;
    OfferTimedFix(s.Field(4), hasPosition, CEpochPosition::KindGll, fix);
    return true;
}

void CNmeaDecoder::OfferTimedFix(std::string_view timeField, bool hasPosition, CEpochPosition::Kind kind, FIX_REPORT& fix)
{
    bool hasTime = false;
    TakeTime(timeField, hasTime);
    // A fix without time cannot be placed in an epoch: it is one by itself.
    if (!hasTime)
        m_position.BeginEpoch(m_sink, -1);
    // Quality 0 means the receiver has no fix; its coordinates are stale or made up.
    if (!hasPosition || fix.quality == 0)
        fix.source = POSITION_RECORD::SourceNone;
    m_position.OfferFix(m_sink, kind, fix);
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
    const bool hasPosition = !s.Field(2).empty() || !s.Field(4).empty();
    FIX_REPORT fix;
    fix.source = POSITION_RECORD::SourceRmc;
    if (hasPosition && (!ParseLatitude(s.Field(2), s.Field(3), fix.lat) || !ParseLongitude(s.Field(4), s.Field(5), fix.lon)))
        return false;
    double knots = -1;
    if (!OptionalDecimal(s.Field(6), knots) || !OptionalDecimal(s.Field(7), fix.course))
        return false;
    if (knots >= 0)
        fix.speed = knots * kKnot;
    const std::string_view mode = s.Field(11);
    fix.quality = s.Field(1) == "A" ? (mode.empty() ? 1 : QualityOfMode(mode[0])) : 0;
    if (!hasPosition || fix.quality == 0)
        fix.source = POSITION_RECORD::SourceNone;
    if (s.Field(0).empty())
        return true;
    OnEpochTime(time.MillisecondOfDay());
    if (fix.source != POSITION_RECORD::SourceNone)
        m_position.OfferFix(m_sink, CEpochPosition::KindRmc, fix);
    // ZDA carries the time zone and, on most receivers, a more careful date; RMC stands in
    // only until the first ZDA arrives.
    // Receivers that send one RMC per system say the same time more than once per epoch.
    if (s.Field(8).empty() || m_zdaSeen || m_rmcDateEpoch == m_epochTime)
        return true;
    m_rmcDateEpoch = m_epochTime;
    SetTime(time, record);
    m_sink.OnDateTime(record);
    return true;
}

bool CNmeaDecoder::DecodeVtg()
{
    const CNmeaSentence& s = m_sentence;
    double course = POSITION_RECORD::kUnknown;
    double knots = -1;
    double kmh = -1;
    if (!OptionalDecimal(s.Field(0), course) || !OptionalDecimal(s.Field(4), knots)
        || !OptionalDecimal(s.Field(6), kmh))
        return false;
    const std::string_view mode = s.Field(8);
    if (!mode.empty() && QualityOfMode(mode[0]) == 0)
        return true;  // "N": the receiver has no velocity
    const double speed = kmh >= 0 ? kmh / 3.6 : (knots >= 0 ? knots * kKnot : POSITION_RECORD::kUnknown);
    m_position.OfferVelocity(m_sink, CEpochPosition::KindVtg, speed, course);
    return true;
}

bool CNmeaDecoder::DecodeGst()
{
    const CNmeaSentence& s = m_sentence;
    double sigmaLat = POSITION_RECORD::kUnknown;
    double sigmaLon = POSITION_RECORD::kUnknown;
    double sigmaHeight = POSITION_RECORD::kUnknown;
    if (!OptionalDecimal(s.Field(5), sigmaLat) || !OptionalDecimal(s.Field(6), sigmaLon)
        || !OptionalDecimal(s.Field(7), sigmaHeight))
        return false;
    bool hasTime = false;
    if (!TakeTime(s.Field(0), hasTime))
        return false;
    m_position.OfferErrors(m_sink, sigmaLat, sigmaLon, sigmaHeight);
    return true;
}

void CNmeaDecoder::BeginGsa(std::int32_t system)
{
    // GSA in a row add up (a system with more than 12 used satellites takes two). Apart, a GSA
    // for a system the used set already holds begins a new report, while one for another
    // system adds to it wherever it comes in the epoch.
    const std::uint32_t bit = 1u << (static_cast<std::uint32_t>(system) & 31u);
    if (!m_lastWasGsa && (m_gsaSystems & bit) != 0) {
        m_sky.BeginUsedSet();
        m_gsaSystems = 0;
    }
    m_gsaSystems |= bit;
}

bool CNmeaDecoder::DecodeGsa()
{
    const CNmeaSentence& s = m_sentence;
    const GSA_LAYOUT layout = GsaLayout(s);
    unsigned fixMode = 0;
    unsigned systemId = 0;
    if (!OptionalUnsigned(s.Field(1), fixMode) || !OptionalUnsigned(layout.systemId, systemId))
        return false;
    std::array<unsigned, CNmeaSentence::kMaxFields> ids{};
    const std::size_t count = layout.idEnd - 2;
    for (std::size_t i = 0; i < count; ++i) {
        if (!OptionalUnsigned(s.Field(2 + i), ids[i]))
            return false;
    }
    const std::string_view talker = systemId != 0 ? TalkerOfSystemId(systemId) : m_talker;
    // Which system the sentence speaks for: its first satellite's, else its talker's.
    std::int32_t system = 0;
    for (std::size_t i = 0; i < count && system == 0; ++i)
        system = MapSatellite(talker, ids[i]).system;
    BeginGsa(system);
    if (fixMode != 1)
        m_position.OfferDops(LenientDecimal(s.Field(layout.idEnd)), LenientDecimal(s.Field(layout.idEnd + 2)));
    // Fix mode 1 is "no fix": some receivers still list satellites, but none is used.
    if (fixMode == 1 || talker.empty())
        return true;
    for (std::size_t i = 0; i < count; ++i)
        m_sky.MarkUsed(MapSatellite(talker, ids[i]));
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
        if (!ParseSatelliteBlock(m_talker, s.Field(f), s.Field(f + 1), s.Field(f + 2), s.Field(f + 3), satellite))
            return false;
        satellite.signalId = signal;
        if (satellite.system != SATELLITE_RECORD::Unused)
            ++found;
    }
    const GSV_GROUP* group = m_gsv.Add(m_groupKey, total, part, signal, satellites.data(), found);
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
