// The receiver object over real descriptors. The peer is the test itself, writing frames as
// the wire protocol document describes them.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <stdlib.h>
#include <sys/socket.h>
#include <unistd.h>

#include <chrono>
#include <thread>

#include "platform/basekit/CWinException.h"
#include "platform/devio/CLinkFactory.h"
#include "platform/devio/CPortAddr.h"
#include "platform/devio/CReceiver.h"
#include "platform/devio/lexer/CStreamLexer.h"
#include "NmeaTestSupport.h"
#include "support/Completion.h"

using namespace devio;
using namespace std::chrono_literals;
using devio::test::WithChecksum;

namespace {

using fenktest::Completion;

// A receiver on one end of a socket pair; the test holds the other end.
struct Pair {
    int peer = -1;
    CSmartPtr<CReceiver> rx;
    Pair() {
        int fds[2];
        EXPECT_EQ(::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, fds), 0);
        ::fcntl(fds[0], F_SETFL, O_NONBLOCK);
        peer = fds[1];
        rx = CSmartPtr<CReceiver>(new CReceiver(std::make_unique<CLink>(IPortAddr::Parse(L"sim:"), fds[0])));
    }
    ~Pair() {
        rx.Reset();
        if (peer >= 0) ::close(peer);
    }
    void Send(const std::string& bytes) const {
        size_t done = 0;
        while (done < bytes.size()) {
            const ssize_t n = ::write(peer, bytes.data() + done, bytes.size() - done);
            if (n > 0) done += static_cast<size_t>(n);
            else if (n < 0 && errno != EAGAIN && errno != EINTR) return;
        }
    }
    // Reads one command line the receiver object wrote; returns "" on time-out.
    std::string ReadLine(int timeoutMs = 5000) const {
        std::string line;
        char c = 0;
        while (line.empty() || line.back() != '\n') {
            pollfd p{peer, POLLIN, 0};
            if (::poll(&p, 1, timeoutMs) != 1 || ::read(peer, &c, 1) != 1) return "";
            line += c;
        }
        return line;
    }
};

std::string Reply(const std::string& tag, int status, const std::string& payload) {
    return CStreamLexer::EncodeFrame('R', tag, status, payload);
}

TEST(ReceiverLink, RepliesAreMatchedByTagWhileNmeaFlows) {
    Pair p;
    Completion first, second;
    const auto a = p.rx->IssueCommand(L"print,rcv/model", true, first.reply, first.notice, 5000, false);
    const auto b = p.rx->IssueCommand(L"print,rcv/sn", true, second.reply, second.notice, 5000, false);
    EXPECT_EQ(p.ReadLine(), "%" + std::to_string(a) + "%print,rcv/model\r\n");
    EXPECT_EQ(p.ReadLine(), "%" + std::to_string(b) + "%print,rcv/sn\r\n");
    // Answers out of order, with NMEA and a stale reply in between.
    p.Send("$GPZDA,120000.00,22,11,2026,00,00*6A\r\n" + Reply(std::to_string(b), 0, "SN 0042") +
           "$GPGGA,bad*00\r\n" + Reply("999", 0, "stale") + Reply(std::to_string(a), 0, "FNK-600"));
    ASSERT_TRUE(first.Wait(5000));
    ASSERT_TRUE(second.Wait(5000));
    EXPECT_EQ(first.reply->Take().text, L"FNK-600");
    EXPECT_EQ(second.reply->Take().text, L"SN 0042");
    EXPECT_EQ(p.rx->Counters().orphanReplies, 1u);
    EXPECT_EQ(p.rx->PendingCount(), 0u);
}

// What the host's status bar adds up: every sentence line is decoded, ignored or bad, and the
// lexer's and the decoder's counts agree.
TEST(ReceiverLink, SentenceCountersAddUp) {
    struct Row {
        const char* legend;
        std::string line;
        std::uint64_t decoded, ignored, bad;
    };
    const Row rows[] = {
        {"a decoded sentence", WithChecksum("GPZDA,120000.00,22,11,2026,00,00"), 1, 0, 0},
        {"a proprietary sentence", WithChecksum("PFNK,1,2,3"), 0, 1, 0},
        {"a proprietary sentence of 132 characters", WithChecksum("PFNK," + std::string(123, '7')), 0, 1, 0},
        {"a type the decoder lacks", WithChecksum("GPTXT,01,01,02,ANTENNA OK"), 0, 1, 0},
        {"a bad checksum", "$GPGGA,bad*00", 0, 0, 1},
        {"a standard line of 121 characters", WithChecksum("GPTXT," + std::string(111, '7')), 0, 0, 1},
    };
    for (const auto& row : rows) {
        Pair p;
        Completion c;
        const auto id = p.rx->IssueCommand(L"print,x", true, c.reply, c.notice, 5000, false);
        p.ReadLine();
        // The reply comes behind the line, and whoever wakes on it sees the counters before it.
        p.Send(row.line + "\r\n" + Reply(std::to_string(id), 0, "ok"));
        ASSERT_TRUE(c.Wait(5000)) << row.legend;
        const LINK_HEALTH h = p.rx->GetLinkHealth();
        EXPECT_EQ(h.decodedSentences, row.decoded) << row.legend;
        EXPECT_EQ(h.ignoredSentences, row.ignored) << row.legend;
        EXPECT_EQ(h.badSentences, row.bad) << row.legend;
        const LIVE_STREAM_COUNTERS n = p.rx->Counters();
        EXPECT_EQ(n.lexer.sentences, n.sentencesDecoded + n.sentencesIgnored + n.sentencesRejected) << row.legend;
    }
}

TEST(ReceiverLink, ErrorRepliesCarryTheirStatusAndText) {
    Pair p;
    Completion c;
    const auto id = p.rx->IssueCommand(L"print,x", true, c.reply, c.notice, 5000, false);
    p.ReadLine();
    p.Send(Reply(std::to_string(id), -2, "{2,,wrong 1st parameter}"));
    ASSERT_TRUE(c.Wait(5000));
    const auto r = c.reply->Take();
    EXPECT_EQ(r.status, -2);
    EXPECT_EQ(r.text, L"{2,,wrong 1st parameter}");
    EXPECT_EQ(r.linkError, 0u);
}

TEST(ReceiverLink, CancelledCommandIsNotTouchedAgain) {
    Pair p;
    Completion c;
    const auto id = p.rx->IssueCommand(L"print,slow", true, c.reply, c.notice, 5000, false);
    p.rx->Cancel(id);
    p.Send(Reply(std::to_string(id), 0, "late"));
    EXPECT_FALSE(c.Wait(200));
    EXPECT_FALSE(c.reply->IsDone());
}

TEST(ReceiverLink, LostLinkFailsEveryPendingCommandAtOnceAndRaisesEvent7) {
    Pair p;
    Completion event7, a, b;
    p.rx->Subscribe(event7.notice, kEventStateChanged);
    p.rx->IssueCommand(L"print,a", true, a.reply, a.notice, 60000, false);
    p.rx->IssueCommand(L"print,b", true, b.reply, b.notice, 60000, false);
    ::close(p.peer);
    p.peer = -1;
    // Waited past their own time-out (a hang guard only): what ends them says why they ended.
    ASSERT_TRUE(a.Wait(90000));
    ASSERT_TRUE(b.Wait(90000));
    EXPECT_EQ(a.reply->Take().linkError, basekit::kErrorLinkLost) << "not the 60 s time-out";
    EXPECT_EQ(b.reply->Take().linkError, basekit::kErrorLinkLost);
    EXPECT_TRUE(event7.Wait(5000));
    EXPECT_FALSE(p.rx->IsReady());
    Completion late;
    p.rx->IssueCommand(L"print,c", true, late.reply, late.notice, 60000, false);
    ASSERT_TRUE(late.Wait(1000)) << "a command on a dead link fails at once";
    EXPECT_EQ(late.reply->Take().linkError, basekit::kErrorLinkLost);
    EXPECT_THROW(p.rx->Subscribe(event7.notice, 8), basekit::CWinException);
}

TEST(ReceiverLink, GarbageAndAMegabyteReply) {
    Pair p;
    Completion c;
    const auto id = p.rx->IssueCommand(L"print,/par:on", true, c.reply, c.notice, 30000, true);
    p.ReadLine();
    std::string big(1 << 20, '\0');
    for (size_t i = 0; i < big.size(); ++i) big[i] = static_cast<char>((i * 131) & 0xFF);
    std::string garbage(4096, '\0');
    for (size_t i = 0; i < garbage.size(); ++i) garbage[i] = static_cast<char>((i * 7 + 3) & 0xFF);
    std::thread writer([&] { p.Send(garbage + "@R" + std::to_string(id) + ",0,99:short*0000\r\n" + Reply(std::to_string(id), 0, big)); });
    ASSERT_TRUE(c.Wait(30000));
    writer.join();
    const auto r = c.reply->Take();
    EXPECT_EQ(r.payload, big) << "binary payload arrives byte for byte";
    EXPECT_EQ(r.text.size(), big.size()) << "a binary reply is Latin-1 text, one character per byte";
    EXPECT_GT(p.rx->Counters().lexer.garbageBytes, 0u);
}

TEST(ReceiverLink, ListenersGetDecodedRecordsThroughTheirNotice) {
    Pair p;
    Completion notice;
    const auto positions = IPositionListener::CreateInstance(1);
    positions->AttachNotice(notice.notice, 1);
    p.rx->GetListenerHost()->AddListener(CSmartPtr<IListener>(positions.Get()));
    p.Send("$GPGGA,092750.000,5321.6802,N,00630.3372,W,1,8,1.03,61.7,M,55.2,M,,*76\r\n");
    ASSERT_TRUE(notice.Wait(5000));
    POSITION_RECORD r;
    ASSERT_TRUE(positions->Fetch(r, 0));
    EXPECT_TRUE(r.geoValid);
    EXPECT_NEAR(r.lat, 53.361336, 1e-6);
    EXPECT_NEAR(r.lon, -6.505620, 1e-6);
    EXPECT_FALSE(positions->Fetch(r, 0));
    p.rx->GetListenerHost()->RemoveListener(CSmartPtr<IListener>(positions.Get()));
}

TEST(ReceiverLink, SerialLineOverAPseudoTerminal) {
    const int master = ::posix_openpt(O_RDWR | O_NOCTTY);
    ASSERT_GE(master, 0);
    ASSERT_EQ(::grantpt(master), 0);
    ASSERT_EQ(::unlockpt(master), 0);
    const std::string slave = ::ptsname(master);
    {
        const auto rx = CReceiver::Open(IPortAddr::Parse(basekit::ustring::FromUtf8("serial:" + slave + "?baud=153600")));
        Completion c;
        const auto id = rx->IssueCommand(L"print,rcv/model", true, c.reply, c.notice, 5000, false);
        std::string line;
        char ch = 0;
        while (line.find('\n') == std::string::npos) {
            pollfd pf{master, POLLIN, 0};
            ASSERT_EQ(::poll(&pf, 1, 5000), 1);
            ASSERT_EQ(::read(master, &ch, 1), 1);
            line += ch;
        }
        EXPECT_EQ(line, "%" + std::to_string(id) + "%print,rcv/model\r\n") << "raw mode: no CR/LF translation";
        const std::string reply = Reply(std::to_string(id), 0, "FNK-600");
        ASSERT_EQ(::write(master, reply.data(), reply.size()), static_cast<ssize_t>(reply.size()));
        ASSERT_TRUE(c.Wait(5000));
        EXPECT_EQ(c.reply->Take().text, L"FNK-600");
    }
    ::close(master);
    EXPECT_THROW(CReceiver::Open(IPortAddr::Parse(L"serial:/dev/fenk-no-such-port")), basekit::CWinException);
}

// Cancelling a reply that is streaming in: the abort goes on the wire, the rest of the reply
// is skipped whatever the peer does next, and the command after it is answered.
TEST(ReceiverLink, CancelMidReplySendsTheAbortAndTheNextCommandIsAnswered) {
    struct ROW {
        const char* legend;
        std::string (*rest)(const std::string& tag, const std::string& fullReply);
        std::uint64_t cancelled;
    };
    const ROW rows[] = {
        {"the peer cuts the reply with its mark",
         [](const std::string& tag, const std::string& full) { return full.substr(300, 500) + CStreamLexer::EncodeFrame('C', tag, 0, {}); }, 1},
        {"the peer knows no abort and sends it all",
         [](const std::string&, const std::string& full) { return full.substr(300); }, 1},
    };
    for (const ROW& row : rows) {
        Pair p;
        Completion listing, progress, model;
        listing.reply->SetProgressNotice(progress.notice);
        const auto a = p.rx->IssueCommand(L"print,/par:on", true, listing.reply, listing.notice, 30000, false);
        p.ReadLine();
        const std::string tag = std::to_string(a);
        const std::string full = Reply(tag, 0, std::string(20000, 'L'));
        p.Send(full.substr(0, 300));
        ASSERT_TRUE(progress.Wait(5000)) << row.legend << ": the reader saw the reply begin";
        EXPECT_GT(listing.reply->GetProgress().received, 0u) << row.legend;
        EXPECT_EQ(listing.reply->GetProgress().expected, 20000u) << row.legend;
        p.rx->Cancel(a);
        EXPECT_EQ(p.ReadLine(), "\x18" + tag + "\r\n") << row.legend;
        const auto b = p.rx->IssueCommand(L"print,rcv/model", true, model.reply, model.notice, 30000, false);
        p.ReadLine();
        p.Send(row.rest(tag, full) + Reply(std::to_string(b), 0, "FNK-600"));
        ASSERT_TRUE(model.Wait(30000)) << row.legend;
        EXPECT_EQ(model.reply->Take().text, L"FNK-600") << row.legend;
        EXPECT_FALSE(listing.reply->IsDone()) << row.legend;
        EXPECT_EQ(p.rx->Counters().lexer.cancelledReplies, row.cancelled) << row.legend;
        EXPECT_EQ(p.rx->Counters().orphanReplies, 0u) << row.legend;
    }
}

// A header that promises 64 MB and never delivers: when its command times out the reader drops
// the frame and finds the reply that came behind it.
TEST(ReceiverLink, OversizedFrameIsDroppedWhenItsCommandFails) {
    Pair p;
    Completion stalled, next;
    const auto a = p.rx->IssueCommand(L"print,a", true, stalled.reply, stalled.notice, 300, false);
    const auto b = p.rx->IssueCommand(L"print,b", true, next.reply, next.notice, 30000, false);
    p.ReadLine();
    p.ReadLine();
    p.Send("@R" + std::to_string(a) + ",0,67108864:" + std::string(1000, 'z') + Reply(std::to_string(b), 0, "FNK-600"));
    ASSERT_TRUE(stalled.Wait(10000));
    EXPECT_EQ(stalled.reply->Take().linkError, basekit::kErrorTimeout);
    EXPECT_EQ(p.ReadLine(), "\x18" + std::to_string(a) + "\r\n") << "the receiver is asked to stop";
    ASSERT_TRUE(next.Wait(30000));
    EXPECT_EQ(next.reply->Take().text, L"FNK-600");
    EXPECT_EQ(p.rx->GetLinkHealth().droppedFrames, 1u);
    EXPECT_TRUE(p.rx->IsReady());
}

// A cancelled reply whose peer never cuts it nor ends it (a header promising 64 MB) is given up
// after a grace, and the replies behind it are found.
TEST(ReceiverLink, CancelledReplyThatNeverEndsIsGivenUp) {
    Pair p;
    Completion stalled, progress, next;
    stalled.reply->SetProgressNotice(progress.notice);
    const auto a = p.rx->IssueCommand(L"print,a", true, stalled.reply, stalled.notice, 60000, false);
    p.ReadLine();
    p.Send("@R" + std::to_string(a) + ",0,67108864:" + std::string(1000, 'z'));
    ASSERT_TRUE(progress.Wait(5000));
    p.rx->Cancel(a);
    EXPECT_EQ(p.ReadLine(), "\x18" + std::to_string(a) + "\r\n");
    const auto b = p.rx->IssueCommand(L"print,b", true, next.reply, next.notice, 30000, false);
    p.ReadLine();
    p.Send(Reply(std::to_string(b), 0, "FNK-600"));
    ASSERT_TRUE(next.Wait(30000));
    EXPECT_EQ(next.reply->Take().text, L"FNK-600");
    EXPECT_FALSE(stalled.reply->IsDone());
}

// The link's state as a status bar shows it: silent after an unanswered command, up again at
// the next byte, lost when the peer goes; every change raises event 7.
TEST(ReceiverLink, LinkStateFollowsSilenceAnswersAndLoss) {
    Pair p;
    Completion event7, unanswered;
    p.rx->Subscribe(event7.notice, kEventStateChanged);
    EXPECT_EQ(p.rx->GetLinkHealth().state, LinkState::Up);
    EXPECT_EQ(p.rx->GetLinkHealth().msSinceLastByte, -1);
    p.rx->IssueCommand(L"print,rcv/model", true, unanswered.reply, unanswered.notice, 200, false);
    p.ReadLine();
    ASSERT_TRUE(unanswered.Wait(10000));
    ASSERT_TRUE(event7.Wait(5000));
    EXPECT_EQ(p.rx->GetLinkHealth().state, LinkState::Silent);
    EXPECT_EQ(p.rx->GetLinkHealth().unanswered, 1u);
    event7.overlapped.Event().Reset();
    p.Send("$GPZDA,120000.00,22,11,2026,00,00*6A\r\n");
    ASSERT_TRUE(event7.Wait(5000));
    const LINK_HEALTH up = p.rx->GetLinkHealth();
    EXPECT_EQ(up.state, LinkState::Up);
    EXPECT_GE(up.msSinceLastByte, 0);
    EXPECT_EQ(up.bytesIn, 38u);
    EXPECT_EQ(up.bytesOut, std::string("%1%print,rcv/model\r\n\x18" "1\r\n").size());
    event7.overlapped.Event().Reset();
    ::close(p.peer);
    p.peer = -1;
    ASSERT_TRUE(event7.Wait(5000));
    EXPECT_EQ(p.rx->GetLinkHealth().state, LinkState::Lost);
}

}  // namespace
