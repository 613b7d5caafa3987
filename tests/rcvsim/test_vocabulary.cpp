// The receiver answers the command vocabulary with reply shapes the library's parsers accept.
// Each row covers one way of printing; that every parameter the library reads exists is
// checked through the library itself in tests/integration/test_vocabulary.cpp.
#include <gtest/gtest.h>

#include "RcvSimTestUtil.h"
#include "tools/rcvsim/Keywords.h"

namespace rcvsim::test {
namespace {

const std::string kInt = R"(-?\d+)";
const std::string kOnOff = "on|off";
const std::string kGeo = R"(\{W84,[NS]\d{2}d\d{2}m\d+\.\d{6}s,[EW]\d{3}d\d{2}m\d+\.\d{6}s,-?\d+\.\d{6}\})";
const std::string kXyz = R"(\{W84,-?\d+\.\d{4},-?\d+\.\d{4},-?\d+\.\d{4}\})";
const std::string kSchedule = R"(\{\d+\.\d{2},\d+\.\d{2},-?\d+,0x[0-9a-f]+\})";

struct PrintRow {
    const char* path;
    std::string shape;
    const char* legend;
};
const PrintRow kPrintRows[] = {
    {"rcv/model", R"([^{}\r\n]+)", "plain text"},
    {"rcv/ver/pow/hw", kInt, "integer"},
    {"pwr/bat/a", R"(-?\d+\.\d+)", "real"},
    {"/ext/bt/power", kOnOff, "on/off"},
    {"pos/rtk/dynamic", "static|kinematic|stopandgo", "keyword"},
    {"/ext/bt/bdaddr", R"(([0-9A-F]{2}:){5}[0-9A-F]{2})", "bluetooth address"},
    {"pwr/switch:on", R"(\{(\d+=(on|off|auto),?)+\})", "all switches as a list"},
    {"log/imp", R"(\{[yn],[yn]\})", "two flags scanned with {%c,%c}"},
    {"lock/gps/l5", R"(\{(on|off),(on|off)\})", "L5 lock pair"},
    {"lock/waas/sat:on", R"(\{(\d+=[yn],?)+\})", "satellite locks"},
    {"stat/fsinit", R"(\{(\d+,?)+\})", "list of integers"},
    {"/cur/file/a", R"(/log/[^/]+)", "current file with the log folder"},
    {"/cur/file/b", "", "second channel, idle"},
    {"/cur/file/a&size", kInt, "size of the current file"},
    {"/cur/file/b&size", "0", "no file: size 0"},
    {"/dev/blk/a&block_size:on", R"(/dev/blk/a&block_size=\d+)", "attribute listing"},
    {"/log/&[name,size,time]", R"(\{(\{[^,{}]+,\d+,[^,{}]+\},?)+\})", "file list"},
    {"\"/com/a/profile/default&size\"", kInt, "file size, quoted form"},
    {"ref/arp/gps/geo", kGeo, "geodetic"},
    {"ref/pos/gps/xyz", kXyz, "Cartesian"},
    {"ref/avg/list/pnts/01/date", R"(\d{4}/\d{2}/\d{2} \d{2}:\d{2}:\d{2})", "stored point date"},
    {"ref/avg/list/pnts/00/arp/geo", kGeo, "stored point made at start"},
    {"ref/avg/list/pnts/01/pos/xyz", kXyz, "second stored point"},
    {"com/a/scripts", R"(\{([a-z]+,?)+\})", "script names"},
    {"/cur/term", "/dev/ser/a", "the port the command came in on"},
    {"/msg/def/fnk/DL", kSchedule, "default schedule"},
    {"out/dev/ser/a:on", R"(\{\})", "nothing enabled at start"},
};

TEST(PrintVocabulary, AnswersWithTheExpectedShape) {
    SimReceiver sim;
    for (const auto& row : kPrintRows) {
        const Reply r = sim.Run(std::string("print,") + row.path);
        EXPECT_EQ(r.status, 0) << row.path << " (" << row.legend << "): " << r.text;
        EXPECT_TRUE(Matches(r.text, row.shape)) << row.path << " (" << row.legend << "): " << r.text;
    }
}

// The port family, for every port the ports dialog can show.
const std::pair<const char*, std::string> kPortFields[] = {
    {"rate", "300|600|1200|2400|4800|9600|19200|38400|57600|115200|153600|230400|460800|921600"},
    {"bits", "[5678]"},
    {"parity", "N|odd|even|fodd|feven"},
    {"stops", "[12]"},
    {"rtscts", kOnOff},
    {"imode", "none|cmd|echo|rtcm|rtcm3|cmr|qls|omni|dtp|term"},
    {"echo", "/dev/[a-z]+(/[a-z])?"},
    {"dup", "/dev/[a-z]+(/[a-z])?"},
    {"eoff", R"([^\r\n]*)"},
};

TEST(PrintVocabulary, EveryPortAnswersEveryField) {
    SimReceiver sim;
    for (const auto port : Keywords::DevicePorts()) {
        for (const auto& [field, shape] : kPortFields) {
            const Reply r = sim.Run("print," + std::string(port) + "/" + field);
            EXPECT_EQ(r.status, 0) << port << "/" << field;
            EXPECT_TRUE(Matches(r.text, shape)) << port << "/" << field << ": " << r.text;
        }
        EXPECT_EQ(sim.Run("print,out/" + std::string(port) + ":on").text, "{}") << port;
    }
}

struct ListRow {
    const char* command;
    const char* shape;
    const char* legend;
};
const ListRow kListRows[] = {
    {"list,/par/dev/ser", "\\{a=port,b=port,c=port,d=port\\}", "serial group of the ports dialog"},
    {"list,/par/dev/usb", "\\{a=port\\}", "USB group"},
    {"list,/par/dev/tcp", "\\{a=port,b=port,c=port,d=port,e=port\\}", "TCP group"},
    {"list,/par/dev/mvp", "\\{a=port\\}", "modem link group"},
    {"list,/par/com", "\\{a=port\\}", "script ports"},
    {"list,/msg/qls", "\\{RT,PV,SI,EL,AZ,RC,PC,ET\\}", "own raw-data group"},
    {"list,/msg/nmea", "\\{GGA,RMC,GSA,GSV,ZDA,GST,VTG,GLL\\}", "NMEA group"},
    {"list,/msg/fnk", "\\{DL\\}", "own messages"},
    {"list,/msg/rtcm", "\\{1,3,18,19,22,31,32\\}", "RTCM 2 group"},
    {"list,/msg/rtcm3", "\\{1004,1006,1008,1012,1033,1074,1084,1230\\}", "RTCM 3 group"},
    {"list,/msg/cmr", "\\{0,1,2,3\\}", "CMR group"},
    {"list,/msg/binex", "\\{00,01-01,7f-05\\}", "BINEX group"},
    {"list,/msg/def", R"(\{qls/RT,qls/PV,.*,nmea/GGA,.*,rtcm3/1004,.*,binex/7f-05,fnk/DL\})", "defaults of every group"},
    {"list,/par/antdb/ids/id", R"(\{([A-Z0-9.\- ]+,)+[A-Z0-9.\- ]+\})", "antenna database"},
};

TEST(ListVocabulary, AnswersEveryListTheDialogsUse) {
    SimReceiver sim;
    for (const auto& row : kListRows) {
        const Reply r = sim.Run(row.command);
        EXPECT_EQ(r.status, 0) << row.command << " (" << row.legend << ")";
        EXPECT_TRUE(Matches(r.text, row.shape)) << row.legend << ": " << r.text;
    }
    SimOptions echo;
    echo.listEcho = true;
    EXPECT_EQ(SimReceiver(echo).Run("list,/par/dev/usb").text, "{/par/dev/usb={a=port}}") << "echo form";
}

TEST(ParameterDump, IsPaddedToTheConfiguredSizeWithPathValueLines) {
    SimOptions options;
    options.dumpBytes = 2 * 1024 * 1024;
    SimReceiver sim(options);
    const std::string dump = sim.Print("/par:on");
    EXPECT_GE(dump.size(), options.dumpBytes);
    EXPECT_NE(dump.find("/par/rcv/model=FNK-600\n"), std::string::npos);
    std::size_t lines = 0;
    for (std::size_t start = 0, nl = dump.find('\n'); nl != std::string::npos; start = nl + 1, nl = dump.find('\n', start), ++lines)
        ASSERT_TRUE(Matches(dump.substr(start, nl - start), R"(/par/[^=]+=.*)")) << dump.substr(start, nl - start);
    EXPECT_GT(lines, 1000u);
}

}  // namespace
}  // namespace rcvsim::test
