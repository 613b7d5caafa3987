// The simulated sky: counts, motion, NMEA sentences and their checksums.
#include <gtest/gtest.h>

#include <cstdio>
#include <map>
#include <sstream>

#include "RcvSimTestUtil.h"
#include "tools/rcvsim/Constellation.h"
#include "tools/rcvsim/Nmea.h"

namespace rcvsim::test {
namespace {

constexpr double kT0 = 1718359200.0;

std::vector<std::string> Lines(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);) lines.push_back(line);
    return lines;
}

// The fields of "$body*hh", split at commas.
std::vector<std::string> Fields(const std::string& line) {
    std::vector<std::string> f;
    std::stringstream body(line.substr(1, line.rfind('*') - 1));
    for (std::string field; std::getline(body, field, ',');) f.push_back(field);
    return f;
}

// "$body*hh\r": the exclusive-or of the body's bytes, worked out here rather than by Nmea.
bool ChecksumValid(const std::string& line) {
    const auto star = line.rfind('*');
    if (line.size() < 6 || line[0] != '$' || line.back() != '\r' || star + 4 != line.size()) return false;
    unsigned char x = 0;
    for (std::size_t i = 1; i < star; ++i) x ^= static_cast<unsigned char>(line[i]);
    char hex[3];
    std::snprintf(hex, sizeof hex, "%02X", x);
    return line.compare(star + 1, 2, hex) == 0;
}

int Count(const std::vector<SatView>& views, GnssSystem sys) {
    int n = 0;
    for (const auto& v : views) n += v.sat->system == sys ? 1 : 0;
    return n;
}

struct SiteRow {
    Geodetic site;
    const char* legend;
};
const SiteRow kMidLatitudes[] = {
    {{55.75, 37.62, 150}, "north, east"}, {{40.0, -105.0, 1600}, "north, west"},
    {{-35.3, 149.1, 600}, "south"},       {{47.0, 8.0, 500}, "alpine"},
};

TEST(Constellation, SixToFourteenGpsSatellitesAboveMidLatitudeSitesAllDay) {
    const Constellation sky;
    for (const auto& row : kMidLatitudes)
        for (double t = kT0; t < kT0 + 86400; t += 600) {
            const int gps = Count(sky.Visible(row.site, t, 0), GnssSystem::Gps);
            ASSERT_GE(gps, 6) << row.legend << " at " << t;
            ASSERT_LE(gps, 14) << row.legend << " at " << t;
        }
}

// The sky holds 120 satellites; from Moscow each system has some above the horizon.
TEST(Constellation, EverySystemIsPresentGpsMovesAndSbasStaysPut) {
    const Constellation sky;
    EXPECT_EQ(sky.Satellites().size(), 120u);
    const Geodetic site{55.75, 37.62, 150};
    const auto now = sky.Visible(site, kT0, 0), later = sky.Visible(site, kT0 + 300, 0);
    const struct { GnssSystem system; int atLeast; const char* legend; } kSeen[] = {
        {GnssSystem::Glonass, 4, "GLONASS"}, {GnssSystem::Sbas, 1, "SBAS"},
        {GnssSystem::Galileo, 4, "Galileo"}, {GnssSystem::BeiDou, 4, "BeiDou: orbiting and geostationary"},
    };
    for (const auto& row : kSeen) EXPECT_GE(Count(now, row.system), row.atLeast) << row.legend;
    int moved = 0;
    for (const auto& a : now)
        for (const auto& b : later) {
            if (b.sat != a.sat) continue;
            const double d = std::abs(a.elevation - b.elevation);
            if (a.sat->system == GnssSystem::Sbas) {
                EXPECT_NEAR(d, 0, 1e-6) << "geostationary";
            }
            if (a.sat->system != GnssSystem::Gps) continue;
            EXPECT_LT(d, 5.0) << "a GPS satellite moves under a degree a minute";
            moved += d > 0.05 ? 1 : 0;
        }
    EXPECT_GT(moved, 3);
}

TEST(Constellation, ASatelliteOverheadIsAtNinetyDegrees) {
    Satellite sat;
    sat.geostationary = true;
    sat.radius = 42164e3;
    sat.lonDeg = 20.0;
    const Look look = Geodesy::LookAt({0, 20.0, 0}, Constellation::Position(sat, kT0));
    EXPECT_NEAR(look.elevationDeg, 90.0, 1e-6);
    const Look east = Geodesy::LookAt({0, 10.0, 0}, Constellation::Position(sat, kT0));
    EXPECT_NEAR(east.azimuthDeg, 90.0, 0.5) << "seen from the west it stands in the east";
}

TEST(Nmea, EverySentenceHasAValidChecksumAndFitsTheLimit) {
    EXPECT_EQ(Nmea::Sentence("GPGLL,4916.45,N,12311.12,W,225444,A"), "$GPGLL,4916.45,N,12311.12,W,225444,A*31\r\n");
    SimReceiver sim;
    for (int i = 0; i < 30; ++i) {
        sim.clock->Advance(97);
        const Fix fix = sim.rx.CurrentFix();
        for (const auto& s : {Nmea::Gga(fix), Nmea::Rmc(fix), Nmea::Gsa(fix), Nmea::Gsv(fix), Nmea::Zda(fix),
                              Nmea::Gst(fix), Nmea::Vtg(fix), Nmea::Gll(fix)})
            for (const auto& line : Lines(s)) {
                EXPECT_TRUE(ChecksumValid(line)) << line;
                EXPECT_LE(line.size() + 1, 82u) << line;
            }
    }
}

TEST(Nmea, GsvGroupsAreConsistentAndListOnlySatellitesAboveTheHorizon) {
    SimReceiver sim;
    const Fix fix = sim.rx.CurrentFix();
    std::map<std::string, std::vector<std::vector<std::string>>> groups;
    for (const auto& line : Lines(Nmea::Gsv(fix))) {
        const auto f = Fields(line);
        groups[f[0].substr(0, 2)].push_back(f);
    }
    ASSERT_EQ(groups.size(), 5u) << "GP, GL, QZ, GA and GB from Moscow";
    int listed = 0;
    for (const auto& [talker, sentences] : groups) {
        const int total = std::stoi(sentences[0][1]), inView = std::stoi(sentences[0][3]);
        ASSERT_EQ(static_cast<int>(sentences.size()), total) << talker;
        int sats = 0;
        for (std::size_t i = 0; i < sentences.size(); ++i) {
            EXPECT_EQ(std::stoi(sentences[i][2]), static_cast<int>(i + 1)) << talker;
            EXPECT_EQ(std::stoi(sentences[i][3]), inView) << talker;
            for (std::size_t k = 4; k + 3 < sentences[i].size() + 1; k += 4) {
                ++sats;
                EXPECT_GT(std::stoi(sentences[i][k + 1]), 0) << "elevation above the horizon";
            }
        }
        EXPECT_EQ(sats, inView) << talker;
        listed += sats;
    }
    EXPECT_EQ(listed, static_cast<int>(fix.sats.size()));
}

TEST(Nmea, GsaListsExactlyTheSatellitesAboveThePositionMask) {
    SimReceiver sim;
    ASSERT_EQ(sim.Run("set,pos/elm,25").status, 0);
    const Fix fix = sim.rx.CurrentFix();
    int fields = 0, expected = 0;
    for (const auto& s : fix.sats)
        expected += s.elevation >= 25 && s.sat->system != GnssSystem::Sbas ? 1 : 0;
    for (const auto& line : Lines(Nmea::Gsa(fix))) {
        const auto f = Fields(line);
        ASSERT_EQ(f.size(), 19u) << line;
        for (int i = 3; i < 15; ++i) fields += f[i].empty() ? 0 : 1;
    }
    EXPECT_EQ(fields, expected);
    EXPECT_GT(expected, 3);
}

TEST(Nmea, GgaCarriesTheSiteAndTheFixQualityOfThePositionMode) {
    SimOptions options;
    options.site = {-33.5, -70.25, 520.0};
    SimReceiver sim(options);
    ASSERT_EQ(sim.Run("set,pos/mode/cur,pd").status, 0);
    const std::string gga = Nmea::Gga(sim.rx.CurrentFix());
    EXPECT_TRUE(Matches(gga, R"(\$GNGGA,100000\.00,33(30\.000|29\.999)\d\d,S,070(15\.000|14\.999)\d\d,W,4,\d\d,\d+\.\d,5(20\.0|19\.9)\d\d,M,.*\r\n)")) << gga;
}

}  // namespace
}  // namespace rcvsim::test
