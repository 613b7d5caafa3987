#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include <QTemporaryDir>

#include "platform/devio/CPortAddr.h"
#include "platform/devio/CReceiver.h"
#include "platform/devio/CWireLog.h"
#include "platform/devio/lexer/CStreamLexer.h"
#include <fcntl.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

using devio::CWireLog;
using basekit::CSmartPtr;

namespace {

TEST(WireLog, TextRoundTripsForReplay) {
    CWireLog log;
    log.Record(CWireLog::Direction::Out, "ignored while off");
    log.Enable(true);
    const std::string binary("\x00\x01\xff@R1,0,2:\r\n", 12);
    log.Record(CWireLog::Direction::Out, "%1%print,rcv/model\r\n");
    log.Record(CWireLog::Direction::In, "@R1,0,7:FNK-600*22A3\r\n$GPGGA,a\\b*00\r\n");
    log.Record(CWireLog::Direction::In, binary);
    const auto entries = CWireLog::Parse(log.ToText() + "garbage line\n12 ? T x\n");
    ASSERT_EQ(entries.size(), 3u) << "the off-time chunk and malformed lines are not there";
    EXPECT_EQ(entries[0].direction, CWireLog::Direction::Out);
    EXPECT_EQ(entries[0].bytes, "%1%print,rcv/model\r\n");
    EXPECT_EQ(entries[1].bytes, "@R1,0,7:FNK-600*22A3\r\n$GPGGA,a\\b*00\r\n");
    EXPECT_EQ(entries[2].bytes, binary) << "binary chunks travel as hex";
    EXPECT_NE(log.ToText().find(" < H 0001ff"), std::string::npos);
    EXPECT_LE(entries[0].ms, entries[2].ms);
}

// A wire log written to a file while a real link talks parses back to what crossed it.
TEST(WireLog, FileOfALinkParsesBackForReplay) {
    QTemporaryDir dir;
    const std::string path = dir.filePath(QStringLiteral("wire.log")).toStdString();
    int fds[2];
    ASSERT_EQ(::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, fds), 0);
    ::fcntl(fds[0], F_SETFL, O_NONBLOCK);
    const std::string reply = devio::CStreamLexer::EncodeFrame('R', "1", 0, "FNK-600");
    {
        const auto rx = CSmartPtr<devio::CReceiver>(new devio::CReceiver(std::make_unique<devio::CLink>(devio::IPortAddr::Parse(L"sim:"), fds[0])));
        ASSERT_TRUE(rx->WireLog().WriteTo(path));
        devio::COverlapped done;
        const CSmartPtr<devio::CCommandReply> result(new devio::CCommandReply());
        rx->IssueCommand(L"print,rcv/model", true, result, devio::INotice::CreateInstance(done), 5000, false);
        char line[64];
        pollfd p{fds[1], POLLIN, 0};
        ASSERT_EQ(::poll(&p, 1, 5000), 1);
        ASSERT_GT(::read(fds[1], line, sizeof line), 0);
        ASSERT_EQ(::write(fds[1], reply.data(), reply.size()), static_cast<ssize_t>(reply.size()));
        ASSERT_EQ(done.Event().Wait(5000).kind, basekit::WaitResult::Signalled);
        EXPECT_TRUE(rx->WireLog().Entries().empty()) << "a file log keeps nothing in memory";
    }
    ::close(fds[1]);
    std::ifstream in(path);
    std::stringstream text;
    text << in.rdbuf();
    const auto entries = CWireLog::Parse(text.str());
    ASSERT_EQ(entries.size(), 2u) << text.str();
    EXPECT_EQ(entries[0].bytes, "%1%print,rcv/model\r\n");
    EXPECT_EQ(entries[1].direction, CWireLog::Direction::In);
    EXPECT_EQ(entries[1].bytes, reply);
}

}  // namespace
