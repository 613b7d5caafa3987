#include <gtest/gtest.h>

#include "platform/basekit/CWinException.h"
#include "platform/devio/IPortAddr.h"

using namespace devio;

namespace {

TEST(PortAddr, LinkTexts) {
    struct Case { const char* legend; const wchar_t* url; EPortType type; const wchar_t* name; const wchar_t* property; QVariant value; };
    const Case cases[] = {
        {"serial with a rate", L"serial:/dev/ttyUSB0?baud=9600", PortSerial, L"/dev/ttyUSB0", L"BaudRate", QStringLiteral("9600")},
        {"serial rate defaults to 115200", L"serial:/dev/ttyS0", PortSerial, L"/dev/ttyS0", L"BaudRate", 115200},
        {"serial line settings", L"serial:/dev/ttyS0?baud=921600&parity=E&rtscts=on", PortSerial, L"/dev/ttyS0", L"Parity", QStringLiteral("E")},
        {"tcp host and port", L"tcp://127.0.0.1:4001", PortNetwork, L"127.0.0.1:4001", L"Port", 4001},
        {"the built-in simulator", L"sim:", PortInProcess, L"sim", L"BaudRate", QVariant()},
        {"nothing named is the simulator", L"  ", PortInProcess, L"sim", L"BaudRate", QVariant()},
    };
    for (const auto& c : cases) {
        const auto addr = IPortAddr::Parse(c.url);
        ASSERT_TRUE(addr) << c.legend;
        EXPECT_EQ(addr->GetType(), c.type) << c.legend;
        EXPECT_EQ(addr->GetName(), c.name) << c.legend;
        EXPECT_EQ(addr->GetProperties()->GetProperty(c.property).toString(), c.value.toString()) << c.legend;
    }
}

TEST(PortAddr, BadTextsAreRefused) {
    for (const wchar_t* url : {L"serial:", L"serial:/dev/x?baud=fast", L"tcp://nohost", L"tcp://h:0", L"ftp://x", L"sim:?colour=red"})
        EXPECT_THROW(IPortAddr::Parse(url), basekit::CWinException) << basekit::ustring(url).ToUtf8();
}

}  // namespace
