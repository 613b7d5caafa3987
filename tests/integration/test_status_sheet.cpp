// The status sheet offscreen over a real loopback link: against the simulator streaming
// positions, satellites, time and data links, and against a real receiver's capture replayed.
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>
#include <condition_variable>
#include <fstream>
#include <mutex>
#include <set>
#include <sstream>
#include <thread>

#include "SimLink.h"
#include "fenklib/receiver/CVokReceiverMate.h"
#include "fenklib/status/CReceiverStatusPS.h"
#include "fenklib/status/CSkyPlot.h"
#include "platform/uikit/CMessageBoxResponder.h"
#include "support/EventTrigger.h"

using fenktest::SimLink;

namespace {

constexpr int kSkyPlotPage = 3;

// Runs the sheet on the sky plot; ends it once `enough` holds after a handled notice.
int RunUntil(CReceiverStatusPS& sheet, const std::function<bool()>& enough, const std::function<void()>& beforeEnd = {},
             const std::function<void()>& onSkyPlot = {}) {
    bool started = false;
    const fenktest::CIdleTrigger idle(&sheet, [&] {
        if (started) return;
        started = true;
        sheet.SetActivePage(kSkyPlotPage);
        if (onSkyPlot) onSkyPlot();
    });
    bool ended = false;
    const fenktest::CEventTrigger notices(&sheet, basekit::CWindowMessageEvent::EventType(), [&] {
        if (ended || !enough()) return;
        ended = true;
        if (beforeEnd) beforeEnd();
        sheet.EndDialog(2);
    });
    fenktest::EndAfterMinute(&sheet, [&] { sheet.EndDialog(99); });
    return sheet.DoModal();
}

TEST(StatusSheetLive, TheSimulatorsStreamReachesEveryPageAndStopsAfterwards) {
    struct Row {
        const char* legend;
        const wchar_t* userOutput;   // set on the terminal before the sheet opens; null: none
        size_t positions;
    };
    const Row rows[] = {
        {"the user's 20 Hz schedule", L"/msg/nmea/GGA:{0.05,0,0,0x0},/msg/nmea/GSV:{1,0,0,0x0},/msg/nmea/ZDA:{1,0,0,0x0},/msg/fnk/DL:{1,0,0,0x0}", 20},
        {"a silent terminal: the sheet asks for the live set", nullptr, 2},
    };
    for (const auto& row : rows) {
        SimLink link;
        if (row.userOutput) devio::CVokReceiverMate(link.Receiver()).EnableMessages(devio::vok::CUR_TERM, row.userOutput);
        CReceiverStatusPS sheet(link.Receiver(), nullptr);
        const int result = RunUntil(sheet, [&] {
            return sheet.PositionPage().PositionsReceived() >= row.positions && sheet.SkyPlotPage().Plot() &&
                   !sheet.SkyPlotPage().Plot()->Satellites().empty() && sheet.NoticesHandled(CReceiverStatusPS::kNoticeDateTime) > 0;
        });
        EXPECT_EQ(result, 2) << row.legend;
        EXPECT_EQ(sheet.StartedOutput(), !row.userOutput) << row.legend;
        EXPECT_EQ(sheet.SkyPlotPage().ElevationMask(), 5.0) << row.legend << ": the simulator's lock/elm";
        const auto& last = sheet.PositionPage().LastPosition();
        EXPECT_TRUE(last.xyzValid && last.geoValid) << row.legend << ": the geodetic GGA got its Cartesian half";
        EXPECT_GE(sheet.ScatterPage().Samples().Samples().size(), row.positions) << row.legend;
        devio::CVokReceiverMate mate(link.Receiver());
        EXPECT_TRUE(mate.GetPortMessages(mate.GetCurrentTerminal()).empty()) << row.legend << ": dm,/cur/term left nothing scheduled";
    }
}

// The simulator on a hand-stepped clock says nothing unasked, so the log's bytes are exactly what
// it wrote between the start and the stop: a reply, then one GGA per step.
TEST(StatusSheetLive, TheLogFileHoldsExactlyTheBytesTheSimulatorSent) {
    std::mutex mutex;
    std::string sent;
    rcvsim::SimOptions options;
    options.onSent = [&](std::string_view, std::string_view bytes) {
        const std::lock_guard lock(mutex);
        sent.append(bytes);
    };
    const auto clock = std::make_shared<rcvsim::ManualClock>(1718359200.5);   // between two fixes
    SimLink link(SimLink::Over::Tcp, options, 115200, clock);
    CReceiverStatusPS sheet(link.Receiver(), nullptr);
    const QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("rt.log"));
    size_t from = 0, steps = 0;
    std::string expected;
    bool started = false, ended = false;
    const fenktest::CIdleTrigger idle(&sheet, [&] {
        if (started) return;
        started = true;
        {
            const std::lock_guard lock(mutex);
            from = sent.size();
        }
        ASSERT_TRUE(sheet.LoggingPage().StartLogging(path));
        devio::CVokReceiverMate(link.Receiver()).EnableMessages(devio::vok::CUR_TERM, L"/msg/nmea/GGA:{1,0,0,0x0}");
        clock->Advance(1);
    });
    const fenktest::CEventTrigger notices(&sheet, basekit::CWindowMessageEvent::EventType(), [&] {
        if (ended || sheet.NoticesHandled(CReceiverStatusPS::kNoticePosition) <= steps) return;
        if (++steps < 5) return clock->Advance(1);
        ended = true;
        sheet.LoggingPage().StopLogging();
        const std::lock_guard lock(mutex);
        expected = sent.substr(from);
        sheet.EndDialog(2);
    });
    fenktest::EndAfterMinute(&sheet, [&] { sheet.EndDialog(99); });
    EXPECT_EQ(sheet.DoModal(), 2);
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray logged = file.readAll();
    EXPECT_EQ(logged.toStdString(), expected);
    EXPECT_EQ(logged.count("$GNGGA"), 5) << "one fix per step, after the reply to em";
    EXPECT_EQ(sheet.LoggingPage().LogState().written, static_cast<std::uint64_t>(logged.size()));
}

// A loopback server that sends one capture when told to and keeps the line open until closed.
class CCaptureServer {
public:
    explicit CCaptureServer(std::string bytes) : m_bytes(std::move(bytes)) {
        m_listen = ::socket(AF_INET, SOCK_STREAM, 0);
        sockaddr_in a{};
        a.sin_family = AF_INET;
        a.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t len = sizeof a;
        if (::bind(m_listen, reinterpret_cast<sockaddr*>(&a), len) != 0 || ::listen(m_listen, 1) != 0 ||
            ::getsockname(m_listen, reinterpret_cast<sockaddr*>(&a), &len) != 0)
            throw std::runtime_error("loopback server");
        m_port = ntohs(a.sin_port);
        m_thread = std::thread([this] {
            const int fd = ::accept(m_listen, nullptr, nullptr);
            if (fd < 0) return;
            m_peer = fd;
            {
                std::unique_lock lock(m_mutex);
                m_go.wait(lock, [this] { return m_send; });
            }
            for (size_t done = 0; done < m_bytes.size();) {
                const ssize_t n = ::send(fd, m_bytes.data() + done, m_bytes.size() - done, MSG_NOSIGNAL);
                if (n <= 0) break;
                done += static_cast<size_t>(n);
            }
        });
    }
    ~CCaptureServer() {
        Close();
        ::close(m_listen);
    }
    void Send() {
        {
            const std::lock_guard lock(m_mutex);
            m_send = true;
        }
        m_go.notify_all();
    }
    // Ends the line, so what the sheet sends last fails at once instead of waiting.
    void Close() {
        Send();
        if (m_thread.joinable()) m_thread.join();
        if (m_peer >= 0) ::shutdown(m_peer, SHUT_RDWR), ::close(m_peer), m_peer = -1;
    }
    int Port() const { return m_port; }

private:
    std::string m_bytes;
    int m_listen = -1, m_peer = -1, m_port = 0;
    std::mutex m_mutex;
    std::condition_variable m_go;
    bool m_send = false;
    std::thread m_thread;
};

std::string Capture(const std::string& name) {
    const char* shared = std::getenv("FENK_SHARED_DIR");
    std::ifstream in((shared && *shared ? std::string(shared) : std::string("../shared")) + "/nmea-captures/" + name, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

TEST(StatusSheetLive, ARealReceiversCaptureReachesTheSkyPlot) {
    const std::string bytes = Capture("ublox-zed-f9p-nmea.log");
    ASSERT_FALSE(bytes.empty()) << "capture not found";
    CCaptureServer server(bytes);
    auto receiver = devio::CReceiver::Open(devio::IPortAddr::Parse(L"tcp://127.0.0.1:" + std::to_wstring(server.Port())));
    CReceiverStatusPS sheet(basekit::CSmartPtr<devio::IReceiver>(receiver.Get()), nullptr);
    const uikit::CMessageBoxResponder boxes;   // the capture answers no command
    std::set<std::int32_t> systems;
    RunUntil(
        sheet,
        [&] {
            const CSkyPlot* plot = sheet.SkyPlotPage().Plot();
            if (!plot || plot->Satellites().empty()) return false;
            for (const auto& s : plot->Satellites()) systems.insert(s.system);
            return true;
        },
        [&] { server.Close(); }, [&] { server.Send(); });
    EXPECT_FALSE(systems.empty()) << "a satellite list reached the sky plot";
    EXPECT_EQ(sheet.SkyPlotPage().ElevationMask(), 0.0) << "an unanswered mask reading leaves the mask on the horizon";
    sheet.SkyPlotPage().Plot()->grab().save(QCoreApplication::applicationDirPath() + QStringLiteral("/tour-skyplot-capture.png"));
}

}  // namespace
