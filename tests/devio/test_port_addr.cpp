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
        {"a capture at its line rate", L"file:/tmp/c.log?rate=9600&loop=1", PortReplay, L"/tmp/c.log", L"BaudRate", QStringLiteral("9600")},
        {"gpsd on its own port", L"gpsd://localhost", PortGpsd, L"localhost:2947", L"Port", 2947},
    };
    for (const auto& c : cases) {
        const auto addr = IPortAddr::Parse(c.url);
        ASSERT_TRUE(addr) << c.legend;
        EXPECT_EQ(addr->GetType(), c.type) << c.legend;
        EXPECT_EQ(addr->GetName(), c.name) << c.legend;
        EXPECT_EQ(addr->GetProperties()->GetProperty(c.property).toString(), c.value.toString()) << c.legend;
    }
}

// Each malformed link text says what is wrong with it, not a system error.
TEST(PortAddr, BadTextsAreRefusedWithTheirReason) {
    struct ROW {
        const char* legend;
        const wchar_t* url;
        const wchar_t* reason;
    };
    const ROW rows[] = {
        {"serial without a port", L"serial:", L"names no serial port"},
        {"a rate that is no number", L"serial:/dev/x?baud=fast", L"baud=\"fast\" is not a number"},
        {"stop bits that are no number", L"serial:/dev/x?stops=one", L"stops=\"one\" is not a number"},
        {"tcp without a port", L"tcp://nohost", L"needs a host and a port"},
        {"tcp port 0", L"tcp://h:0", L"needs a host and a port"},
        {"tcp without the slashes", L"tcp:127.0.0.1:4001", L"needs a host and a port"},
        {"an unknown kind", L"ftp://x", L"is not a link this program knows"},
        {"a bare device path", L"/dev/ttyUSB0", L"is not a link this program knows"},
        {"an unknown option", L"sim:?colour=red", L"unknown option \"colour\""},
        {"a capture without a file", L"file:", L"names no capture file"},
    };
    for (const ROW& row : rows) {
        try {
            IPortAddr::Parse(row.url);
            ADD_FAILURE() << row.legend << ": accepted";
        } catch (const basekit::CWinException& e) {
            EXPECT_NE(e.Text().find(row.reason), std::wstring::npos) << row.legend << ": " << e.GetMessage().ToUtf8();
            EXPECT_NE(e.Text().find(row.url), std::wstring::npos) << row.legend << ": names the text";
            EXPECT_EQ(e.Code(), basekit::kErrorInvalidParameter) << row.legend;
            EXPECT_EQ(e.GetMessage().find(L"Too many users"), std::wstring::npos) << row.legend;
        }
    }
}

}  // namespace
