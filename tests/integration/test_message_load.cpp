// The load figure of the message editors against the bytes the simulator really sends.
#include <gtest/gtest.h>

#include <QFile>

#include "fenklib/msglist/MessageRegistry.h"
#include "fenklib/msglist/PortLoad.h"
#include "tools/rcvsim/Receiver.h"
#include "tools/rcvsim/SimClock.h"

using devio::vok::MSG;

TEST(PortLoad, MatchesTheBytesSent) {
    QFile file(QStringLiteral(FENK_DATA_DIR "/ReceiverMessageRegistry.xml"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const auto registry = fenkmsg::CMessageRegistry::Parse(file.readAll());
    struct Case { std::vector<MSG> list; const char* legend; };
    const Case cases[] = {
        {{{L"rtcm3/1004", 1, 0, 0, 0}, {L"rtcm3/1012", 1, 0, 0, 0}, {L"rtcm3/1006", 10, 0, 0, 0}, {L"rtcm3/1033", 10, 0, 0, 0}},
         "RTK base, RTCM 3"},
        {{{L"cmr/0", 1, 0, 0, 0}, {L"cmr/3", 1, 0, 0, 0}, {L"cmr/1", 10, 0, 0, 0}}, "CMR base"},
        {{{L"qls/RT", 0.5, 0, 0, 0}, {L"qls/PV", 0.5, 0, 0, 0}, {L"qls/RC", 1, 0, 0, 0}, {L"binex/7f-05", 1, 0, 0, 0}},
         "raw data at 2 Hz"},
    };
    for (const Case& c : cases) {
        auto clock = std::make_shared<rcvsim::ManualClock>();
        rcvsim::Receiver rx(rcvsim::SimOptions{}, clock);
        for (const MSG& m : c.list) {
            const std::string line = "em,/dev/ser/b," + m.name.ToUtf8() + ":{" + std::to_string(m.period) + ",0,0,0x0}";
            ASSERT_EQ(rx.Execute(line, "dev/ser/a").status, 0) << line;
        }
        constexpr double kSeconds = 100;
        std::size_t sent = 0;
        for (int step = 0; step < static_cast<int>(kSeconds * 10); ++step) {
            clock->Advance(0.1);
            for (const auto& o : rx.Poll())
                if (o.port == "dev/ser/b") sent += o.bytes.size();
        }
        const auto load = fenkmsg::ComputePortLoad(c.list, registry, 9600);
        EXPECT_EQ(load.unknown, 0) << c.legend;
        EXPECT_NEAR(static_cast<double>(sent) / kSeconds, load.bytesPerSecond, load.bytesPerSecond * 0.03) << c.legend;
    }
}
