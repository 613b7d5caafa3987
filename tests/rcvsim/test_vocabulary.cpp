// The receiver answers the whole command vocabulary the library speaks, with reply shapes
// the library's parsers accept.
#include <gtest/gtest.h>

#include "RcvSimTestUtil.h"
#include "tools/rcvsim/Keywords.h"

namespace rcvsim::test {
namespace {

const std::string kInt = R"(-?\d+)";
const std::string kReal = R"(-?\d+\.\d+)";
const std::string kOnOff = "on|off";
const std::string kText = R"([^{}\r\n]+)";
const std::string kAny = R"([^\r\n]*)";
const std::string kGeo = R"(\{W84,[NS]\d{2}d\d{2}m\d+\.\d{6}s,[EW]\d{3}d\d{2}m\d+\.\d{6}s,-?\d+\.\d{6}\})";
const std::string kXyz = R"(\{W84,-?\d+\.\d{4},-?\d+\.\d{4},-?\d+\.\d{4}\})";
const std::string kSchedule = R"(\{\d+\.\d{2},\d+\.\d{2},-?\d+,0x[0-9a-f]+\})";
const std::string kBraced = R"(\{[^\r\n]*\})";

struct PrintRow {
    const char* path;
    std::string shape;
    const char* legend;
};

// Every "print," reading of the parameter catalogue (ports are covered by the next table).
const PrintRow kPrintRows[] = {
    {"rcv/model", kText, "model name"},
    {"rcv/id", kText, "receiver id, also the info file's name"},
    {"rcv/sn", kText, "serial number"},
    {"rcv/vendor", kText, "vendor"},
    {"rcv/ver/main", kText, "firmware version"},
    {"rcv/ver/hw", kText, "hardware version"},
    {"rcv/ver/board", kText, "board version"},
    {"rcv/ver/pow/fw", kText, "power board firmware"},
    {"rcv/ver/pow/hw", kInt, "power board hardware, integer"},
    {"rcv/mem", kInt, "memory bytes"},
    {"cpu/frq", kInt, "processor MHz"},
    {"/ext/rcv/ver/main", kText, "extension firmware"},
    {"/ext/rcv/ver/hw", kText, "extension hardware"},
    {"pwr/bat/a", kReal, "battery A volts"},
    {"pwr/bat/b", kReal, "battery B volts"},
    {"pwr/ext", kReal, "external supply"},
    {"pwr/charger", kReal, "charger"},
    {"pwr/board", kReal, "board supply"},
    {"pwr/switch/2", "on|off|auto", "one power switch"},
    {"pwr/switch:on", R"(\{(\d+=(on|off|auto),?)+\})", "all switches as a list"},
    {"/ext/powerup/mode", kOnOff, "power-up mode"},
    {"/ext/bt/power", kOnOff, "bluetooth power"},
    {"/ext/bt/mux", kOnOff, "bluetooth mux"},
    {"/ext/bt/ver/main", kText, "bluetooth firmware"},
    {"/ext/bt/bdaddr", R"(([0-9A-F]{2}:){5}[0-9A-F]{2})", "bluetooth address"},
    {"/ext/bt/pincode", kText, "PIN"},
    {"/ext/bt/name", kText, "bluetooth name"},
    {"/ext/audio/vol/1", kInt, "channel volume"},
    {"log/rot/mode", kOnOff, "rotation enabled"},
    {"log/rot/rmold", kOnOff, "remove old files"},
    {"log/rot/sc/period", kInt, "rotation period"},
    {"log/rot/sc/phase", kInt, "rotation phase"},
    {"log/rot/sc/count", kInt, "files to keep"},
    {"log/rot/count", kInt, "running rotation counter"},
    {"log/sc/period", kReal, "logging period"},
    {"log/imp", R"(\{[yn],[yn]\})", "two flags scanned with {%c,%c}"},
    {"cmd/create/prefix", kText, "new file prefix"},
    {"/cur/file/a", R"(/log/[^/]+)", "current file with the log folder"},
    {"/cur/file/b", kAny, "second channel, idle"},
    {"/cur/file/a&size", kInt, "size of the current file"},
    {"/cur/file/b&size", kInt, "no file: size 0"},
    {"dev/blk/a/removed", kOnOff, "medium removed"},
    {"dev/blk/a/size", kInt, "available bytes"},
    {"dev/blk/a/free", kInt, "free bytes"},
    {"dev/blk/a/block_size", kInt, "block size"},
    {"dev/blk/a/blocks", kInt, "blocks"},
    {"dev/blk/a/max_files", kInt, "max files"},
    {"dev/blk/a/files", kInt, "files"},
    {"dev/blk/a/bad_blocks", kInt, "bad blocks"},
    {"dev/blk/a/ver", kInt, "file system version"},
    {"dev/blk/a/tfmt", kText, "format time"},
    {"stat/fsinit", R"(\{(\d+,?)+\})", "list of integers"},
    {"/dev/blk/a&block_size:on", R"(/dev/blk/a&block_size=\d+)", "block size listing"},
    {"/dev/blk/a&blocks:on", R"(/dev/blk/a&blocks=\d+)", "blocks listing"},
    {"/log/&[name,size,time]", R"(\{(\{[^,{}]+,\d+,[^,{}]+\},?)+\})", "file list"},
    {"ref/arp/gps/geo", kGeo, "antenna point, geodetic"},
    {"ref/arp/gps/xyz", kXyz, "antenna point, Cartesian"},
    {"ref/pos/gps/geo", kGeo, "position, geodetic"},
    {"ref/pos/gps/xyz", kXyz, "position, Cartesian"},
    {"ref/ant/id", kText, "antenna id"},
    {"ref/avg/mode", kOnOff, "averaging"},
    {"ref/avg/check", kOnOff, "check"},
    {"ref/avg/span", kInt, "span"},
    {"ref/avg/limit", kReal, "limit"},
    {"ref/avg/list/pnts/00/id", kInt, "stored point id"},
    {"ref/avg/list/pnts/00/name", kText, "stored point name"},
    {"ref/avg/list/pnts/01/date", R"(\d{4}/\d{2}/\d{2} \d{2}:\d{2}:\d{2})", "stored point date"},
    {"ref/avg/list/pnts/01/dist", kReal, "distance"},
    {"ref/avg/list/pnts/00/protect", kOnOff, "protected"},
    {"ref/avg/list/pnts/00/auto", kOnOff, "automatic"},
    {"ref/avg/list/pnts/00/arp/geo", kGeo, "stored arp geo"},
    {"ref/avg/list/pnts/00/arp/xyz", kXyz, "stored arp xyz"},
    {"ref/avg/list/pnts/01/pos/geo", kGeo, "stored pos geo"},
    {"ref/avg/list/pnts/01/pos/xyz", kXyz, "stored pos xyz"},
    {"ref/avg/list/curpnt/id", kInt, "current point id"},
    {"ref/avg/list/curpnt/name", kText, "current point name"},
    {"ref/avg/list/curpnt/arp/geo", kGeo, "current arp geo"},
    {"ref/avg/list/curpnt/arp/xyz", kXyz, "current arp xyz"},
    {"ref/avg/list/curpnt/pos/geo", kGeo, "current pos geo"},
    {"ref/avg/list/curpnt/pos/xyz", kXyz, "current pos xyz"},
    {"lock/waas/sat:on", R"(\{(\d+=[yn],?)+\})", "SBAS locks"},
    {"lock/qzss/sat:on", R"(\{(\d+=[yn],?)+\})", "QZSS locks"},
    {"lock/gps/l5", R"(\{(on|off),(on|off)\})", "L5 lock pair"},
    {"lock/elm", kInt, "lock mask"},
    {"waas/numb", kOnOff, "SBAS numbering"},
    {"waas/1/sat", kInt, "slot satellite"},
    {"waas/2/ion", "[012]", "slot iono keyword"},
    {"waas/3/instead0", kInt, "slot substitute"},
    {"pos/mode/cur", "sp|cd|pf|pd", "position mode"},
    {"pos/mode/sp", kOnOff, "single point"},
    {"pos/mode/cd", kOnOff, "code differential"},
    {"pos/dion/mode", "off|local|smooth", "DION mode"},
    {"pos/rtk/dynamic", "static|kinematic|stopandgo", "RTK dynamics"},
    {"pos/pd/aflevel", "low|medium|high", "fixing level"},
    {"pos/pd/mode", "extrap|delay", "pd output mode"},
    {"pos/pd/dyn", kReal, "pd dynamics"},
    {"pos/pd/textr", kReal, "pd extrapolation"},
    {"pos/pd/period", kReal, "pd period"},
    {"pos/pd/ver", kInt, "pd version"},
    {"pos/pdop", kReal, "PDOP mask"},
    {"pos/elm", kInt, "position mask"},
    {"out/elm/dev/ser/a", kInt, "output mask of a port"},
    {"/par/ant/inp", "int|ext|auto", "antenna input"},
    {"/par/ant/curinp", "int|ext|auto", "antenna input in use"},
    {"raw/clp/static", kOnOff, "clp static"},
    {"raw/corr/ca/code", kOnOff, "code multipath correction read as on/off"},
    {"raw/corr/ca/carrier", kOnOff, "carrier multipath correction"},
    {"ajm/mode", "gps|glo|l1|l2|auto|off|manual", "anti-jamming"},
    {"button/dyn", "static|dynamic", "button dynamics"},
    {"button/action", kText, "button action"},
    {"button/auto", kText, "button auto"},
    {"com/a/cur/report", kText, "script report"},
    {"com/a/cur/state", kText, "script state"},
    {"com/a/cur/script", kAny, "running script"},
    {"com/a/profile", kText, "script profile"},
    {"com/a/var/1/name", kText, "script variable name"},
    {"com/a/var/1/value", kText, "script variable value"},
    {"com/a/id", kText, "script port id"},
    {"com/a/scripts", R"(\{([a-z]+,?)+\})", "scripts"},
    {"com/a/profiles", R"(\{([a-z]+,?)+\})", "profiles"},
    {"\"/com/a/profile/default&size\"", kInt, "profile size (quoted form)"},
    {"/com/a/script/version&size", kInt, "script size"},
    {"/cur/term", "/dev/ser/a", "the port the command came in on"},
    {"/msg/def/nmea/GGA", kSchedule, "default schedule"},
    {"/msg/def/jps/DL", kSchedule, "default schedule of DL"},
    {"out/dev/ser/a:on", R"(\{\})", "nothing enabled at start"},
};

void PrintTo(const PrintRow& row, std::ostream* os) { *os << row.path; }

class PrintVocabulary : public ::testing::TestWithParam<PrintRow> {};

TEST_P(PrintVocabulary, AnswersWithTheExpectedShape) {
    SimReceiver sim;
    const auto& row = GetParam();
    const Reply r = sim.Run(std::string("print,") + row.path);
    EXPECT_EQ(r.status, 0) << row.path << " (" << row.legend << "): " << r.text;
    EXPECT_TRUE(Matches(r.text, row.shape)) << row.path << " (" << row.legend << "): " << r.text;
}

INSTANTIATE_TEST_SUITE_P(Catalogue, PrintVocabulary, ::testing::ValuesIn(kPrintRows));

// The port family, for every port the ports dialog can show.
struct PortField {
    const char* field;
    std::string shape;
};
const PortField kPortFields[] = {
    {"rate", "300|600|1200|2400|4800|9600|19200|38400|57600|115200|153600|230400|460800|921600"},
    {"bits", "[5678]"},
    {"parity", "N|odd|even|fodd|feven"},
    {"stops", "[12]"},
    {"rtscts", kOnOff},
    {"imode", "none|cmd|echo|rtcm|rtcm3|cmr|qls|omni|dtp|term"},
    {"echo", "/dev/[a-z]+(/[a-z])?"},
    {"dup", "/dev/[a-z]+(/[a-z])?"},
    {"eoff", kAny},
};

TEST(PortVocabulary, EveryPortAnswersEveryField) {
    SimReceiver sim;
    for (const auto port : Keywords::DevicePorts())
        for (const auto& f : kPortFields) {
            const Reply r = sim.Run("print," + std::string(port) + "/" + f.field);
            EXPECT_EQ(r.status, 0) << port << "/" << f.field;
            EXPECT_TRUE(Matches(r.text, f.shape)) << port << "/" << f.field << ": " << r.text;
            EXPECT_EQ(sim.Run("print,out/" + std::string(port) + ":on").text, "{}") << port;
        }
}

struct ListRow {
    const char* command;
    const char* expected;  // exact reply, or "" when only the shape is checked
    const char* shape;
    const char* legend;
};
const ListRow kListRows[] = {
    {"list,/par/dev/ser", "{a=port,b=port,c=port,d=port}", "", "serial group of the ports dialog"},
    {"list,/par/dev/usb", "{a=port}", "", "USB group"},
    {"list,/par/dev/tcp", "{a=port,b=port,c=port,d=port,e=port}", "", "TCP group"},
    {"list,/par/dev/mvp", "{a=port}", "", "modem link group"},
    {"list,/par/com", "{a=port}", "", "script ports"},
    {"list,/msg/qls", "{RT,PV,SI,EL,AZ,RC,PC,ET}", "", "own raw-data group"},
    {"list,/msg/nmea", "{GGA,RMC,GSA,GSV,ZDA,GST,VTG,GLL}", "", "NMEA group"},
    {"list,/msg/jps", "{DL}", "", "own messages"},
    {"list,/msg/rtcm", "{1,3,18,19,22,31,32}", "", "RTCM 2 group"},
    {"list,/msg/rtcm3", "{1004,1006,1008,1012,1033,1074,1084,1230}", "", "RTCM 3 group"},
    {"list,/msg/cmr", "{0,1,2,3}", "", "CMR group"},
    {"list,/msg/binex", "{00,01-01,7f-05}", "", "BINEX group"},
    {"list,/msg/def", "", R"(\{qls/RT,qls/PV,.*,nmea/GGA,.*,rtcm3/1004,.*,binex/7f-05,jps/DL\})", "defaults of every group"},
    {"list,/par/antdb/ids/id", "", R"(\{([A-Z0-9.\- ]+,)+[A-Z0-9.\- ]+\})", "antenna database"},
};

TEST(ListVocabulary, AnswersEveryListTheDialogsUse) {
    SimReceiver sim;
    for (const auto& row : kListRows) {
        const Reply r = sim.Run(row.command);
        EXPECT_EQ(r.status, 0) << row.command << " (" << row.legend << ")";
        if (*row.expected) {
            EXPECT_EQ(r.text, row.expected) << row.legend;
        }
        if (*row.shape) {
            EXPECT_TRUE(Matches(r.text, row.shape)) << row.legend << ": " << r.text;
        }
    }
}

TEST(ListVocabulary, EchoFormWrapsTheListInItsPath) {
    SimOptions options;
    options.listEcho = true;
    SimReceiver sim(options);
    EXPECT_EQ(sim.Run("list,/par/dev/usb").text, "{/par/dev/usb={a=port}}");
}

TEST(CurrentTerminal, NamesThePortTheCommandArrivedOn) {
    SimReceiver sim;
    EXPECT_EQ(sim.Run("print,/cur/term", "dev/tcp/b").text, "/dev/tcp/b");
    EXPECT_EQ(sim.Run("print,/cur/term", "dev/ser/a").text, "/dev/ser/a");
}

TEST(ParameterDump, IsPaddedToTheConfiguredSizeWithPathValueLines) {
    SimOptions options;
    options.dumpBytes = 2 * 1024 * 1024;
    SimReceiver sim(options);
    const std::string dump = sim.Print("/par:on");
    EXPECT_GE(dump.size(), options.dumpBytes);
    EXPECT_NE(dump.find("/par/rcv/model=FNK-600\n"), std::string::npos);
    EXPECT_NE(dump.find("/par/dev/ser/a/rate=115200\n"), std::string::npos);
    std::size_t lines = 0, start = 0;
    for (auto nl = dump.find('\n'); nl != std::string::npos; start = nl + 1, nl = dump.find('\n', start), ++lines)
        ASSERT_TRUE(Matches(dump.substr(start, nl - start), R"(/par/[^=]+=.*)")) << dump.substr(start, nl - start);
    EXPECT_GT(lines, 1000u);
}

}  // namespace
}  // namespace rcvsim::test
