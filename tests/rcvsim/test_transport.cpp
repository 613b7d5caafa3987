// The simulator's links: in-process socket pair, TCP on loopback and a pseudo-terminal,
// each a port of the receiver, with NMEA flowing between replies.
#include <arpa/inet.h>
#include <fcntl.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <termios.h>

#include <gtest/gtest.h>

#include <stdexcept>

#include "LinkClient.h"
#include "tools/rcvsim/RcvSim.h"

namespace rcvsim::test {
namespace {

int ConnectLoopback(int port) {
    const int fd = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in sa{};
    sa.sin_family = AF_INET;
    sa.sin_port = htons(static_cast<std::uint16_t>(port));
    sa.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    if (::connect(fd, reinterpret_cast<sockaddr*>(&sa), sizeof sa) != 0) {
        ::close(fd);
        return -1;
    }
    return fd;
}

int OpenPty(const std::string& path) {
    const int fd = ::open(path.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC);
    termios tio{};
    if (fd >= 0 && ::tcgetattr(fd, &tio) == 0) {
        ::cfmakeraw(&tio);
        ::tcsetattr(fd, TCSANOW, &tio);
    }
    return fd;
}

TEST(InProcessLink, AnswersAsDevSerAAndRestartsWithEvent7Only) {
    RcvSim sim;
    LinkClient c(sim.OpenInProcess());
    ASSERT_TRUE(c.Send("print,/cur/term"));
    const auto term = c.WaitReply("");
    ASSERT_TRUE(term) << "an untagged command gets an untagged reply";
    EXPECT_EQ(term->payload, "/dev/ser/a");
    ASSERT_TRUE(c.Send("%7%nonsense"));
    ASSERT_TRUE(c.WaitFor("@R7,-2,18:{2,,wrong command}*CAB4\r\n"));
    ASSERT_TRUE(c.Send("%3%set,reset,yes"));
    ASSERT_TRUE(c.WaitFor("@E7,0,0:*0000\r\n"));
    ASSERT_TRUE(c.Send("%4%print,rcv/sn"));
    ASSERT_TRUE(c.WaitReply("4"));
    EXPECT_FALSE(c.Saw("@R3,")) << "a restarting receiver does not answer";
}

TEST(TcpLink, EachConnectionIsTheNextTcpPortAndRepliesArriveWhileNmeaFlows) {
    RcvSim sim;
    const int port = sim.StartTcp("127.0.0.1", 0);
    LinkClient a(ConnectLoopback(port)), b(ConnectLoopback(port));
    ASSERT_GE(a.Fd(), 0);
    ASSERT_TRUE(a.Send("%1%print,/cur/term"));
    ASSERT_TRUE(b.Send("%1%print,/cur/term"));
    const auto ra = a.WaitReply("1"), rb = b.WaitReply("1");
    ASSERT_TRUE(ra && rb);
    EXPECT_NE(ra->payload, rb->payload);
    for (const auto& r : {ra, rb}) EXPECT_TRUE(r->payload == "/dev/tcp/a" || r->payload == "/dev/tcp/b") << r->payload;

    ASSERT_TRUE(a.Send("%2%em,/cur/term,/msg/nmea/GGA:{0.100000,0.000000,0,0x0}"));
    ASSERT_TRUE(a.WaitFor("$GNGGA,"));
    ASSERT_TRUE(a.Send("%3%print,rcv/model"));
    const auto model = a.WaitReply("3");
    ASSERT_TRUE(model);
    EXPECT_EQ(model->payload, "FNK-600");
    ASSERT_TRUE(b.Send("%4%print,rcv/sn"));
    ASSERT_TRUE(b.WaitReply("4"));
    EXPECT_FALSE(b.Saw("$GNGGA,")) << "output goes to the connection that asked";
}

TEST(TcpLink, RefusesToListenBeyondLoopback) {
    RcvSim sim;
    EXPECT_THROW(sim.StartTcp("0.0.0.0", 0), std::invalid_argument);
    EXPECT_THROW(sim.StartTcp("example.org", 0), std::invalid_argument);
    EXPECT_GT(sim.StartTcp("localhost", 0), 0);
}

TEST(PtyLink, ServesDevSerAAtTheConfiguredRateAndMayBeReopened) {
    SimOptions options;
    options.lineRate = 57600;
    RcvSim sim(options);
    const std::string path = sim.StartPty();
    ASSERT_EQ(path.rfind("/dev/pts/", 0), 0u) << path;
    {
        LinkClient first(OpenPty(path));
        ASSERT_TRUE(first.Send("%5%print,dev/ser/a/rate;print,/cur/term"));
        const auto r = first.WaitReply("5");
        ASSERT_TRUE(r);
        EXPECT_EQ(r->payload, "57600\n/dev/ser/a");
    }
    LinkClient second(OpenPty(path));
    ASSERT_TRUE(second.Send("%6%em,/cur/term,/msg/nmea/ZDA:{0.100000,0.000000,0,0x0}"));
    EXPECT_TRUE(second.WaitFor("$GNZDA,")) << "the host may close and reopen the device";
}

// The host aborts a reply: one still waiting behind another command, one delayed by latency,
// and one already streaming out at the line rate. Each ends with the cut mark and the command
// sent after the abort is answered.
TEST(AbortedReply, EndsWithTheCutMarkAndTheNextCommandIsAnswered) {
    struct ROW {
        const char* legend;
        const char* setup;      // a fault command first, or ""
        std::string commands;   // what the host sends before the abort
        const char* waitFor;    // what must have arrived before the host aborts
        bool replyBegun;        // some of reply 7 arrived before the cut
    };
    const ROW rows[] = {
        {"delayed by latency: never begun", "sim,latency,60000,rcv/sn", "%7%print,rcv/sn\r\n", "", false},
        {"streaming out at 115200 bit/s", "", "%7%print,/par:on\r\n", "@R7,0,", true},
    };
    for (const ROW& row : rows) {
        SimOptions options;
        options.throttle = true;
        RcvSim sim(options);
        LinkClient c(ConnectLoopback(sim.StartTcp("127.0.0.1", 0)));
        if (*row.setup) {
            ASSERT_TRUE(c.Send(std::string("%1%") + row.setup));
            ASSERT_TRUE(c.WaitReply("1")) << row.legend;
        }
        ASSERT_EQ(::write(c.Fd(), row.commands.data(), row.commands.size()), static_cast<ssize_t>(row.commands.size()));
        if (*row.waitFor) {
            ASSERT_TRUE(c.WaitFor(row.waitFor)) << row.legend;
        }
        ASSERT_TRUE(c.Send("\x18" "7")) << row.legend;
        ASSERT_TRUE(c.Send("%8%print,rcv/model")) << row.legend;
        const auto model = c.WaitReply("8", LinkClient::Ms(20000));
        ASSERT_TRUE(model) << row.legend << " saw: " << c.Seen().substr(0, 300);
        EXPECT_EQ(model->payload, "FNK-600") << row.legend;
        const std::string& seen = c.Seen();
        const auto mark = seen.find("@C7,0,0:*0000\r\n");
        ASSERT_NE(mark, std::string::npos) << row.legend;
        EXPECT_LT(mark, seen.find("@R8,")) << row.legend;
        EXPECT_EQ(seen.find("@R7,") != std::string::npos, row.replyBegun) << row.legend;
        EXPECT_LT(seen.size(), 64u * 1024) << row.legend << ": the 300 KB dump was not sent";
    }
}

}  // namespace
}  // namespace rcvsim::test
