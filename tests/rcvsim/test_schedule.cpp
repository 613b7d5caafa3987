// em/dm scheduling on a hand-stepped clock: period, phase and count are honoured per port.
#include <gtest/gtest.h>

#include <cmath>

#include "RcvSimTestUtil.h"

namespace rcvsim::test {
namespace {

struct Emission {
    double time;
    std::string port;
    std::string bytes;
};

// Steps the clock by `step` through the half-open window [now, now + seconds) and gathers
// what the receiver sends; an output due at the window's start is included.
std::vector<Emission> Collect(SimReceiver& sim, double seconds, double step = 0.25) {
    std::vector<Emission> out;
    const double end = sim.clock->Now() + seconds - step / 2;
    for (int i = 0; i < 100000 && sim.clock->Now() + step < end; ++i) {
        sim.clock->Advance(step);
        for (auto& o : sim.rx.Poll()) out.push_back({sim.clock->Now(), o.port, std::move(o.bytes)});
    }
    return out;
}

int CountOf(const std::vector<Emission>& out, const std::string& what, const std::string& port = "") {
    int n = 0;
    for (const auto& e : out)
        if (e.bytes.find(what) != std::string::npos && (port.empty() || e.port == port)) ++n;
    return n;
}

struct ScheduleRow {
    const char* em;
    double seconds;
    int expected;
    const char* legend;
    const char* sentence = "GNGGA";
    double step = 0.25;
};
const ScheduleRow kCounts[] = {
    {"em,/dev/ser/a,/msg/nmea/GGA:{1.000000,0.000000,3,0x0}", 10, 3, "count 3 stops after three"},
    {"em,/dev/ser/a,/msg/nmea/GGA:{1.000000,0.000000,0,0x0}", 10, 10, "count 0 runs on"},
    {"em,/dev/ser/a,/msg/nmea/GGA:{2.000000,0.000000,0,0x0}", 10, 5, "period 2"},
    {"em,/dev/ser/a,/msg/nmea/GGA:{0.500000,0.000000,0,0x0}", 5, 10, "period below a second"},
    {"em,/dev/ser/a,/msg/nmea/GGA:{0.000000,0.000000,0,0x0}", 5, 1, "no period: once"},
    {"em,/dev/ser/a,/msg/nmea/GGA", 10, 10, "default schedule from /msg/def"},
    {"em,/dev/ser/a,{/msg/nmea/GGA,/msg/nmea/ZDA}", 4, 4, "braced message list"},
    {"em,/dev/ser/a,/msg/nmea/GGA:{0.050000,0.000000,0,0x0}", 2, 40, "20 Hz positions", "GNGGA", 0.025},
    {"em,/dev/ser/a,/msg/nmea/GST", 3, 3, "error statistics", "GNGST"},
    {"em,/dev/ser/a,/msg/nmea/VTG", 3, 3, "course and speed", "GNVTG"},
    {"em,/dev/ser/a,/msg/nmea/GLL", 3, 3, "latitude and longitude", "GNGLL"},
};

TEST(Scheduling, CountAndPeriodAreHonoured) {
    for (const auto& row : kCounts) {
        SimReceiver sim;
        ASSERT_EQ(sim.Run(row.em).status, 0) << row.legend;
        EXPECT_EQ(CountOf(Collect(sim, row.seconds, row.step), row.sentence, "dev/ser/a"), row.expected) << row.legend;
    }
}

TEST(Scheduling, PhasePlacesOutputsWithinThePeriod) {
    SimReceiver sim;
    ASSERT_EQ(sim.Run("em,/dev/ser/a,/msg/nmea/ZDA:{2.000000,0.500000,0,0x0}").status, 0);
    const auto out = Collect(sim, 12);
    ASSERT_EQ(CountOf(out, "GNZDA"), 6);
    for (const auto& e : out)
        EXPECT_NEAR(std::fmod(e.time, 2.0), 0.5, 1e-6) << "emitted at " << e.time;
}

TEST(Scheduling, SentencesCarryTheInstantTheyWereDueNotThePollTime) {
    SimReceiver sim;
    ASSERT_EQ(sim.Run("em,/dev/ser/a,/msg/nmea/ZDA:{1.000000,0.000000,0,0x0}").status, 0);
    const auto out = Collect(sim, 5, 0.3);  // polls fall between the whole seconds
    ASSERT_EQ(CountOf(out, "GNZDA"), 5);
    for (const auto& e : out) EXPECT_TRUE(Matches(e.bytes, R"(\$GNZDA,\d{6}\.00,.*\r\n)")) << e.bytes;
}

TEST(Scheduling, OutputGoesOnlyToItsPortAndCurTermMeansTheSender) {
    SimReceiver sim;
    ASSERT_EQ(sim.Run("em,/cur/term,/msg/nmea/RMC", "dev/tcp/c").status, 0);
    ASSERT_EQ(sim.Run("em,/dev/ser/b,/msg/nmea/GGA").status, 0);
    const auto out = Collect(sim, 3);
    EXPECT_EQ(CountOf(out, "GNRMC", "dev/tcp/c"), 3);
    EXPECT_EQ(CountOf(out, "GNRMC"), 3);
    EXPECT_EQ(CountOf(out, "GNGGA", "dev/ser/b"), 3);
    ASSERT_EQ(sim.Run("em,/dev/tcp/c,/msg/nmea/GSV:{5.000000,1.000000,-1,0x9}").status, 0);
    EXPECT_EQ(sim.Print("out/dev/tcp/c:on"), "{/msg/nmea/RMC={1.00,0.00,0,0x0},/msg/nmea/GSV={5.00,1.00,-1,0x9}}")
        << "the port list as the dialog reads it";
    ASSERT_EQ(sim.Run("em,/dev/tcp/c,nmea/RMC:{2.000000,0.000000,0,0x0}").status, 0);
    EXPECT_EQ(sim.Print("out/dev/tcp/c:on"), "{/msg/nmea/RMC={2.00,0.00,0,0x0},/msg/nmea/GSV={5.00,1.00,-1,0x9}}")
        << "enabling again replaces the schedule in place";
}

TEST(Scheduling, DmStopsEverythingOrOneMessage) {
    SimReceiver sim;
    ASSERT_EQ(sim.Run("em,/dev/ser/a,/msg/nmea/GGA,/msg/nmea/ZDA").status, 0);
    ASSERT_EQ(sim.Run("dm,/dev/ser/a,/msg/nmea/GGA").status, 0);
    auto out = Collect(sim, 2);
    EXPECT_EQ(CountOf(out, "GNGGA"), 0);
    EXPECT_EQ(CountOf(out, "GNZDA"), 2);
    ASSERT_EQ(sim.Run("dm,/cur/term").status, 0);
    EXPECT_TRUE(Collect(sim, 2).empty());
}

TEST(Scheduling, MessagesToTheCurrentFileAreLoggedNotSent) {
    SimReceiver sim;
    const std::string file = sim.Print("/cur/file/a");
    const auto sizeBefore = std::stoll(sim.Print("/cur/file/a&size"));
    ASSERT_EQ(sim.Run("em,/cur/file/a,/msg/nmea/ZDA").status, 0);
    const auto out = Collect(sim, 3);
    EXPECT_EQ(CountOf(out, "GNZDA"), 0);
    EXPECT_NE(sim.Print("\"" + file + "\"&content").find("GNZDA"), std::string::npos);
    EXPECT_GT(std::stoll(sim.Print("/cur/file/a&size")), sizeBefore);
}

TEST(DataLink, FramesNameEveryCorrectionPortAndCountsGrow) {
    SimReceiver sim;
    ASSERT_EQ(sim.Run("set,dev/tcp/a/imode,rtcm;em,/dev/ser/a,/msg/fnk/DL").status, 0);
    const auto out = Collect(sim, 3);
    ASSERT_EQ(CountOf(out, "@MDL,0,"), 3);
    const std::string& last = out.back().bytes;
    const auto colon = last.find(':'), star = last.rfind('*');
    const std::string payload = last.substr(colon + 1, star - colon - 1);
    EXPECT_TRUE(Matches(payload, R"(2;C,T,\d+,\d+\.\d,\d+,\d+,\d+;E,R,\d+,\d+\.\d,\d+,\d+,\d+)")) << payload;
}

}  // namespace
}  // namespace rcvsim::test
