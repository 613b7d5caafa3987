// One position per epoch from any mix of GGA, GNS, RMC, GLL, VTG and GST; used satellites
// counted per satellite; GSA of older BeiDou receivers; proprietary GSV; line quirks; the
// EGM96 geoid separation.
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

RecordingSink DecodeLines(const std::vector<std::string>& bodies, NMEA_COUNTERS* counters = nullptr)
{
    RecordingSink sink;
    CNmeaDecoder decoder(sink);
    for (const std::string& body : bodies)
        decoder.Decode(WithChecksum(body));
    decoder.Flush();
    if (counters != nullptr)
        *counters = decoder.Counters();
    return sink;
}

const std::string kGga1 = "GPGGA,120000.00,4404.126998,N,12118.844143,W,1,15,0.4,1133.4,M,-20.1,M,,";
const std::string kGga2 = "GPGGA,120001.00,4404.127000,N,12118.844200,W,1,15,0.4,1133.5,M,-20.1,M,,";
const std::string kGll2 = "GPGLL,4404.127000,N,12118.844200,W,120001.00,A,A";
const std::string kRmc2 = "GPRMC,120001.00,A,4404.127000,N,12118.844200,W,1.944,45.0,010125,,,D";
const std::string kGst1 = "GPGST,120000.00,1.1,0.9,0.8,45.0,0.012,0.015,0.030";
const std::string kGst2 = "GPGST,120001.00,1.1,0.9,0.8,45.0,0.011,0.014,0.029";
const std::string kZda3 = "GPZDA,120002.00,01,01,2025,00,00";

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
        {"one GGA per system and a combined GNS: once the order is known, all satellites count",
         {"GPGGA,043539.00,4333.190206,N,00127.618380,E,1,05,1.3,250.8,M,50.0,M,,",
          "GAGGA,043539.00,4333.190206,N,00127.618380,E,1,01,1.3,250.8,M,50.0,M,,",
          "GNGNS,043539.00,4333.190206,N,00127.618380,E,AAAAN,14,1.3,250.8,50.0,,,V", "GPVTG,,T,1.7,M,0.0,N,0.0,K,A",
          "GPRMC,043539.00,A,4333.190206,N,00127.618380,E,0.0,,040925,1.7,W,A,V",
          "GPGGA,043540.00,4333.190206,N,00127.618380,E,1,05,1.3,250.8,M,50.0,M,,",
          "GAGGA,043540.00,4333.190206,N,00127.618380,E,1,01,1.3,250.8,M,50.0,M,,",
          "GNGNS,043540.00,4333.190206,N,00127.618380,E,AAAAN,14,1.3,250.8,50.0,,,V", "GPVTG,,T,1.7,M,0.0,N,0.0,K,A",
          "GPRMC,043540.00,A,4333.190206,N,00127.618380,E,0.0,,040925,1.7,W,A,V"},
         2, P::SourceGns, 300.8, 1, 14, nan, 0.0},
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
        EXPECT_EQ(std::isnan(p.height), std::isnan(row.height)) << row.legend;
        if (!std::isnan(row.height)) {
            EXPECT_NEAR(p.height, row.height, 1e-9) << row.legend;
        }
        EXPECT_EQ(p.geoExtra & 0xFFu, row.quality) << row.legend;
        EXPECT_EQ((p.geoExtra >> 8) & 0xFFu, row.used) << row.legend;
        EXPECT_EQ(std::isnan(p.sigmaLat), std::isnan(row.sigmaLat)) << row.legend;
        if (!std::isnan(row.sigmaLat)) {
            EXPECT_DOUBLE_EQ(p.sigmaLat, row.sigmaLat) << row.legend;
        }
        EXPECT_EQ(std::isnan(p.speed), std::isnan(row.speed)) << row.legend;
        if (!std::isnan(row.speed)) {
            EXPECT_NEAR(p.speed, row.speed, 1e-9) << row.legend;
        }
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
    // furuno_gl_ga: GNS counts 11 satellites, the same epoch's GGA claims DGPS with 00. The
    // epoch is held whichever sentence gives the coordinates (second epoch: order known).
    const RecordingSink furuno = DecodeLines(
        {"GNGNS,120213.000,5957.0062,N,01100.6429,E,NDD,11,1.3,168.9,39.5,,,V",
         "GNGGA,120213.000,5957.0062,N,01100.6429,E,2,00,1.3,168.9,M,39.5,M,,",
         "GNGNS,120214.000,5957.0062,N,01100.6429,E,NDD,11,1.3,168.9,39.5,,,V",
         "GNGGA,120214.000,5957.0062,N,01100.6429,E,2,00,1.3,168.9,M,39.5,M,,"});
    ASSERT_EQ(furuno.positions.size(), 2u);
    EXPECT_TRUE(furuno.positions[1].IsHeld());
}

TEST(NmeaEpochPosition, EpochTimeIsCarried)
{
    const RecordingSink sink = DecodeLines({kGga1});
    ASSERT_EQ(sink.positions.size(), 1u);
    EXPECT_EQ(sink.positions[0].timeOfDay, 12 * 3600 * 1000);
    EXPECT_DOUBLE_EQ(sink.positions[0].altitudeMsl, 1133.4);
    EXPECT_DOUBLE_EQ(sink.positions[0].geoidSeparation, -20.1);
}

// ---------------------------------------------------------------- satellites

const S* Find(const SATLIST_RECORD& list, int system, int number, int signal = -1)
{
    for (const S& s : list) {
        if (s.system == system && s.number == number && (signal < 0 || s.signalId == signal))
            return &s;
    }
    return nullptr;
}

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
        {"...and BeiDou its own", {"GPGSA,A,3,05,,,,,,,,,,,,1.5,1.3,1.0", gpgsv, "BDGSA,A,3,201,,,,,,,,,,,,1.5,1.3,1.0", bdgsv,
          kZda3}, S::BeiDou, 1, S::kNavUsed},
        {"a GSA of the same system later replaces the set",
         {"GPGSA,A,3,05,,,,,,,,,,,,1.5,1.3,1.0", "GPZDA,120001.00,01,01,2025,00,00", "GPGSA,A,3,07,,,,,,,,,,,,1.5,1.3,1.0",
          gpgsv, kZda3}, S::GPS, 5, S::kNavNotUsed},
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
        {"...its second satellite", "PQGSV,1,1,02,01,45,120,40,03,20,300,35", S::QZSS, 195},
        {"Galileo in 101+ numbering under GA", "GAGSV,1,1,01,102,28,167,40", S::Galileo, 2},
    };
    for (const ROW& row : rows) {
        NMEA_COUNTERS counters;
        const RecordingSink sink = DecodeLines({row.body, kZda3}, &counters);
        EXPECT_EQ(counters.ignored, 0u) << row.legend;
        ASSERT_EQ(sink.satLists.size(), 1u) << row.legend;
        EXPECT_NE(Find(sink.satLists[0], row.system, row.number), nullptr) << row.legend;
    }
}

// ---------------------------------------------------------------- line quirks

TEST(NmeaLineQuirks, NoSentenceIsLostAndTheCountersAddUp)
{
    const std::string gga = WithChecksum(kGga1);
    std::string lower = gga;
    for (std::size_t i = lower.size() - 2; i < lower.size(); ++i)
        lower[i] = static_cast<char>(std::tolower(static_cast<unsigned char>(lower[i])));
    struct ROW { const char* legend; std::string stream; };
    const ROW rows[] = {
        {"doubled '$'", "$" + gga + "\r\n"},
        {"NUL run before the line end", gga + std::string(5, '\0') + "\r\n"},
        {"NUL run between lines", std::string(7, '\0') + gga + "\r\n"},
        {"\\r\\r\\n line end", gga + "\r\r\n"},
        {"lower-case checksum digits", lower + "\r\n"},
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

TEST(NmeaGeoid, Egm96SeparationWhereTheReceiverGivesNone)
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
    // A GGA with its separation left empty: height = altitude + modelled separation.
    const RecordingSink sink = DecodeLines({"GPGGA,115033.00,0000.000000,N,00000.000000,E,1,20,0.4,246.0,M,,M,,"});
    ASSERT_EQ(sink.positions.size(), 1u);
    const P& p = sink.positions[0];
    EXPECT_TRUE(p.flags & P::kSeparationModelled);
    EXPECT_NEAR(p.height, 246.0 + 17.16, 0.5);
    EXPECT_DOUBLE_EQ(p.altitudeMsl, 246.0);
    // Given separations are taken as sent, and not marked.
    const RecordingSink given = DecodeLines({kGga1});
    EXPECT_FALSE(given.positions.at(0).flags & P::kSeparationModelled);
}

}  // namespace
}  // namespace devio
