// A cancelled listing over a pseudo-terminal at 115200 bit/s paced both ways, as a serial line
// is: the reader skips the rest of the listing and the command sent right after it is answered
// within its own time-out.
#include <gtest/gtest.h>

#include "SimLink.h"
#include "platform/basekit/CWinException.h"
#include "support/Completion.h"

using fenktest::SimLink;
using namespace devio;

namespace {

using fenktest::Completion;

// The command layer's default time-out at 115200 bit/s.
constexpr unsigned kDefaultTimeoutMs = 5695;

rcvsim::SimOptions Paced() {
    rcvsim::SimOptions options;
    options.throttle = true;
    return options;
}

TEST(LinkCancel, CancelMidListingThenTheNextCommandAnswersOverAPacedPty) {
    struct ROW {
        const char* legend;
        std::uint64_t cancelAfter;   // payload bytes of the listing seen before cancelling
    };
    const ROW rows[] = {
        {"right after the header", 1},
        {"a few kilobytes in", 4096},
    };
    for (const ROW& row : rows) {
        SimLink link(SimLink::Over::Pty, Paced());
        Completion listing, progress, model;
        listing.reply->SetProgressNotice(progress.notice);
        const CommandId id = link.receiver->IssueCommand(L"print,/par:on", true, listing.reply, listing.notice, 60000, true);
        for (int i = 0; i < 10000 && listing.reply->GetProgress().received < row.cancelAfter; ++i) {
            ASSERT_TRUE(progress.Wait(10000)) << row.legend << ": the listing streams in";
            progress.overlapped.Event().Reset();
        }
        EXPECT_GE(listing.reply->GetProgress().expected, 300u * 1024) << row.legend;
        link.receiver->Cancel(id);
        link.receiver->IssueCommand(L"print,rcv/model", true, model.reply, model.notice, kDefaultTimeoutMs, false);
        ASSERT_TRUE(model.Wait(30000)) << row.legend;
        const auto r = model.reply->Take();
        EXPECT_EQ(r.linkError, 0u) << row.legend << ": not stuck behind the listing";
        EXPECT_EQ(r.text, L"FNK-600") << row.legend;
        EXPECT_FALSE(listing.reply->IsDone()) << row.legend;
        const auto counters = link.receiver->Counters();
        EXPECT_EQ(counters.lexer.cancelledReplies, 1u) << row.legend;
        EXPECT_EQ(counters.lexer.droppedFrames, 0u) << row.legend;
        EXPECT_LT(link.receiver->GetLinkHealth().bytesIn, 200u * 1024) << row.legend << ": the rest never came";
    }
}

// The link to the simulator is dropped while a command waits: it fails at once, the state is
// Lost, and a new link to the same place works.
TEST(LinkCancel, LostLinkMidReadingAndReconnect) {
    SimLink link(SimLink::Over::Tcp);
    Completion event7, pending;
    link.receiver->Subscribe(event7.notice, kEventStateChanged);
    Completion first;   // one answer first, so the simulator surely holds the connection
    link.receiver->IssueCommand(L"print,rcv/model", true, first.reply, first.notice, kDefaultTimeoutMs, false);
    ASSERT_TRUE(first.Wait(30000));
    link.sim->SetFaults([] { rcvsim::FaultPlan p; p.latencyMs = 60000; return p; }());
    link.receiver->IssueCommand(L"print,rcv/model", true, pending.reply, pending.notice, 60000, false);
    link.sim->DropLinks();
    ASSERT_TRUE(pending.Wait(30000));
    EXPECT_EQ(pending.reply->Take().linkError, basekit::kErrorLinkLost);
    ASSERT_TRUE(event7.Wait(30000));
    EXPECT_EQ(link.receiver->GetLinkHealth().state, LinkState::Lost);
    link.sim->SetFaults({});
    const auto again = CReceiver::Open(link.receiver->GetAddress());
    Completion model;
    again->IssueCommand(L"print,rcv/model", true, model.reply, model.notice, kDefaultTimeoutMs, false);
    ASSERT_TRUE(model.Wait(30000));
    EXPECT_EQ(model.reply->Take().text, L"FNK-600");
}

}  // namespace
