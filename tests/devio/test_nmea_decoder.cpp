// CNmeaDecoder: records from each sentence type, rejected sentences, GSV groups, GSA used
// sets and the epoch rule.
#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "devio/NmeaTestSupport.h"
#include "platform/devio/nmea/CNmeaDecoder.h"

namespace devio {
namespace {

using test::RecordingSink;
using test::WithChecksum;
using S = SATELLITE_RECORD;

struct DECODED {
    RecordingSink sink;
    NMEA_COUNTERS counters;
};

// Bodies without '$' get their checksum added; text starting with '$' or anything else is
// passed as written.
DECODED Decode(const std::vector<std::string>& lines, bool flush = true)
{
    DECODED out;
    CNmeaDecoder decoder(out.sink);
    for (const std::string& line : lines)
        decoder.Decode(!line.empty() && (line[0] == '$' || line[0] == '!' || line[0] == '#') ? line : WithChecksum(line));
    if (flush)
        decoder.Flush();
    out.counters = decoder.Counters();
    return out;
}

const S* Find(const SATLIST_RECORD& list, int system, int number, int signal = -1)
{
    for (const S& s : list) {
        if (s.system == system && s.number == number && (signal < 0 || s.signalId == signal))
            return &s;
    }
    return nullptr;
}

// ---------------------------------------------------------------- GGA

TEST(NmeaDecoderGga, Positions)
{
    const double nan = std::nan("");
    struct ROW { const char* legend; std::string body; bool position; double lat, lon, height; std::uint32_t extra; };
    const ROW rows[] = {
        {"ublox: ellipsoidal height is altitude plus separation",
         "GNGGA,003956.00,4552.65403,S,17030.00668,E,1,12,0.64,14.2,M,1.8,M,,", true,
         -(45 + 52.65403 / 60), 170 + 30.00668 / 60, 16.0, POSITION_RECORD::MakeExtra(1, 12, 0.64)},
        {"negative separation, DGPS", "GPGGA,131519.00,4153.85990,N,08738.63638,W,2,12,0.95,218.1,M,-33.8,M,,0000", true,
         41 + 53.85990 / 60, -(87 + 38.63638 / 60), 184.3, POSITION_RECORD::MakeExtra(2, 12, 0.95)},
        {"RTK fixed", "GNGGA,132900.00,4134.49795459,N,09345.03431408,W,4,12,0.9,278.161,M,-31.442,M,1.0,0133", true,
         41 + 34.49795459 / 60, -(93 + 45.03431408 / 60), 246.719, POSITION_RECORD::MakeExtra(4, 12, 0.9)},
        {"2-D fix without altitude: height unknown", "GPGGA,112257.00,3844.24011,N,00908.43828,W,1,03,10.5,,,,,,", true,
         38 + 44.24011 / 60, -(9 + 8.43828 / 60), nan, POSITION_RECORD::MakeExtra(1, 3, 10.5)},
        {"no HDOP", "GPGGA,112257.00,3844.24011,N,00908.43828,W,1,03,,1.0,M,0.0,M,,", true,
         38 + 44.24011 / 60, -(9 + 8.43828 / 60), 1.0, 0xFFFF0301u},
        {"quality 0: no fix, no position", "GPGGA,102136.000,3340.8472,S,15117.3205,E,0,02,99.0,064.19,M,22.4,M,,", false, 0, 0, 0, 0},
        {"no coordinates", "GPGGA,053229.438,,,,,0,00,,,M,0.0,M,,0000", false, 0, 0, 0, 0},
    };
    for (const ROW& row : rows) {
        const DECODED out = Decode({row.body});
        EXPECT_EQ(out.counters.decoded, 1u) << row.legend;
        ASSERT_EQ(out.sink.positions.size(), row.position ? 1u : 0u) << row.legend;
        if (!row.position)
            continue;
        const POSITION_RECORD& p = out.sink.positions[0];
        EXPECT_EQ(p.geoValid, 1) << row.legend;
        EXPECT_EQ(p.xyzValid, 0) << row.legend;
        EXPECT_NEAR(p.lat, row.lat, 1e-11) << row.legend;
        EXPECT_NEAR(p.lon, row.lon, 1e-11) << row.legend;
        if (std::isnan(row.height)) {
            EXPECT_TRUE(std::isnan(p.height)) << row.legend;
        } else {
            EXPECT_NEAR(p.height, row.height, 1e-9) << row.legend;
        }
        EXPECT_EQ(p.geoExtra, row.extra) << row.legend;
    }
}

// ---------------------------------------------------------------- what is rejected

TEST(NmeaDecoder, BadSentencesAreCountedByKindAndDecodeNothing)
{
    enum Kind { BadChecksum, NoChecksum, Malformed, Ignored, NotSentence };
    struct ROW { const char* legend; std::string text; Kind kind; };
    const std::string gga = "GPGGA,131519.00,4153.85990,N,08738.63638,W,2,12,0.95,218.1,M,-33.8,M,,0000";
    std::string flipped = WithChecksum(gga);
    flipped[20] = '4';
    const ROW rows[] = {
        {"bad checksum", flipped, BadChecksum},
        {"no checksum", "$" + gga, NoChecksum},
        {"GGA cut to 8 fields, checksum recomputed", "GPGGA,131519.00,4153.85990,N,08738.63638,W,2,12,0.95", Malformed},
        {"GGA latitude with a letter", "GPGGA,131519.00,41x3.85990,N,08738.63638,W,2,12,0.95,218.1,M,-33.8,M,,0000", Malformed},
        {"GGA hemisphere missing", "GPGGA,131519.00,4153.85990,,08738.63638,W,2,12,0.95,218.1,M,-33.8,M,,0000", Malformed},
        {"GGA time 25 o'clock", "GPGGA,251519.00,4153.85990,N,08738.63638,W,2,12,0.95,218.1,M,-33.8,M,,0000", Malformed},
        {"checksum of one digit", "$GPGGA,1*6", Malformed},
        {"RMC date of 5 digits", "GPRMC,131519.00,A,4153.85990,N,08738.63638,W,0.048,,03021,,,D", Malformed},
        {"RMC month 13", "GPRMC,131519.00,A,4153.85990,N,08738.63638,W,0.048,,031316,,,D", Malformed},
        {"ZDA month 13", "GPZDA,131519.00,03,13,2016,00,00", Malformed},
        {"ZDA zone letters", "GPZDA,131519.00,03,02,2016,xx,00", Malformed},
        {"GSA satellite id with a letter", "GPGSA,A,3,2a,29,,,,,,,,,,,1.62,0.95,1.31", Malformed},
        {"GSV with no parts", "GPGSV,0,1,04,02,11,115,37", Malformed},
        {"GSV part beyond total", "GPGSV,2,3,04,02,11,115,37", Malformed},
        {"GSV block cut short", "GPGSV,1,1,01,02,11", Malformed},
        {"GSV elevation 91", "GPGSV,1,1,01,02,91,115,37", Malformed},
        {"GSV SNR 100", "GPGSV,1,1,01,02,11,115,100", Malformed},
        {"GSV signal id not hex", "GPGSV,1,1,01,02,11,115,37,G", Malformed},
        {"type nobody decodes", "GPTXT,01,01,02,ANTSTATUS=OK", Ignored},
        {"proprietary", "PTNTA,20160203131536,2,T4,000000066,+108,3,0,3", Ignored},
        {"proprietary named like a table type", "PGGA,1,2", Ignored},
        {"no '$'", "#GPZDA,131519.00,03,02,2016,00,00*6C", NotSentence},
    };
    for (const ROW& row : rows) {
        const DECODED out = Decode({row.text});
        const NMEA_COUNTERS& c = out.counters;
        EXPECT_EQ(c.decoded, 0u) << row.legend;
        EXPECT_EQ(c.badChecksum, row.kind == BadChecksum ? 1u : 0u) << row.legend;
        EXPECT_EQ(c.noChecksum, row.kind == NoChecksum ? 1u : 0u) << row.legend;
        EXPECT_EQ(c.malformed, row.kind == Malformed ? 1u : 0u) << row.legend;
        EXPECT_EQ(c.ignored, row.kind == Ignored ? 1u : 0u) << row.legend;
        EXPECT_EQ(c.notSentence, row.kind == NotSentence ? 1u : 0u) << row.legend;
        EXPECT_TRUE(out.sink.positions.empty() && out.sink.dateTimes.empty() && out.sink.satLists.empty()) << row.legend;
    }
}

TEST(NmeaDecoder, ABadSentenceInsideAGroupStallsNothing)
{
    std::string bad = WithChecksum("GPGSV,2,2,05,20,78,348,48");
    bad[12] = '9';
    const DECODED out = Decode({"GPGSV,2,1,05,02,11,115,37,05,34,060,48,07,00,023,,13,56,090,49", bad,
                                "GPGGA,131520.00,4153.85991,N,08738.63642,W,2,12,0.93,218.1,M,-33.8,M,,0000",
                                "GPGSV,1,1,01,02,11,115,37", "GPZDA,131521.00,03,02,2016,00,00"});
    EXPECT_EQ(out.counters.badChecksum, 1u);
    EXPECT_EQ(out.counters.brokenGroups, 1u) << "the group that lost its part 2";
    ASSERT_EQ(out.sink.satLists.size(), 1u);
    ASSERT_EQ(out.sink.satLists[0].size(), 1u) << "only the next, complete group";
    EXPECT_EQ(out.sink.positions.size(), 1u);
}

// ---------------------------------------------------------------- date and time

TEST(NmeaDecoder, DateTimeFromZdaAndFromRmcUntilTheFirstZda)
{
    const DECODED out = Decode({
        "GPRMC,005947.00,A,3715.6616,N,12157.6709,W,0.0,0.0,080710,,",
        "GPZDA,005947.00,08,07,2010,-05,30",
        "GPRMC,005948.00,A,3715.6616,N,12157.6709,W,0.0,0.0,080710,,",
        "GPZDA,112257.00,22,03,2012,,",
        "GPZDA,,,,,,",
    });
    EXPECT_EQ(out.counters.decoded, 5u);
    ASSERT_EQ(out.sink.dateTimes.size(), 3u) << "the second RMC is silent once ZDA is known; the empty ZDA says nothing";
    const DATETIME_RECORD& rmc = out.sink.dateTimes[0];
    EXPECT_EQ(rmc.year, 2010);
    EXPECT_EQ(rmc.month, 7);
    EXPECT_EQ(rmc.day, 8);
    EXPECT_EQ(rmc.hour, 0);
    EXPECT_EQ(rmc.minute, 59);
    EXPECT_EQ(rmc.second, 47);
    const DATETIME_RECORD& zda = out.sink.dateTimes[1];
    EXPECT_EQ(zda.year, 2010);
    EXPECT_EQ(zda.zoneHours, -5);
    EXPECT_EQ(zda.zoneMinutes, 30);
    const DATETIME_RECORD& noZone = out.sink.dateTimes[2];
    EXPECT_EQ(noZone.year, 2012);
    EXPECT_EQ(noZone.day, 22);
    EXPECT_EQ(noZone.zoneHours, 0);

    const DECODED old = Decode({"GPRMC,235959.999,V,,,,,,,311299,,,N"});
    ASSERT_EQ(old.sink.dateTimes.size(), 1u) << "no fix, but the receiver's clock is good";
    EXPECT_EQ(old.sink.dateTimes[0].year, 1999);
    EXPECT_EQ(old.sink.dateTimes[0].millisecond, 999);
}

// ---------------------------------------------------------------- satellites

TEST(NmeaDecoderSatellites, EveryTalkerLandsInOneListPerEpoch)
{
    const DECODED out = Decode({
        "GNGGA,010000.00,4552.65403,S,17030.00668,E,1,12,0.64,14.2,M,1.8,M,,",
        "GPGSV,1,1,03,05,06,110,19,40,30,200,41,195,50,100,30",
        "GLGSV,1,1,01,85,85,247,32",
        "GAGSV,1,1,01,36,76,149,45",
        "GBGSV,1,1,01,201,00,000,44",
        "BDGSV,1,1,01,13,17,036,43",
        "GQGSV,1,1,01,02,44,120,38",
        "QZGSV,1,1,01,193,34,332,",
        "GNGGA,010001.00,4552.65403,S,17030.00668,E,1,12,0.64,14.2,M,1.8,M,,",
    }, false);
    ASSERT_EQ(out.sink.satLists.size(), 1u) << "published when the time changes, not before";
    const SATLIST_RECORD& list = out.sink.satLists[0];
    struct ROW { const char* legend; int system, number, el, az, snr; };
    const ROW rows[] = {
        {"GP GPS", S::GPS, 5, 6, 110, 19},        {"GP SBAS 40", S::SBAS, 127, 30, 200, 41},
        {"GP QZSS 195", S::QZSS, 195, 50, 100, 30}, {"GL", S::GLO, 21, 85, 247, 32},
        {"GA", S::Galileo, 36, 76, 149, 45},      {"GB 201", S::BeiDou, 1, 0, 0, 44},
        {"BD", S::BeiDou, 13, 17, 36, 43},        {"GQ 02", S::QZSS, 194, 44, 120, 38},
        {"QZ 193 without SNR", S::QZSS, 193, 34, 332, 0},
    };
    EXPECT_EQ(list.size(), std::size(rows));
    for (const ROW& row : rows) {
        const S* s = Find(list, row.system, row.number);
        ASSERT_NE(s, nullptr) << row.legend;
        EXPECT_EQ(s->elevation, row.el) << row.legend;
        EXPECT_EQ(s->azimuth, row.az) << row.legend;
        EXPECT_EQ(s->snr, row.snr) << row.legend;
    }
}

TEST(NmeaDecoderSatellites, NavStatusFromTheGsaUsedSet)
{
    struct ROW { const char* legend; std::vector<std::string> gsa; int system, number, navStatus; };
    const std::string gsv = "GPGSV,1,1,03,07,10,100,40,12,20,200,35,70,30,300,";
    const std::string gsvGa = "GAGSV,1,1,01,07,40,062,35";
    const ROW rows[] = {
        {"listed in GSA: used", {"GPGSA,A,3,07,,,,,,,,,,,,1.5,1.3,1.0"}, S::GPS, 7, S::kNavUsed},
        {"tracked, not listed: not used", {"GPGSA,A,3,07,,,,,,,,,,,,1.5,1.3,1.0"}, S::GPS, 12, S::kNavNotUsed},
        {"no SNR, not listed: undefined", {"GPGSA,A,3,07,,,,,,,,,,,,1.5,1.3,1.0"}, S::GLO, 6, S::kNavUndefined},
        {"no SNR but listed: used", {"GNGSA,A,3,70,,,,,,,,,,,,1.5,1.3,1.0"}, S::GLO, 6, S::kNavUsed},
        {"system id 3 makes 07 Galileo", {"GNGSA,A,3,07,,,,,,,,,,,,1.5,1.3,1.0,3"}, S::Galileo, 7, S::kNavUsed},
        {"...and not GPS", {"GNGSA,A,3,07,,,,,,,,,,,,1.5,1.3,1.0,3"}, S::GPS, 7, S::kNavNotUsed},
        {"fix mode 1 uses nothing", {"GNGSA,A,1,07,12,,,,,,,,,,,99.0,99.0,99.0"}, S::GPS, 7, S::kNavNotUsed},
        {"a GSA run adds up",
         {"GNGSA,A,3,07,,,,,,,,,,,,1.5,1.3,1.0,1", "GNGSA,A,3,12,,,,,,,,,,,,1.5,1.3,1.0,1"}, S::GPS, 7, S::kNavUsed},
        {"a later run replaces the earlier one",
         {"GNGSA,A,3,07,,,,,,,,,,,,1.5,1.3,1.0,1", "GPZDA,000000.00,01,01,2020,00,00", "GNGSA,A,3,12,,,,,,,,,,,,1.5,1.3,1.0,1"},
         S::GPS, 7, S::kNavNotUsed},
    };
    for (const ROW& row : rows) {
        std::vector<std::string> lines = row.gsa;
        lines.push_back(gsv);
        lines.push_back(gsvGa);
        const DECODED out = Decode(lines);
        ASSERT_EQ(out.sink.satLists.size(), 1u) << row.legend;
        const S* s = Find(out.sink.satLists[0], row.system, row.number);
        ASSERT_NE(s, nullptr) << row.legend;
        EXPECT_EQ(s->navStatus, row.navStatus) << row.legend;
    }
}

TEST(NmeaDecoderSatellites, GsaAfterGsvInTheSameEpochStillCounts)
{
    // gpsdf.log sends GSA after the GSV groups.
    const DECODED out = Decode({"GPGGA,000145.00,4404.126998,N,12118.844143,W,1,15,0.4,1133.4,M,-20.1,M,,",
                                "GPGSV,1,1,01,28,78,315,33", "GPGSA,A,3,28,,,,,,,,,,,,1.7,1.0,1.4",
                                "GPGGA,000146.00,4404.126998,N,12118.844143,W,1,15,0.4,1133.4,M,-20.1,M,,"}, false);
    ASSERT_EQ(out.sink.satLists.size(), 1u);
    EXPECT_EQ(out.sink.satLists[0].at(0).navStatus, S::kNavUsed);
}

TEST(NmeaDecoderSatellites, GroupAssembly)
{
    struct ROW {
        const char* legend;
        std::vector<std::string> lines;
        std::size_t lists;
        std::size_t firstListSize;
        std::uint64_t broken;
    };
    const std::string p1 = "GPGSV,3,1,09,01,10,100,40,02,10,100,40,03,10,100,40,04,10,100,40";
    const std::string p2 = "GPGSV,3,2,09,05,10,100,40,06,10,100,40,07,10,100,40,08,10,100,40";
    const std::string p3 = "GPGSV,3,3,09,09,10,100,40";
    const std::string gl = "GLGSV,1,1,01,85,85,247,32";
    const std::string ptnta = "PTNTA,20160203131536,2,T4,000000066,+108,3,0,3";
    const ROW rows[] = {
        {"three parts in order", {p1, p2, p3}, 1, 9, 0},
        {"another talker and a proprietary sentence in between", {p1, gl, p2, ptnta, p3}, 1, 10, 0},
        {"part 2 lost", {p1, p3}, 0, 0, 1},
        {"orphaned parts 2 and 3 are one broken group", {p2, p3}, 0, 0, 1},
        {"two orphaned runs are two broken groups", {p2, p3, gl, p2, p3}, 1, 1, 2},
        {"part 1 again restarts the group", {p1, p2, p1, p2, p3}, 1, 9, 1},
        {"total changes mid-group", {p1, "GPGSV,2,2,05,05,10,100,40"}, 0, 0, 1},
        {"padding blocks without ids are skipped", {"QZGSV,1,1,01,193,34,332,,,,,,,,,,,,,"}, 1, 1, 0},
        {"a group of none", {"GPGSV,1,1,00"}, 1, 0, 0},
        {"the same group twice without a time between: two epochs", {gl, gl}, 2, 1, 0},
    };
    for (const ROW& row : rows) {
        const DECODED out = Decode(row.lines);
        EXPECT_EQ(out.counters.malformed, 0u) << row.legend;
        EXPECT_EQ(out.counters.brokenGroups, row.broken) << row.legend;
        ASSERT_EQ(out.sink.satLists.size(), row.lists) << row.legend;
        if (row.lists > 0) {
            EXPECT_EQ(out.sink.satLists[0].size(), row.firstListSize) << row.legend;
        }
    }
}

TEST(NmeaDecoderSatellites, SignalIds)
{
    const DECODED out = Decode({
        // ublox: the same satellites once per signal, each group with its id.
        "GPGSV,1,1,02,05,06,110,19,10,24,284,34,1",
        "GPGSV,1,1,02,05,06,110,,10,24,284,29,6",
        // quectel: only the last part carries a signal id, for its own satellites.
        "GLGSV,2,1,06,74,20,191,42,70,38,115,43,73,64,151,49,88,15,341,22",
        "GLGSV,2,2,06,74,,,27,70,32,310,16,8",
    });
    ASSERT_EQ(out.sink.satLists.size(), 1u);
    const SATLIST_RECORD& list = out.sink.satLists[0];
    EXPECT_EQ(list.size(), 10u);
    ASSERT_NE(Find(list, S::GPS, 10, 1), nullptr);
    EXPECT_EQ(Find(list, S::GPS, 10, 1)->snr, 34);
    ASSERT_NE(Find(list, S::GPS, 10, 6), nullptr);
    EXPECT_EQ(Find(list, S::GPS, 10, 6)->snr, 29);
    ASSERT_NE(Find(list, S::GLO, 10, 0), nullptr);
    ASSERT_NE(Find(list, S::GLO, 10, 8), nullptr);
    EXPECT_EQ(Find(list, S::GLO, 10, 8)->elevation, S::kUnknownElevation);
    EXPECT_EQ(Find(list, S::GLO, 10, 8)->azimuth, S::kUnknownAzimuth);
}

TEST(NmeaDecoderSatellites, FlushPublishesTheEpochInProgressOnce)
{
    RecordingSink sink;
    CNmeaDecoder decoder(sink);
    decoder.Decode(WithChecksum("GLGSV,1,1,01,85,85,247,32"));
    EXPECT_TRUE(sink.satLists.empty());
    decoder.Flush();
    decoder.Flush();
    EXPECT_EQ(sink.satLists.size(), 1u);
}

}  // namespace
}  // namespace devio
