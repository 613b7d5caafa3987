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

using namespace devio;
using namespace std::chrono_literals;

namespace {

struct Completion {
    COverlapped overlapped;
    CSmartPtr<CCommandReply> reply{new CCommandReply()};
    CSmartPtr<INotice> notice = INotice::CreateInstance(overlapped);
    bool Wait(unsigned ms) { return overlapped.Event().Wait(ms).kind == basekit::WaitResult::Signalled; }
};

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
    const auto start = std::chrono::steady_clock::now();
    ::close(p.peer);
    p.peer = -1;
    ASSERT_TRUE(a.Wait(10000));
    ASSERT_TRUE(b.Wait(10000));
    EXPECT_LT(std::chrono::steady_clock::now() - start, 30s) << "not the 60 s time-out";
    EXPECT_EQ(a.reply->Take().linkError, basekit::kErrorLinkLost);
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

}  // namespace
