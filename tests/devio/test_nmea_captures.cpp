// The shared receiver captures through the whole chain: golden counts and hand-read values.
#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <string>
#include <vector>

#include "devio/NmeaTestSupport.h"
#include "platform/devio/lexer/CStreamLexer.h"
#include "platform/devio/nmea/CLiveDataDecoder.h"

namespace devio {
namespace {

using test::RecordingSink;
using S = SATELLITE_RECORD;

struct CAPTURE_RESULT {
    RecordingSink sink;
    LIVEDATA_COUNTERS counters;
};

CAPTURE_RESULT DecodeCapture(const std::string& name, std::size_t chunk = 4096)
{
    const std::string bytes = test::ReadCapture(name);
    EXPECT_FALSE(bytes.empty()) << test::CapturePath(name) << " not found";
    CAPTURE_RESULT result;
    CLiveDataDecoder decoder(result.sink);
    decoder.SetCommentLines(true);
    for (std::size_t at = 0; at < bytes.size(); at += chunk)
        decoder.Feed(bytes.data() + at, std::min(chunk, bytes.size() - at));
    decoder.Finish();
    result.counters = decoder.Counters();
    return result;
}

const S* Find(const SATLIST_RECORD& list, int system, int number, int signal = -1)
{
    for (const S& s : list) {
        if (s.system == system && s.number == number && (signal < 0 || s.signalId == signal))
            return &s;
    }
    return nullptr;
}

// Counts checked against the capture text: sentences per type and checksum, epochs with a
// fix (one position each, whatever mix of GGA, GNS, RMC and GLL), ZDA/RMC dates, epochs
// holding a complete GSV group. telit-pls83-w sends two GGA and two RMC per epoch: 10 epochs.
TEST(NmeaCaptures, GoldenCounts)
{
    struct ROW {
        const char* capture;
        std::size_t positions, satLists, dateTimes;
        std::uint64_t decoded, ignored, badChecksum, noChecksum, tooLong, brokenGroups;
    };
    const ROW rows[] = {
        {"beidou-gb.log", 2, 5, 5, 63, 5, 0, 0, 0, 0},
        {"firefly-II.log", 23, 0, 24, 46, 0, 23, 0, 0, 0},
        {"furuno_gl_ga.log", 16, 16, 17, 192, 114, 0, 0, 0, 0},
        {"gpsdf.log", 51, 51, 51, 663, 792, 46, 0, 0, 0},
        {"isync.log", 12, 5, 12, 111, 23, 0, 0, 1, 7},
        {"nmea-rtk.log", 122, 0, 122, 244, 0, 0, 0, 0, 0},
        {"polarx2.log", 5, 5, 6, 65, 10, 0, 0, 0, 0},
        {"quectelLC79D.log", 30, 30, 30, 398, 254, 0, 0, 30, 0},
        {"sl869.log", 8, 15, 15, 165, 0, 0, 1, 0, 0},
        {"telit-pls83-w.log", 10, 9, 10, 225, 0, 0, 0, 0, 0},
        {"ublox-zed-f9p-nmea.log", 29, 29, 30, 986, 29, 0, 0, 0, 0},
    };
    ASSERT_EQ(std::size(rows), test::CaptureNames().size());
    for (const ROW& row : rows) {
        const CAPTURE_RESULT r = DecodeCapture(row.capture);
        const NMEA_COUNTERS& n = r.counters.nmea;
        EXPECT_EQ(r.sink.positions.size(), row.positions) << row.capture;
        EXPECT_EQ(r.sink.satLists.size(), row.satLists) << row.capture;
        EXPECT_EQ(r.sink.dateTimes.size(), row.dateTimes) << row.capture;
        EXPECT_EQ(n.decoded, row.decoded) << row.capture;
        EXPECT_EQ(n.ignored, row.ignored) << row.capture;
        EXPECT_EQ(n.badChecksum, row.badChecksum) << row.capture;
        EXPECT_EQ(n.noChecksum, row.noChecksum) << row.capture;
        EXPECT_EQ(r.counters.lexer.droppedSentences, row.tooLong) << row.capture;
        EXPECT_EQ(n.brokenGroups, row.brokenGroups) << row.capture;
        EXPECT_EQ(n.malformed, 0u) << row.capture;
        EXPECT_EQ(r.counters.lexer.frames + r.counters.lexer.droppedFrames, 0u) << row.capture;
        // The counters add up: every sentence the lexer cut lands in one decoder counter.
        EXPECT_EQ(n.decoded + n.ignored + n.badChecksum + n.noChecksum + n.malformed + n.notSentence,
                  r.counters.lexer.sentences) << row.capture;
    }
}

TEST(NmeaCaptures, ChunkSizeChangesNothing)
{
    for (const std::string& name : test::CaptureNames()) {
        const CAPTURE_RESULT whole = DecodeCapture(name, 1 << 20);
        const CAPTURE_RESULT bytewise = DecodeCapture(name, 1);
        const CAPTURE_RESULT odd = DecodeCapture(name, 77);
        for (const CAPTURE_RESULT* r : {&bytewise, &odd}) {
            EXPECT_EQ(r->sink.positions.size(), whole.sink.positions.size()) << name;
            EXPECT_EQ(r->sink.satLists.size(), whole.sink.satLists.size()) << name;
            EXPECT_EQ(r->counters.nmea.decoded, whole.counters.nmea.decoded) << name;
            EXPECT_EQ(r->counters.lexer.garbageBytes, whole.counters.lexer.garbageBytes) << name;
        }
    }
}

// ---------------------------------------------------------------- values read off the text

TEST(NmeaCaptures, UbloxF9p)
{
    const CAPTURE_RESULT r = DecodeCapture("ublox-zed-f9p-nmea.log");
    ASSERT_FALSE(r.sink.positions.empty());
    // $GNGGA,003956.00,4552.65403,S,17030.00668,E,1,12,0.64,14.2,M,1.8,M,,*56
    const POSITION_RECORD& p = r.sink.positions[0];
    EXPECT_NEAR(p.lat, -45.877567167, 1e-9);
    EXPECT_NEAR(p.lon, 170.500111333, 1e-9);
    EXPECT_NEAR(p.height, 16.0, 1e-9);
    EXPECT_EQ(p.geoExtra, POSITION_RECORD::MakeExtra(1, 12, 0.64));
    ASSERT_FALSE(r.sink.satLists.empty());
    const SATLIST_RECORD& list = r.sink.satLists[0];
    EXPECT_EQ(list.size(), 82u);
    struct ROW { const char* legend; int system, number, signal, el, az, snr, nav; };
    const ROW rows[] = {
        {"GPGSV 05,06,110,19 signal 1; not in GSA", S::GPS, 5, 1, 6, 110, 19, S::kNavNotUsed},
        {"GPGSV 13,37,124,29 signal 1; in GSA system 1", S::GPS, 13, 1, 37, 124, 29, S::kNavUsed},
        {"GPGSV 13 signal 6 without SNR; still used", S::GPS, 13, 6, 37, 124, 0, S::kNavUsed},
        {"GPGSV 24,07,045 no SNR, not used", S::GPS, 24, 1, 7, 45, 0, S::kNavUndefined},
        {"GLGSV 66,58,305,32; GSA system 2 lists 66", S::GLO, 2, 1, 58, 305, 32, S::kNavUsed},
        {"GLGSV 65,53,144 no SNR", S::GLO, 1, 1, 53, 144, 0, S::kNavUndefined},
    };
    for (const ROW& row : rows) {
        const S* s = Find(list, row.system, row.number, row.signal);
        ASSERT_NE(s, nullptr) << row.legend;
        EXPECT_EQ(s->elevation, row.el) << row.legend;
        EXPECT_EQ(s->azimuth, row.az) << row.legend;
        EXPECT_EQ(s->snr, row.snr) << row.legend;
        EXPECT_EQ(s->navStatus, row.nav) << row.legend;
    }
    // $GPZDA,003956.00,12,04,2019,00,00 comes after the first RMC, which speaks first.
    ASSERT_GE(r.sink.dateTimes.size(), 2u);
    EXPECT_EQ(r.sink.dateTimes[0].year, 2019);
    EXPECT_EQ(r.sink.dateTimes[0].month, 4);
    EXPECT_EQ(r.sink.dateTimes[0].day, 12);
    EXPECT_EQ(r.sink.dateTimes[1].minute, 39);
    EXPECT_EQ(r.sink.dateTimes[1].second, 56);
}

TEST(NmeaCaptures, GpsdfBadChecksumsAndSeparatedGsa)
{
    const CAPTURE_RESULT r = DecodeCapture("gpsdf.log");
    EXPECT_EQ(r.counters.nmea.badChecksum, 46u);
    // $GPGGA,000145.00,4404.126998,N,12118.844143,W,1,15,0.4,1133.4,M,-20.1,M,,*68
    const POSITION_RECORD& p = r.sink.positions.at(0);
    EXPECT_NEAR(p.lat, 44 + 4.126998 / 60, 1e-11);
    EXPECT_NEAR(p.lon, -(121 + 18.844143 / 60), 1e-11);
    EXPECT_NEAR(p.height, 1113.3, 1e-9);
    const SATLIST_RECORD& list = r.sink.satLists.at(0);
    EXPECT_EQ(list.size(), 17u);
    const S* g28 = Find(list, S::GPS, 28);
    ASSERT_NE(g28, nullptr);
    EXPECT_EQ(g28->navStatus, S::kNavUsed) << "GPGSA comes after the GSV groups";
    const S* r11 = Find(list, S::GLO, 11);  // GLGSV 75,58,331,35; GNGSA lists 75
    ASSERT_NE(r11, nullptr);
    EXPECT_EQ(r11->azimuth, 331);
    EXPECT_EQ(r11->navStatus, S::kNavUsed);
    const S* r12 = Find(list, S::GLO, 12);  // GLGSV 76,17,291, without SNR
    ASSERT_NE(r12, nullptr);
    EXPECT_EQ(r12->navStatus, S::kNavUndefined);
}

TEST(NmeaCaptures, FireflyBadGgaChecksums)
{
    const CAPTURE_RESULT r = DecodeCapture("firefly-II.log");
    EXPECT_EQ(r.counters.nmea.badChecksum, 23u);
    // Every GGA in this capture is damaged: each epoch's RMC gives a 2-D position instead.
    ASSERT_EQ(r.sink.positions.size(), 23u);
    for (const POSITION_RECORD& p : r.sink.positions) {
        EXPECT_EQ(p.source, POSITION_RECORD::SourceRmc);
        EXPECT_TRUE(std::isnan(p.height));
    }
    const DATETIME_RECORD& first = r.sink.dateTimes.at(0);  // $GPRMC,005947.00,...,080710
    EXPECT_EQ(first.year, 2010);
    EXPECT_EQ(first.month, 7);
    EXPECT_EQ(first.day, 8);
    EXPECT_EQ(first.minute, 59);
    EXPECT_EQ(first.second, 47);
}

TEST(NmeaCaptures, IsyncInjectedSentenceAndOrphanedTail)
{
    // The lexer alone: the sentence injected into a GSV comes out whole, the cut-off GSV head
    // is dropped, its tail on the next line is garbage.
    struct Sentences : ILexerSink {
        std::vector<std::string> all;
        void OnSentence(std::string_view s) override { all.emplace_back(s); }
    } sentences;
    CStreamLexer lexer(sentences);
    lexer.SetCommentLines(true);
    lexer.Feed(test::ReadCapture("isync.log"));
    lexer.Finish();
    const std::string injected = "$PTNTA,20160203131539,2,T4,000000066,+107,3,0,3*18";
    EXPECT_EQ(std::count(sentences.all.begin(), sentences.all.end(), injected), 1);
    for (const std::string& s : sentences.all) {
        EXPECT_EQ(s.find("0$PTNTA"), std::string::npos) << s;
        EXPECT_NE(s.rfind("5,34,060", 0), 0u) << s;
    }
    EXPECT_EQ(lexer.Counters().droppedSentences, 1u);

    const CAPTURE_RESULT r = DecodeCapture("isync.log");
    EXPECT_EQ(r.counters.nmea.brokenGroups, 7u);
    ASSERT_EQ(r.sink.satLists.size(), 5u);
    for (const SATLIST_RECORD& list : r.sink.satLists)
        EXPECT_EQ(list.size(), 15u) << "only complete groups of 15";
    const S* sbas = Find(r.sink.satLists[0], S::SBAS, 138);  // 51,38,208,43; GPGSA lists 51
    ASSERT_NE(sbas, nullptr);
    EXPECT_EQ(sbas->elevation, 38);
    EXPECT_EQ(sbas->navStatus, S::kNavUsed);
}

TEST(NmeaCaptures, SystemsOfTheOtherReceivers)
{
    struct ROW { const char* capture; const char* legend; int system, number, el, az, snr; };
    const ROW rows[] = {
        {"sl869.log", "QZGSV 193,34,332 under the QZ talker", S::QZSS, 193, 34, 332, 0},
        {"beidou-gb.log", "GBGSV 201,00,000,44", S::BeiDou, 1, 0, 0, 44},
        {"beidou-gb.log", "GBGSV 202,14,089,35", S::BeiDou, 2, 14, 89, 35},
        {"polarx2.log", "GPGSV 33,45,190 is SBAS PRN 120", S::SBAS, 120, 45, 190, 0},
        {"quectelLC79D.log", "QZGSV 02,05,042,29", S::QZSS, 194, 5, 42, 29},
        {"furuno_gl_ga.log", "GLGSV 85,85,247,32", S::GLO, 21, 85, 247, 32},
        {"furuno_gl_ga.log", "GAGSV 36,76,149,45", S::Galileo, 36, 76, 149, 45},
        {"telit-pls83-w.log", "BDGSV 08,09,030,39", S::BeiDou, 8, 9, 30, 39},
    };
    std::map<std::string, CAPTURE_RESULT> results;
    for (const ROW& row : rows) {
        if (results.count(row.capture) == 0)
            results.emplace(row.capture, DecodeCapture(row.capture));
        const CAPTURE_RESULT& r = results.at(row.capture);
        ASSERT_FALSE(r.sink.satLists.empty()) << row.capture;
        const S* s = Find(r.sink.satLists[0], row.system, row.number);
        ASSERT_NE(s, nullptr) << row.capture << ": " << row.legend;
        EXPECT_EQ(s->elevation, row.el) << row.legend;
        EXPECT_EQ(s->azimuth, row.az) << row.legend;
        EXPECT_EQ(s->snr, row.snr) << row.legend;
    }
    // GNGSA system 4 lists 208: BeiDou 8 in the 200 numbering, and so used.
    EXPECT_EQ(Find(results.at("telit-pls83-w.log").sink.satLists[0], S::BeiDou, 8)->navStatus, S::kNavUsed);
    // GNGSA system 3 lists 36: Galileo 36 is used.
    EXPECT_EQ(Find(results.at("furuno_gl_ga.log").sink.satLists[0], S::Galileo, 36)->navStatus, S::kNavUsed);
}

TEST(NmeaCaptures, PositionsOfTheOtherReceivers)
{
    const double nan = std::nan("");
    struct ROW { const char* capture; const char* legend; double lat, lon, height; unsigned quality; };
    const ROW rows[] = {
        {"polarx2.log", "GPGGA 3844.24011,N,00908.43828,W,1 without altitude", 38 + 44.24011 / 60, -(9 + 8.43828 / 60), nan, 1},

        {"nmea-rtk.log", "GNGGA 4134.49795459,N,09345.03431408,W,2 278.161 -31.442", 41 + 34.49795459 / 60,
         -(93 + 45.03431408 / 60), 246.719, 2},
        {"telit-pls83-w.log", "GPGGA 4333.190206,N,00127.618380,E,1 250.8 50.0", 43 + 33.190206 / 60,
         1 + 27.618380 / 60, 300.8, 1},
    };
    for (const ROW& row : rows) {
        const CAPTURE_RESULT r = DecodeCapture(row.capture);
        ASSERT_FALSE(r.sink.positions.empty()) << row.capture;
        const POSITION_RECORD& p = r.sink.positions[0];
        EXPECT_NEAR(p.lat, row.lat, 1e-11) << row.legend;
        EXPECT_NEAR(p.lon, row.lon, 1e-11) << row.legend;
        EXPECT_EQ(std::isnan(p.height), std::isnan(row.height)) << row.legend;
        if (!std::isnan(row.height)) {
            EXPECT_NEAR(p.height, row.height, 1e-9) << row.legend;
        }
        EXPECT_EQ(p.geoExtra & 0xFFu, row.quality) << row.legend;
    }
    // grep finds 18 GGA with quality 4 (RTK fixed) in nmea-rtk.log.
    const CAPTURE_RESULT rtk = DecodeCapture("nmea-rtk.log");
    EXPECT_EQ(std::count_if(rtk.sink.positions.begin(), rtk.sink.positions.end(),
                            [](const POSITION_RECORD& p) { return (p.geoExtra & 0xFFu) == 4; }),
              18);
}

}  // namespace
}  // namespace devio
