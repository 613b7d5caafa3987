// A wire log recorded against the simulator, replayed into a fresh receiver object: the same
// commands get the same answers, so a failure seen in the field can be replayed here.
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <thread>

#include "SimLink.h"
#include "fenklib/receiver/CVokReceiverMate.h"

using namespace devio;
using basekit::ustring;

namespace {

struct Session {
    ustring model, serial;
    std::vector<vok::MSG> messages;
    vok::EDev terminal;
};

Session Converse(CVokReceiverMate& mate) {
    Session s;
    s.model = mate.Get(par::RcvModel);
    mate.EnableMessages(vok::CUR_TERM, L"/msg/nmea/GGA:{0.05,0,0,0x0}");
    s.serial = mate.Get(par::RcvSn);
    s.messages = mate.GetPortMessages(vok::DEV_SER_A);
    s.terminal = mate.GetCurrentTerminal();
    return s;
}

// Plays the receiver's side of a log: waits for each command the log shows going out, then
// sends what came in after it. Bounded by the log's length and a read time-out.
void PlayReceiver(int fd, const std::vector<CWireLog::Entry>& log) {
    std::string pending;
    for (const auto& e : log) {
        if (e.direction == CWireLog::Direction::In) {
            for (size_t done = 0; done < e.bytes.size();) {
                const ssize_t n = ::write(fd, e.bytes.data() + done, e.bytes.size() - done);
                if (n <= 0) return;
                done += static_cast<size_t>(n);
            }
            continue;
        }
        while (pending.size() < e.bytes.size()) {
            pollfd p{fd, POLLIN, 0};
            char buf[256];
            if (::poll(&p, 1, 5000) != 1) return;
            const ssize_t n = ::read(fd, buf, sizeof buf);
            if (n <= 0) return;
            pending.append(buf, static_cast<size_t>(n));
        }
        EXPECT_EQ(pending.substr(0, e.bytes.size()), e.bytes) << "the replayed side sends the same commands";
        pending.erase(0, e.bytes.size());
    }
}

TEST(WireReplay, ARecordedConversationPlaysBackTheSame) {
    fenktest::SimLink link;
    link.receiver->WireLog().Enable(true);
    Session recorded;
    {
        CVokReceiverMate mate(link.Receiver());
        recorded = Converse(mate);
    }
    const std::string logText = link.receiver->WireLog().ToText();
    const auto log = CWireLog::Parse(logText);
    ASSERT_FALSE(log.empty());

    int fds[2];
    ASSERT_EQ(::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, fds), 0);
    std::thread receiverSide([&] { PlayReceiver(fds[1], log); });
    Session replayed;
    {
        const CSmartPtr<CReceiver> rx(new CReceiver(std::make_unique<CLink>(IPortAddr::Parse(L"sim:"), fds[0])));
        CVokReceiverMate mate(CSmartPtr<IReceiver>(rx.Get()));
        replayed = Converse(mate);
        receiverSide.join();
    }
    ::close(fds[1]);
    EXPECT_EQ(replayed.model, recorded.model);
    EXPECT_EQ(replayed.serial, recorded.serial);
    EXPECT_EQ(replayed.messages, recorded.messages);
    EXPECT_EQ(replayed.terminal, recorded.terminal);
}

}  // namespace
