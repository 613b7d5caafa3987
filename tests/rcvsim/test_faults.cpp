// Fault injection: slow replies, missing replies, garbage and dropped links, set from code
// and at run time with the simulator's own "sim," command. The receiver answers one command
// at a time, so a reply that has not come before a later one's never will.
#include <gtest/gtest.h>

#include <future>
#include <mutex>

#include "LinkClient.h"
#include "tools/rcvsim/RcvSim.h"

namespace rcvsim::test {
namespace {

TEST(Latency, ADelayedReplyStillComesAndInOrder) {
    RcvSim sim;
    LinkClient c(sim.OpenInProcess());
    ASSERT_TRUE(c.Send("%1%sim,latency,300,rcv/model"));
    ASSERT_TRUE(c.WaitReply("1")) << "the sim command itself is never delayed";
    ASSERT_TRUE(c.Send("%2%print,rcv/model"));
    ASSERT_TRUE(c.Send("%3%print,rcv/sn"));
    ASSERT_TRUE(c.WaitReply("3"));
    const auto late = c.WaitReply("2");
    ASSERT_TRUE(late);
    EXPECT_EQ(late->payload, "FNK-600");
    EXPECT_LT(c.Seen().find("@R2,"), c.Seen().find("@R3,")) << "one command at a time, as a receiver works";
}

TEST(Silence, NoReplyForASilencedPathUntilLifted) {
    RcvSim sim;
    LinkClient c(sim.OpenInProcess());
    ASSERT_TRUE(c.Send("%1%sim,silence,rcv/model"));
    ASSERT_TRUE(c.WaitReply("1"));
    ASSERT_TRUE(c.Send("%2%print,rcv/model"));
    ASSERT_TRUE(c.Send("%3%print,rcv/sn"));
    ASSERT_TRUE(c.WaitReply("3")) << "other paths still answer";
    ASSERT_TRUE(c.Send("%4%sim,silence,off"));
    ASSERT_TRUE(c.Send("%5%print,rcv/model"));
    EXPECT_TRUE(c.WaitReply("5"));
    EXPECT_FALSE(c.Saw("@R2,")) << "a silenced command is never answered, not even later";
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
    EXPECT_FALSE(c.Saw("@R1,"));
}

TEST(Garbage, BurstsArriveBetweenFramesAndRepliesStayIntact) {
    RcvSim sim;
    LinkClient c(sim.OpenInProcess());
    ASSERT_TRUE(c.Send("%1%sim,garbage,20,64"));
    ASSERT_TRUE(c.WaitReply("1"));
    ASSERT_TRUE(c.WaitUntil([&] { return c.Seen().size() > 64u * 3; })) << "several bursts arrive";
    ASSERT_TRUE(c.Send("%2%print,rcv/model"));
    ASSERT_TRUE(c.WaitReply("2"));
    EXPECT_TRUE(c.Saw("@R2,0,7:FNK-600*22A3\r\n")) << "the frame is whole, garbage only around it";
}

TEST(DroppedLink, ByCommandAfterTheAnswerByPlanAndProgrammatically) {
    RcvSim sim;
    LinkClient byCommand(sim.OpenInProcess());
    ASSERT_TRUE(byCommand.Send("%9%sim,drop"));
    ASSERT_TRUE(byCommand.WaitReply("9")) << "the answer comes first";
    EXPECT_TRUE(byCommand.WaitClosed());

    FaultPlan plan;
    plan.dropAfterMs = 150;
    sim.SetFaults(plan);
    LinkClient byPlan(sim.OpenInProcess());
    ASSERT_TRUE(byPlan.Send("%1%print,rcv/sn"));
    ASSERT_TRUE(byPlan.WaitReply("1"));
    EXPECT_TRUE(byPlan.WaitClosed()) << "new connections close after the configured time";

    sim.SetFaults({});
    LinkClient a(sim.OpenInProcess()), b(sim.OpenInProcess());
    sim.DropLinks();
    EXPECT_TRUE(a.WaitClosed());
    EXPECT_TRUE(b.WaitClosed());
}

TEST(DroppedLink, APtyComesBackUnderANewPath) {
    std::once_flag once;
    std::promise<std::string> reopened;
    RcvSim sim;
    const std::string first = sim.StartPty([&](const std::string& p) { std::call_once(once, [&] { reopened.set_value(p); }); });
    {
        LinkClient c(::open(first.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC));
        ASSERT_TRUE(c.Send("%1%sim,drop"));
        ASSERT_TRUE(c.WaitReply("1"));
        EXPECT_TRUE(c.WaitClosed());
    }
    auto announced = reopened.get_future();
    ASSERT_EQ(announced.wait_for(std::chrono::seconds(10)), std::future_status::ready);
    const std::string second = announced.get();
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
