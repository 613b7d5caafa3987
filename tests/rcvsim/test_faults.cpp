// Fault injection: slow replies, missing replies, garbage and dropped links, set from code
// and at run time with the simulator's own "sim," command.
#include <gtest/gtest.h>

#include <sys/socket.h>

#include "LinkClient.h"
#include "tools/rcvsim/RcvSim.h"
#include "tools/rcvsim/Session.h"

namespace rcvsim::test {
namespace {

using Ms = std::chrono::milliseconds;

TEST(Latency, DelaysTheReplyOnlyForTheGivenPath) {
    RcvSim sim;
    LinkClient c(sim.OpenInProcess());
    ASSERT_TRUE(c.Send("%1%sim,latency,600,rcv/model"));
    ASSERT_TRUE(c.WaitReply("1")) << "the sim command itself is never delayed";
    ASSERT_TRUE(c.Send("%2%print,rcv/sn"));
    ASSERT_TRUE(c.WaitReply("2"));
    ASSERT_TRUE(c.Send("%3%print,rcv/model"));
    EXPECT_FALSE(c.WaitReply("3", Ms(250))) << "held back for 600 ms";
    const auto late = c.WaitReply("3", Ms(5000));
    ASSERT_TRUE(late);
    EXPECT_EQ(late->payload, "FNK-600");
}

TEST(Latency, CommandsAreAnsweredInOrderBehindASlowOne) {
    SimOptions options;
    options.faults.latencyMs = 300;
    options.faults.latencyPath = "rcv/id";
    RcvSim sim(options);
    LinkClient c(sim.OpenInProcess());
    ASSERT_TRUE(c.Send("%1%print,rcv/id"));
    ASSERT_TRUE(c.Send("%2%print,rcv/sn"));
    ASSERT_TRUE(c.WaitReply("2"));
    const auto first = c.Seen().find("@R1,"), second = c.Seen().find("@R2,");
    ASSERT_NE(first, std::string::npos);
    EXPECT_LT(first, second) << "one command at a time, as a receiver works";
}

TEST(Silence, NoReplyForASilencedPathUntilLifted) {
    RcvSim sim;
    LinkClient c(sim.OpenInProcess());
    ASSERT_TRUE(c.Send("%1%sim,silence,rcv/model"));
    ASSERT_TRUE(c.WaitReply("1"));
    ASSERT_TRUE(c.Send("%2%print,rcv/model"));
    ASSERT_TRUE(c.Send("%3%print,rcv/sn"));
    ASSERT_TRUE(c.WaitReply("3")) << "other paths still answer";
    EXPECT_FALSE(c.WaitReply("2", Ms(300)));
    ASSERT_TRUE(c.Send("%4%sim,silence,off"));
    ASSERT_TRUE(c.Send("%5%print,rcv/model"));
    EXPECT_TRUE(c.WaitReply("5"));
    EXPECT_FALSE(c.WaitReply("2", Ms(50))) << "a silenced command is never answered later";
}

TEST(Silence, EverythingButTheSimulatorsOwnCommand) {
    SimOptions options;
    options.faults.silenceAll = true;
    RcvSim sim(options);
    LinkClient c(sim.OpenInProcess());
    ASSERT_TRUE(c.Send("%1%print,rcv/model"));
    ASSERT_TRUE(c.Send("%2%sim,faults"));
    const auto faults = c.WaitReply("2");
    ASSERT_TRUE(faults);
    EXPECT_NE(faults->payload.find("silence=all"), std::string::npos);
    EXPECT_FALSE(c.WaitReply("1", Ms(100)));
}

TEST(Garbage, BurstsArriveBetweenFramesAndRepliesStayIntact) {
    RcvSim sim;
    LinkClient c(sim.OpenInProcess());
    ASSERT_TRUE(c.Send("%1%sim,garbage,20,64"));
    ASSERT_TRUE(c.WaitReply("1"));
    for (int i = 0; i < 20; ++i) c.Pump(Ms(10));
    ASSERT_TRUE(c.Send("%2%print,rcv/model"));
    const auto r = c.WaitReply("2");
    ASSERT_TRUE(r);
    EXPECT_EQ(r->payload, "FNK-600");
    EXPECT_GT(c.Seen().size(), 64u * 3) << "several bursts arrived";
    const auto at = c.Seen().find("@R2,0,7:FNK-600*22A3\r\n");
    EXPECT_NE(at, std::string::npos) << "the frame is whole, garbage only around it";
}

TEST(DroppedLink, OnCommandTheAnswerComesThenTheLinkCloses) {
    RcvSim sim;
    LinkClient c(sim.OpenInProcess());
    ASSERT_TRUE(c.Send("%9%sim,drop"));
    ASSERT_TRUE(c.WaitReply("9"));
    EXPECT_TRUE(c.WaitClosed());
}

TEST(DroppedLink, NewConnectionsCloseAfterTheConfiguredTime) {
    RcvSim sim;
    FaultPlan plan;
    plan.dropAfterMs = 150;
    sim.SetFaults(plan);
    LinkClient c(sim.OpenInProcess());
    ASSERT_TRUE(c.Send("%1%print,rcv/sn"));
    ASSERT_TRUE(c.WaitReply("1"));
    EXPECT_TRUE(c.WaitClosed());
}

TEST(DroppedLink, AllLinksProgrammatically) {
    RcvSim sim;
    LinkClient a(sim.OpenInProcess()), b(sim.OpenInProcess());
    sim.DropLinks();
    EXPECT_TRUE(a.WaitClosed());
    EXPECT_TRUE(b.WaitClosed());
}

TEST(DroppedLink, APtyComesBackUnderANewPath) {
    RcvSim sim;
    std::mutex m;
    std::string announced;
    const std::string first = sim.StartPty([&](const std::string& p) {
        const std::lock_guard lock(m);
        announced = p;
    });
    {
        LinkClient c(::open(first.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC));
        ASSERT_TRUE(c.Send("%1%sim,drop"));
        ASSERT_TRUE(c.WaitReply("1"));
        EXPECT_TRUE(c.WaitClosed());
    }
    std::string second;
    for (int i = 0; i < 250 && second.empty(); ++i) {
        std::this_thread::sleep_for(Ms(20));
        const std::lock_guard lock(m);
        second = announced;
    }
    ASSERT_FALSE(second.empty());
    EXPECT_EQ(sim.PtyPath(), second);
    LinkClient again(::open(second.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC));
    ASSERT_TRUE(again.Send("%2%print,rcv/model"));
    EXPECT_TRUE(again.WaitReply("2"));
}

TEST(SimCommand, RejectsMalformedFaultSettings) {
    RcvSim sim;
    for (const char* bad : {"sim,latency", "sim,latency,-5", "sim,garbage,x", "sim,silence", "sim,warp,9"})
        EXPECT_EQ(sim.Core().Execute(bad, "dev/ser/a").status, -2) << bad;
}

}  // namespace
}  // namespace rcvsim::test
