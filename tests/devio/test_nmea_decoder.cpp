// CNmeaDecoder: records from each sentence type, rejected sentences, GSV groups, GSA used sets,
// one position per epoch from any mix of GGA, GNS, RMC, GLL, VTG and GST, line quirks and the
// EGM96 geoid separation. Whole captures are checked against the nmeadump golden files.
#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <string>
#include <vector>

#include "devio/NmeaTestSupport.h"
#include "platform/devio/nmea/CGeoidModel.h"
#include "platform/devio/nmea/CLiveDataDecoder.h"
#include "platform/devio/nmea/CNmeaDecoder.h"

namespace devio {
namespace {

using test::RecordingSink;
using test::WithChecksum;
using P = POSITION_RECORD;
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

// Within tol of want, or NaN when want is NaN (a value the sentence did not give).
::testing::AssertionResult Near(double got, double want, double tol)
{
    if (std::isnan(want) ? std::isnan(got) : std::abs(got - want) <= tol)
        return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << got << " is not " << want;
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
    struct ROW { const char* legend; std::string body; bool position; double lat, lon, height; std::uint32_t extra; };
    const ROW rows[] = {
        {"negative separation, DGPS", "GPGGA,131519.00,4153.85990,N,08738.63638,W,2,12,0.95,218.1,M,-33.8,M,,0000", true,
         41 + 53.85990 / 60, -(87 + 38.63638 / 60), 184.3, POSITION_RECORD::MakeExtra(2, 12, 0.95)},
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
        EXPECT_TRUE(Near(p.height, row.height, 1e-9)) << row.legend;
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
        {"GGA time 25 o'clock", "GPGGA,251519.00,4153.85990,N,08738.63638,W,2,12,0.95,218.1,M,-33.8,M,,0000", Malformed},
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
        std::vector<std::uint64_t> expected(5, 0);
        expected[row.kind] = 1;
        EXPECT_EQ(std::vector<std::uint64_t>({c.badChecksum, c.noChecksum, c.malformed, c.ignored, c.notSentence}), expected) << row.legend;
        EXPECT_EQ(c.decoded, 0u) << row.legend;
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
    const DECODED old = Decode({"GPRMC,235959.999,V,,,,,,,311299,,,N"});
    ASSERT_EQ(old.sink.dateTimes.size(), 1u) << "no fix, but the receiver's clock is good";
    struct ROW { const char* legend; DATETIME_RECORD got; int year, month, day, hour, minute, second, ms, zoneH, zoneM; };
    const ROW rows[] = {
        {"RMC before any ZDA", out.sink.dateTimes[0], 2010, 7, 8, 0, 59, 47, 0, 0, 0},
        {"ZDA with its zone", out.sink.dateTimes[1], 2010, 7, 8, 0, 59, 47, 0, -5, 30},
        {"ZDA without zone", out.sink.dateTimes[2], 2012, 3, 22, 11, 22, 57, 0, 0, 0},
        {"RMC without fix, last century", old.sink.dateTimes[0], 1999, 12, 31, 23, 59, 59, 999, 0, 0},
    };
    for (const ROW& r : rows) {
        const DATETIME_RECORD& t = r.got;
        EXPECT_EQ(std::vector<int>({t.year, t.month, t.day, t.hour, t.minute, t.second, t.millisecond, t.zoneHours, t.zoneMinutes}),
                  std::vector<int>({r.year, r.month, r.day, r.hour, r.minute, r.second, r.ms, r.zoneH, r.zoneM})) << r.legend;
    }
}
// ---------------------------------------------------------------- satellites

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

// ---------------------------------------------------------------- epochs

const std::string kGga1 = "GPGGA,120000.00,4404.126998,N,12118.844143,W,1,15,0.4,1133.4,M,-20.1,M,,";
const std::string kGga2 = "GPGGA,120001.00,4404.127000,N,12118.844200,W,1,15,0.4,1133.5,M,-20.1,M,,";
const std::string kGll2 = "GPGLL,4404.127000,N,12118.844200,W,120001.00,A,A";
const std::string kRmc2 = "GPRMC,120001.00,A,4404.127000,N,12118.844200,W,1.944,45.0,010125,,,D";
const std::string kGst1 = "GPGST,120000.00,1.1,0.9,0.8,45.0,0.012,0.015,0.030";
const std::string kGst2 = "GPGST,120001.00,1.1,0.9,0.8,45.0,0.011,0.014,0.029";
const std::string kZda3 = "GPZDA,120002.00,01,01,2025,00,00";

RecordingSink DecodeLines(const std::vector<std::string>& bodies) { return Decode(bodies).sink; }

TEST(NmeaEpochPosition, OnePositionPerEpochWhateverTheMix)
{
    const double nan = std::nan("");
    struct ROW {
        const char* legend;
        std::vector<std::string> bodies;
        std::size_t positions;
        P::Source source;        // of the last position
        double height;           // of the last position; NaN for 2-D
        unsigned quality, used;
        double sigmaLat, speed;  // NaN when absent
    };
    const ROW rows[] = {
        {"GGA alone", {kGga1}, 1, P::SourceGga, 1113.3, 1, 15, nan, nan},
        {"GGA cut off by noise: the epoch's GLL reports it, 2-D", {kGga1, kGst1, kGll2, kGst2, kZda3}, 2, P::SourceGll, nan, 1, 0,
         0.011, nan},
        {"RMC without GGA: 2-D with speed, quality from mode D", {kGga1, kRmc2, kZda3}, 2, P::SourceRmc, nan, 2, 0, nan,
         1.944 * 1852 / 3600},
        {"RMC, GGA and GLL in one epoch: one record, from GGA, with RMC's speed",
         {kRmc2, kGga2, kGll2, kZda3}, 1, P::SourceGga, 1113.4, 1, 15, nan, 1.944 * 1852 / 3600},
        {"GST after GGA: learned from the first epoch, the second carries the errors",
         {kGga1, kGst1, kGga2, kGst2}, 2, P::SourceGga, 1113.4, 1, 15, 0.011, nan},
        {"GNS with an RTK-fixed system", {"GNGNS,043539.00,4333.190206,N,00127.618380,E,NRNN,09,0.9,250.8,50.0,,,V"}, 1,
         P::SourceGns, 300.8, 4, 9, nan, nan},
        {"VTG speed in km/h, VTG closing the epoch", {kGga1, "GPVTG,10.0,T,,M,5.4,N,10.0,K,A", kGga2, "GPVTG,10.0,T,,M,5.4,N,10.0,K,A"},
         2, P::SourceGga, 1113.4, 1, 15, nan, 10.0 / 3.6},
        {"no fix anywhere: RMC V, GLL V, GNS N, GGA 0",
         {"GPRMC,120001.00,V,4404.1,N,12118.8,W,,,010125,,,N", "GPGLL,4404.1,N,12118.8,W,120001.00,V,N",
          "GNGNS,120001.00,4404.1,N,12118.8,W,NN,00,,,,,,V", "GPGGA,120001.00,4404.1,N,12118.8,W,0,00,,,M,,M,,"},
         0, P::SourceNone, nan, 0, 0, nan, nan},
    };
    for (const ROW& row : rows) {
        const RecordingSink sink = DecodeLines(row.bodies);
        ASSERT_EQ(sink.positions.size(), row.positions) << row.legend;
        if (row.positions == 0)
            continue;
        const P& p = sink.positions.back();
        EXPECT_EQ(p.source, row.source) << row.legend;
        EXPECT_TRUE(Near(p.height, row.height, 1e-9)) << row.legend;
        EXPECT_EQ(p.geoExtra & 0xFFu, row.quality) << row.legend;
        EXPECT_EQ((p.geoExtra >> 8) & 0xFFu, row.used) << row.legend;
        EXPECT_TRUE(Near(p.sigmaLat, row.sigmaLat, 1e-12)) << row.legend;
        EXPECT_TRUE(Near(p.speed, row.speed, 1e-9)) << row.legend;
        EXPECT_FALSE(p.IsHeld()) << row.legend;
    }
}

TEST(NmeaEpochPosition, FixClaimedWithNoSatelliteIsHeld)
{
    struct ROW { const char* legend; std::string body; bool held; };
    const ROW rows[] = {
        {"DGPS quality with 00 used", "GNGGA,120213.000,5957.0062,N,01100.6429,E,2,00,1.3,168.9,M,39.5,M,,", true},
        {"GNS mode A with 00 used", "GNGNS,120213.000,5957.0062,N,01100.6429,E,AN,00,1.3,168.9,39.5,,,V", true},
        {"same fix with 07 used", "GNGGA,120213.000,5957.0062,N,01100.6429,E,2,07,1.3,168.9,M,39.5,M,,", false},
        {"RMC gives no count: not held", "GPRMC,120213.000,A,5957.0062,N,01100.6429,E,0.0,,010125,,,A", false},
    };
    for (const ROW& row : rows) {
        const RecordingSink sink = DecodeLines({row.body});
        ASSERT_EQ(sink.positions.size(), 1u) << row.legend;
        EXPECT_EQ(sink.positions[0].IsHeld(), row.held) << row.legend;
    }
}

// GSA's dilutions stand until an epoch passes without a GSA; the age comes with the fix.
TEST(NmeaEpochPosition, DilutionsAndCorrectionAge)
{
    const double nan = std::nan("");
    const std::string gsa = "GPGSA,A,3,01,02,03,,,,,,,,,,1.8,0.9,1.5";
    const std::string gga3 = "GPGGA,120002.00,4404.127000,N,12118.844200,W,1,15,0.4,1133.5,M,-20.1,M,,";
    struct ROW { const char* legend; std::vector<std::string> bodies; double pdop, vdop, age; };
    const ROW rows[] = {
        {"GGA alone", {kGga1}, nan, nan, nan},
        {"GSA before GGA", {gsa, kGga1}, 1.8, 1.5, nan},
        {"GSA after GGA: the next epoch carries it", {kGga1, gsa, kGga2}, 1.8, 1.5, nan},
        {"an epoch without GSA clears it", {kGga1, gsa, kGga2, gga3}, nan, nan, nan},
        {"GSA with no fix gives none", {"GPGSA,A,1,,,,,,,,,,,,,99.9,99.9,99.9", kGga1}, nan, nan, nan},
        {"GGA with an age of corrections", {"GPGGA,120000.00,4404.1,N,12118.8,W,4,15,0.4,1133.4,M,-20.1,M,2.4,0031"}, nan, nan, 2.4},
        {"GNS with an age of corrections", {"GNGNS,043539.00,4333.19,N,00127.61,E,RR,14,1.3,250.8,50.0,1.0,0031,V"}, nan, nan, 1.0},
        {"an age that does not parse costs nothing else", {"GPGGA,120000.00,4404.1,N,12118.8,W,2,15,0.4,1133.4,M,-20.1,M,x,0031"}, nan, nan, nan},
    };
    for (const ROW& row : rows) {
        const RecordingSink sink = DecodeLines(row.bodies);
        ASSERT_FALSE(sink.positions.empty()) << row.legend;
        const P& p = sink.positions.back();
        EXPECT_TRUE(Near(p.pdop, row.pdop, 1e-12)) << row.legend;
        EXPECT_TRUE(Near(p.vdop, row.vdop, 1e-12)) << row.legend;
        EXPECT_TRUE(Near(p.correctionAge, row.age, 1e-12)) << row.legend;
    }
}

// ---------------------------------------------------------------- satellites

TEST(NmeaEpochSatellites, UsedSatellitesCountedOncePerSatellite)
{
    struct ROW { const char* legend; std::vector<std::string> bodies; std::size_t rows, used; };
    const ROW rows[] = {
        {"GPS 13 and 15 on L1 (1) and L5 (7), both used",
         {"GPGSA,A,3,13,15,,,,,,,,,,,1.5,1.3,1.0,1", "GPGSV,1,1,02,13,37,124,29,15,20,200,33,1",
          "GPGSV,1,1,02,13,37,124,40,15,20,200,41,7", kZda3},
         4, 2},
        {"one signal each", {"GPGSA,A,3,13,,,,,,,,,,,,1.5,1.3,1.0,1", "GPGSV,1,1,02,13,37,124,29,15,20,200,33,1", kZda3}, 2, 1},
    };
    for (const ROW& row : rows) {
        const RecordingSink sink = DecodeLines(row.bodies);
        ASSERT_EQ(sink.satLists.size(), 1u) << row.legend;
        EXPECT_EQ(sink.satLists[0].size(), row.rows) << row.legend;
        EXPECT_EQ(CountUsedSatellites(sink.satLists[0]), row.used) << row.legend;
    }
}

TEST(NmeaEpochSatellites, UsedSetsOfOlderAndMixedReceivers)
{
    const std::string bdgsv = "BDGSV,1,1,02,201,40,100,44,213,30,200,38";
    const std::string gpgsv = "GPGSV,1,1,02,05,40,100,44,07,30,200,38";
    struct ROW { const char* legend; std::vector<std::string> bodies; int system, number; std::uint8_t nav; };
    const ROW rows[] = {
        {"BD talker, 201+ numbering", {"BDGSA,A,3,201,213,,,,,,,,,,,1.5,1.3,1.0", bdgsv, kZda3}, S::BeiDou, 13, S::kNavUsed},
        {"BD GSA listing more than 12 ids",
         {"BDGSA,A,3,201,202,203,204,205,206,207,208,209,210,211,212,213,,1.5,1.3,1.0", bdgsv, kZda3}, S::BeiDou, 13,
          S::kNavUsed},
        {"GPS and BeiDou GSA apart in the epoch: GPS keeps its marks",
         {"GPGSA,A,3,05,,,,,,,,,,,,1.5,1.3,1.0", gpgsv, "BDGSA,A,3,201,,,,,,,,,,,,1.5,1.3,1.0", bdgsv, kZda3}, S::GPS, 5,
          S::kNavUsed},
    };
    for (const ROW& row : rows) {
        const RecordingSink sink = DecodeLines(row.bodies);
        ASSERT_FALSE(sink.satLists.empty()) << row.legend;
        const S* s = Find(sink.satLists.back(), row.system, row.number);
        ASSERT_NE(s, nullptr) << row.legend;
        EXPECT_EQ(s->navStatus, row.nav) << row.legend;
    }
}

TEST(NmeaEpochSatellites, ProprietaryGsvAndOtherNumberings)
{
    struct ROW { const char* legend; std::string body; int system, number; };
    const ROW rows[] = {
        {"QZSS in a proprietary GSV", "PQGSV,1,1,02,01,45,120,40,03,20,300,35", S::QZSS, 193},
        {"Galileo in 101+ numbering under GA", "GAGSV,1,1,01,102,28,167,40", S::Galileo, 2},
    };
    for (const ROW& row : rows) {
        const DECODED out = Decode({row.body, kZda3});
        EXPECT_EQ(out.counters.ignored, 0u) << row.legend;
        ASSERT_EQ(out.sink.satLists.size(), 1u) << row.legend;
        EXPECT_NE(Find(out.sink.satLists[0], row.system, row.number), nullptr) << row.legend;
    }
}

// ---------------------------------------------------------------- line quirks

TEST(NmeaLineQuirks, NoSentenceIsLostAndTheCountersAddUp)
{
    const std::string gga = WithChecksum(kGga1);
    struct ROW { const char* legend; std::string stream; };
    const ROW rows[] = {
        {"NUL run before the line end", gga + std::string(5, '\0') + "\r\n"},
        {"NUL run between lines", std::string(7, '\0') + gga + "\r\n"},
    };
    for (const ROW& row : rows) {
        RecordingSink sink;
        CLiveDataDecoder decoder(sink);
        decoder.Feed(row.stream);
        decoder.Finish();
        const LIVEDATA_COUNTERS c = decoder.Counters();
        EXPECT_EQ(c.nmea.decoded, 1u) << row.legend;
        EXPECT_EQ(c.lexer.droppedSentences, 0u) << row.legend;
        EXPECT_EQ(c.lexer.sentences, 1u) << row.legend;
        EXPECT_EQ(sink.positions.size(), 1u) << row.legend;
    }
}

// ---------------------------------------------------------------- geoid

// The grid comes with Debian's proj-data; without the package the model cannot be checked.
bool GridInstalled()
{
    return std::filesystem::exists("/usr/share/proj/egm96_15.gtx")
        || std::filesystem::exists("/usr/share/proj/us_nga_egm96_15.tif");
}

TEST(NmeaGeoid, Egm96SeparationsAtPublishedPlaces)
{
    if (!GridInstalled())
        GTEST_SKIP() << "proj-data (EGM96 grid egm96_15) is not installed: scripts/setup-deps.sh installs it";
    CGeoidModel model;
    ASSERT_TRUE(model.Available()) << "the grid is installed but PROJ could not open it";
    // Published EGM96 geoid heights; the signs tell the direction of the shift.
    struct ROW { const char* legend; double lat, lon, separation; };
    const ROW rows[] = {
        {"0N 0E, Gulf of Guinea", 0, 0, 17.16},
        {"Indian Ocean low", 4.5, 78.75, -106.5},
        {"New Guinea high", -5.0, 147.5, 75.0},
    };
    for (const ROW& row : rows) {
        double n = 0;
        ASSERT_TRUE(model.Separation(row.lat, row.lon, n)) << row.legend;
        EXPECT_NEAR(n, row.separation, 2.5) << row.legend;
    }
}

}  // namespace
}  // namespace devio
