// Pacing at the line rate: the computation only; measured throughput lives in a benchmark.
#include <gtest/gtest.h>

#include <sys/socket.h>

#include "LinkClient.h"
#include "RcvSimTestUtil.h"
#include "tools/rcvsim/Session.h"
#include "tools/rcvsim/SimArguments.h"
#include "tools/rcvsim/Throttle.h"

namespace rcvsim::test {
namespace {

using Ms = std::chrono::milliseconds;

struct LineRow {
    double rate;
    int bits;
    bool parity;
    int stops;
    double bytesPerSecond;
    const char* legend;
};
const LineRow kLines[] = {
    {115200, 8, false, 1, 11520, "8N1: ten bits a character"},
    {9600, 7, true, 2, 872.727, "7E2: eleven bits"},
    {921600, 8, true, 1, 83781.818, "8O1: eleven bits"},
};

TEST(Throttle, CharactersPerSecondOfALine) {
    for (const auto& row : kLines)
        EXPECT_NEAR(Throttle::BytesPerSecond(row.rate, row.bits, row.parity, row.stops), row.bytesPerSecond, 0.01)
            << row.legend;
}

TEST(Throttle, TheReceiverPacesEachPortByItsOwnSettings) {
    SimReceiver sim;
    EXPECT_DOUBLE_EQ(sim.rx.PortBytesPerSecond("dev/ser/a"), 11520);
    ASSERT_EQ(sim.Run("set,dev/ser/b/rate,9600;set,dev/ser/b/parity,even;set,dev/ser/b/bits,7;"
                      "set,dev/ser/b/stops,2").status, 0);
    EXPECT_NEAR(sim.rx.PortBytesPerSecond("dev/ser/b"), 872.727, 0.01);
    EXPECT_EQ(sim.rx.PortBytesPerSecond("cur/term"), 0);
}

TEST(Throttle, TokensAccrueAtTheRateUpToAShortBurst) {
    Throttle t;
    const auto t0 = Throttle::Clock::time_point{} + std::chrono::hours(1);
    t.SetRate(1000, t0);
    EXPECT_EQ(t.Allowance(t0), 0u);
    EXPECT_EQ(t.Wait(t0), Ms(1));
    EXPECT_EQ(t.Allowance(t0 + Ms(10)), 10u);
    t.Consume(10);
    EXPECT_EQ(t.Allowance(t0 + Ms(10)), 0u);
    EXPECT_EQ(t.Allowance(t0 + Ms(5000)), 20u) << "a burst of 20 ms at most";
    t.SetRate(0, t0 + Ms(5000));
    EXPECT_FALSE(t.Enabled());
    EXPECT_EQ(t.Allowance(t0 + Ms(5000)), static_cast<std::size_t>(-1));
}

TEST(Throttle, ASessionSwitchesToANewRateOfItsOwnPortAfterAnswering) {
    SimOptions options;
    options.throttle = true;
    auto clock = std::make_shared<ManualClock>();
    Receiver rx(options, clock);
    int fds[2];
    ASSERT_EQ(::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, fds), 0);
    LinkClient host(fds[1]);
    Session session(rx, UniqueFd(fds[0]), "dev/ser/a", true);
    session.Start();
    EXPECT_DOUBLE_EQ(session.LineBytesPerSecond(), 11520);
    ASSERT_TRUE(host.Send("%1%set,dev/ser/a/rate,9600"));
    ASSERT_TRUE(host.WaitReply("1"));
    // The session switches once the answer has left, with nothing to tell the host: wait on the
    // condition itself, bounded, reading the link meanwhile.
    EXPECT_TRUE(host.WaitUntil([&] { return session.LineBytesPerSecond() == 960; }));
}

struct ArgsRow {
    std::vector<std::string> args;
    bool ok;
    const char* legend;
};
const ArgsRow kArgs[] = {
    {{"--tcp", "127.0.0.1:0", "--pty", "--rate", "115200"}, true, "the usual line"},
    {{"--tcp", "localhost:4001", "--site", "55.75,37.62,150", "--latency", "200"}, true, "site and latency"},
    {{"--garbage", "100,32", "--drop-after", "5000", "--silence", "rcv/model"}, true, "faults"},
    {{"--tcp", "0.0.0.0:4001"}, false, "not loopback"},
    {{"--tcp", "127.0.0.1"}, false, "no port"},
    {{"--rate", "100000"}, false, "not a baud keyword"},
    {{"--site", "95,0,0"}, false, "latitude beyond the pole"},
    {{"--latency"}, false, "value missing"},
    {{"--frobnicate"}, false, "unknown option"},
};

TEST(Arguments, ParseTheCommandLineOrSayWhatIsWrong) {
    for (const auto& row : kArgs) {
        std::string error;
        const auto parsed = SimArguments::Parse(row.args, error);
        EXPECT_EQ(parsed.has_value(), row.ok) << row.legend << ": " << error;
        EXPECT_EQ(error.empty(), row.ok) << row.legend;
    }
    std::string error;
    const auto usual = SimArguments::Parse({"--tcp", "127.0.0.1:0", "--rate", "38400", "--site", "-33.5,-70.25,520"}, error);
    ASSERT_TRUE(usual);
    EXPECT_EQ(usual->options.lineRate, 38400);
    EXPECT_TRUE(usual->options.throttle) << "--rate switches pacing on";
    EXPECT_DOUBLE_EQ(usual->options.site.lonDeg, -70.25);
    ASSERT_EQ(usual->tcp.size(), 1u);
    EXPECT_EQ(usual->tcp[0].port, 0);
}

}  // namespace
}  // namespace rcvsim::test
