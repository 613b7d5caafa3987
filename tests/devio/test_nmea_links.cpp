// Links that carry only NMEA: a capture replayed from its file and a gpsd feed over loopback
// reach the decoder, and a command on either fails at once with a text that says why.
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <thread>

#include "NmeaTestSupport.h"
#include "platform/basekit/CStdException.h"
#include "platform/devio/CReceiver.h"

using namespace devio;

namespace {

constexpr unsigned kGuardMs = 60000;   // ends a hung test; no time bound is asserted

// Waits until more than `n` positions have reached the listener; false if the guard ran out.
bool PositionsMoreThan(CReceiver& rx, size_t n) {
    COverlapped arrived;
    const auto listener = IPositionListener::CreateInstance(1);
    listener->AttachNotice(INotice::CreateInstance(arrived), 1);
    rx.GetListenerHost()->AddListener(listener);
    POSITION_RECORD r;
    for (size_t got = 0; got <= n;) {
        if (arrived.Event().Wait(kGuardMs).kind != basekit::WaitResult::Signalled) return false;
        arrived.Event().Reset();
        while (got <= n && listener->Fetch(r, 0)) ++got;
    }
    return true;
}

TEST(NmeaLinks, FeedsReachTheDecoderAndCommandsFailAtOnce) {
    const std::string capture = test::CapturePath("nmea-rtk.log"), rtk = test::ReadFile(capture);
    const size_t ggaInCapture = 122;
    // A gpsd on loopback: one client; what it asks is kept, then the greeting and three fixes go out.
    const int server = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in a{AF_INET, 0, {htonl(INADDR_LOOPBACK)}, {}};
    socklen_t len = sizeof a;
    ASSERT_EQ(::bind(server, reinterpret_cast<sockaddr*>(&a), len) | ::listen(server, 1), 0);
    ::getsockname(server, reinterpret_cast<sockaddr*>(&a), &len);
    std::string asked;
    std::thread gpsd([&] {
        const int peer = ::accept(server, nullptr, nullptr);
        for (char c = 0; asked.find(';') == std::string::npos && ::read(peer, &c, 1) == 1;) asked += c;
        std::string out = "{\"class\":\"VERSION\",\"release\":\"3.25\"}\n";
        for (size_t at = rtk.find("$GNGGA"), i = 0; i < 3; at = rtk.find("$GNGGA", at + 1), ++i)
            out += rtk.substr(at, rtk.find('\n', at) + 1 - at);
        ::send(peer, out.data(), out.size(), MSG_NOSIGNAL);
        ::close(peer);
    });
    struct Row { const char* legend; std::string url; size_t positionsMoreThan; };
    const Row rows[] = {
        {"a capture played once", "file:" + capture + "?rate=4000000", 0},
        {"a capture looped: more fixes than one pass holds", "file:" + capture + "?rate=4000000&loop=1", ggaInCapture},
        {"gpsd's NMEA after the WATCH", "gpsd://127.0.0.1:" + std::to_string(ntohs(a.sin_port)), 2},
    };
    for (const Row& row : rows) {
        const auto rx = CReceiver::Open(IPortAddr::Parse(basekit::ustring::FromUtf8(row.url)));
        EXPECT_TRUE(PositionsMoreThan(*rx, row.positionsMoreThan)) << row.legend;
        EXPECT_FALSE(rx->TakesCommands()) << row.legend;
        try {
            rx->IssueCommand(L"print,lock/elm", true, CSmartPtr<CCommandReply>(new CCommandReply()), {}, 60000, false);
            ADD_FAILURE() << row.legend << ": the command was taken";
        } catch (const basekit::CStdException& e) {
            EXPECT_NE(e.GetMessage().find(L"takes no receiver commands"), std::wstring::npos) << row.legend;
        }
        EXPECT_EQ(rx->PendingCount(), 0u) << row.legend << ": nothing left waiting for a reply";
    }
    gpsd.join();
    ::close(server);
    EXPECT_EQ(asked, "?WATCH={\"enable\":true,\"nmea\":true};");
}

}  // namespace
