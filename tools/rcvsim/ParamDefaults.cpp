#include "tools/rcvsim/ParamDefaults.h"

#include <array>

#include "tools/rcvsim/CoordText.h"
#include "tools/rcvsim/Keywords.h"

namespace rcvsim {
namespace {

using T = ValueKind::Type;
using K = Keywords;

struct Row {
    std::string path;
    ValueKind kind;
    std::string value;
    unsigned flags = 0;
};

ValueKind OnOff() { return ValueKind::Words(K::OnOff()); }
ValueKind YesNo() { return ValueKind::Words(K::YesNo()); }
ValueKind Text() { return ValueKind::Text(); }
ValueKind Int(double lo, double hi) { return ValueKind::Int(lo, hi); }
ValueKind Real(double lo, double hi, int d = 2) { return ValueKind::Real(lo, hi, d); }
ValueKind Words(std::span<const std::string_view> w) { return ValueKind::Words(w); }
ValueKind Of(T t) { return ValueKind::Of(t); }
constexpr unsigned RO = kReadOnly;
constexpr unsigned KEEP = kKeepOnReset;
constexpr double kIntMax = 2147483647.0;

// Invented antenna families and radomes of the antenna database.
// A product line of antennas: its prefix and how many models it has (numbered 1..models).
struct ANTENNA_SERIES {
    const char* prefix;
    int models;
};
// Sized like a receiver's real database: a few hundred identifiers, so that the list reply
// takes seconds at 9600 bit/s.
constexpr ANTENNA_SERIES kAntennaSeries[] = {
    {"FNK-GA", 9}, {"FNK-CR", 6}, {"FNK-MG", 4}, {"FNK-PN", 5}, {"LYN-A", 7},  {"LYN-RV", 4}, {"ARC-G", 6}, {"ARC-CHK", 3},
    {"RV-MX", 5},  {"RV-HX", 4},  {"ZED-INT", 2}, {"KOL-S", 5}, {"TRV-", 6},  {"NAV-DM", 4}, {"ORB-", 5},
};
constexpr std::array kRadomes{"NONE", "SCIS", "DOME", "SNOW", "TZGD"};

constexpr size_t AntennaCount() {
    size_t models = 0;
    for (const ANTENNA_SERIES& s : kAntennaSeries) models += static_cast<size_t>(s.models);
    return models * kRadomes.size();
}

std::vector<Row> IdentityRows() {
    return {
        {"rcv/model", Text(), "FNK-600", RO},
        {"rcv/id", Text(), "FN6K2M7Q4T", RO},
        {"rcv/sn", Text(), "8Y4K21S0057", RO},
        {"rcv/vendor", Text(), "FENK", RO},
        {"rcv/ver/main", Text(), "4.2.1 Jun,12,2024 p3", RO},
        {"rcv/ver/hw", Text(), "FNK-600 rev.C", RO},
        {"rcv/ver/board", Text(), "2.3", RO},
        {"rcv/ver/pow/hw", Int(0, 255), "3", RO},
        {"rcv/ver/pow/fw", Text(), "1.14", RO},
        {"rcv/mem", Int(0, kIntMax), "134217728", RO},
        {"cpu/frq", Int(0, 10000), "396", RO},
        {"ext/rcv/ver/main", Text(), "1.6.0 May,02,2024", RO},
        {"ext/rcv/ver/hw", Text(), "2", RO},
    };
}

// The switches' factory words, repeated for receivers with more than four.
std::vector<Row> PowerSwitchRows(const SimOptions& o) {
    constexpr const char* kFactory[] = {"on", "auto", "off", "on"};
    std::vector<Row> rows;
    for (int n = 1; n <= o.powerSwitches; ++n)
        rows.push_back({"pwr/switch/" + std::to_string(n), Words(K::PowerSwitch()), kFactory[(n - 1) % 4]});
    return rows;
}

std::vector<Row> PowerRows() {
    return {
        {"pwr/bat/a", Real(0, 40), "7.82", RO},
        {"pwr/bat/b", Real(0, 40), "7.79", RO},
        {"pwr/ext", Real(0, 40), "12.34", RO},
        {"pwr/charger", Real(0, 40), "0.00", RO},
        {"pwr/board", Real(0, 40), "7.91", RO},
        {"ext/powerup/mode", OnOff(), "off"},
        {"ext/bt/power", OnOff(), "on"},
        {"ext/bt/mux", OnOff(), "off"},
        {"ext/bt/ver/main", Text(), "3.1.7", RO},
        {"ext/bt/bdaddr", Text(), "00:1F:C8:3A:52:9E", RO},
        {"ext/bt/pincode", Text(), "1234"},
        {"ext/bt/name", Text(), "FNK-600 8Y4K21S0057"},
        {"ext/audio/vol/{1,2,3}", Int(0, 100), "70"},
        {"ext/audio/vol", Int(0, 100), "70"},
    };
}

std::vector<Row> LoggingRows() {
    return {
        {"log/rot/mode", OnOff(), "off"},
        {"log/rot/rmold", OnOff(), "off"},
        {"log/rot/sc/period", Int(1, 86400), "3600"},
        {"log/rot/sc/phase", Int(0, 86400), "0"},
        {"log/rot/sc/count", Int(0, kIntMax), "0"},
        {"log/rot/count", Int(0, kIntMax), "0", RO},
        {"log/sc/period", Real(0.05, 86400), "1.00"},
        {"log/imp", Of(T::FlagPair), "{y,n}"},
        {"cmd/create/prefix", Text(), "log"},
        {"cur/file/a", Text(), ""},
        {"cur/file/b", Text(), ""},
        {"dev/blk/a/removed", OnOff(), "off"},
        {"dev/blk/a/size", Int(0, 9e18), std::to_string(ParamDefaults::kDiskBytes), RO},
        {"dev/blk/a/free", Int(0, 9e18), std::to_string(ParamDefaults::kDiskBytes), RO},
        {"dev/blk/a/block_size", Int(0, kIntMax), std::string(ParamDefaults::kBlockSize), RO},
        {"dev/blk/a/blocks", Int(0, kIntMax), std::string(ParamDefaults::kBlocks), RO},
        {"dev/blk/a/max_files", Int(0, kIntMax), "1024", RO},
        {"dev/blk/a/files", Int(0, kIntMax), "0", RO},
        {"dev/blk/a/bad_blocks", Int(0, kIntMax), "0", RO},
        {"dev/blk/a/ver", Int(0, kIntMax), "3", RO},
        {"dev/blk/a/tfmt", Text(), "2024/06/14 09:12:44", RO},
        {"stat/fsinit", Of(T::List), "{0,0,0}", RO},
    };
}

std::vector<Row> ReferenceRows(const SimOptions& o) {
    const std::string geo = CoordText::FormatGeo(o.site);
    const std::string xyz = CoordText::FormatXyz(geodesy::ToCartesian(o.site));
    return {
        {"ref/{arp,pos}/gps/geo", Of(T::GeoCoord), geo},
        {"ref/{arp,pos}/gps/xyz", Of(T::XyzCoord), xyz},
        {"ref/ant/id", Text(), "FNK-GA3 NONE"},
        {"ref/avg/mode", OnOff(), "off"},
        {"ref/avg/check", OnOff(), "off"},
        {"ref/avg/span", Int(1, 86400), "180"},
        {"ref/avg/limit", Real(0, 10000, 3), "10.000"},
        {"ref/avg/list/curpnt/id", Int(0, 99), "0"},
        {"ref/avg/list/curpnt/name", Text(), "BASE"},
        {"ref/avg/list/curpnt/{arp,pos}/geo", Of(T::GeoCoord), geo},
        {"ref/avg/list/curpnt/{arp,pos}/xyz", Of(T::XyzCoord), xyz},
    };
}

std::vector<Row> TrackingRows() {
    return {
        {"lock/waas/sat/{120,124,126,129,131,133,135,137,138}", YesNo(), "n"},
        {"lock/qzss/sat/{193,194,195,196,197}", YesNo(), "n"},
        {"lock/gps/l5", Of(T::SwitchPair), "{off,off}"},
        {"lock/elm", Int(0, 90), "5"},
        {"waas/numb", OnOff(), "off"},
        {"waas/1/sat", Int(120, 158), "131"},
        {"waas/2/sat", Int(120, 158), "133"},
        {"waas/3/sat", Int(120, 158), "135"},
        {"waas/{1,2,3}/ion", Words(K::IonoCorrections()), "1"},
        {"waas/{1,2,3}/instead0", Int(0, 255), "0"},
        {"pos/mode/cur", Words(K::PosModes()), "sp"},
        {"pos/mode/{sp,cd}", OnOff(), "on"},
        {"pos/dion/mode", Words(K::DionModes()), "off"},
        {"pos/rtk/dynamic", Words(K::RtkDynamics()), "kinematic"},
        {"pos/pd/aflevel", Words(K::FixingLevels()), "medium"},
        {"pos/pd/mode", Words(K::OutputModes()), "delay"},
        {"pos/pd/dyn", Real(0, 1000), "1.00"},
        {"pos/pd/textr", Real(0, 3600), "10.00"},
        {"pos/pd/period", Real(0.01, 60), "1.00"},
        {"pos/pd/ver", Int(0, 255), "3", RO},
        {"pos/pdop", Real(0, 100, 1), "30.0"},
        {"pos/elm", Int(0, 90), "5"},
        {"out/elm/dev/{ser/a,ser/b,ser/c,ser/d,usb/a,tcp/a,tcp/b,tcp/c,tcp/d,tcp/e,mvp/a}",
         Int(-90, 90), "5"},
        {"pos/msint", Int(10, 10000), "100"},
        {"raw/msint", Int(10, 86400000), "1000"},
        {"ant/inp", Words(K::Antennas()), "auto"},
        {"ant/curinp", Words(K::Antennas()), "ext", RO},
        {"raw/clp/static", OnOff(), "off"},
        {"raw/corr/ca/{code,carrier}", Of(T::CorrMode), "on"},
        {"ajm/mode", Words(K::AntiJamming()), "auto"},
        {"button/dyn", Words(K::ButtonDynamics()), "static"},
        {"button/action", Words(K::ButtonActions()), "log"},
        {"button/auto", Words(K::ButtonAuto()), "off"},
        {"antdb/ids/id", Of(T::List), ParamDefaults::AntennaList(), RO},
        {"antdb/ids/count", Int(0, kIntMax),
         std::to_string(AntennaCount()), RO},
    };
}

std::vector<Row> PortRows(const SimOptions& o) {
    const std::string all = "dev/{ser/a,ser/b,ser/c,ser/d,usb/a,tcp/a,tcp/b,tcp/c,tcp/d,tcp/e,mvp/a}";
    const std::string rate = std::to_string(o.lineRate);
    return {
        {"dev/ser/a/rate", Words(K::BaudRates()), rate, KEEP},
        {"dev/ser/b/rate", Words(K::BaudRates()), "115200", KEEP},
        {"dev/ser/c/rate", Words(K::BaudRates()), "9600", KEEP},
        {"dev/ser/d/rate", Words(K::BaudRates()), "38400", KEEP},
        {"dev/{usb/a,mvp/a}/rate", Words(K::BaudRates()), "115200", KEEP},
        {"dev/tcp/{a,b,c,d,e}/rate", Words(K::BaudRates()), rate, KEEP},
        {(all + "/bits"), Words(K::ByteSizes()), "8", KEEP},
        {(all + "/parity"), Words(K::Parities()), "N", KEEP},
        {(all + "/stops"), Words(K::StopBits()), "1", KEEP},
        {(all + "/rtscts"), Words(K::OnOff()), "off", KEEP},
        {"dev/{ser/a,ser/b,ser/d,usb/a,tcp/a,tcp/b,tcp/c,tcp/d,tcp/e}/imode",
         Words(K::InputModes()), "cmd"},
        {"dev/{ser/c,mvp/a}/imode", Words(K::InputModes()), "rtcm3"},
        {(all + "/{echo,dup}"), Of(T::PortRef), "/dev/null"},
        {(all + "/{eoff,id}"), Text(), ""},
        {(all + "/{ewrap,mode}"), OnOff(), "off"},
        {"com/a/profile", Text(), "default"},
        {"com/a/id", Text(), "FNK-UHF"},
        {"com/a/mode", OnOff(), "off"},
        {"com/a/ewrap", OnOff(), "off"},
        {"com/a/cur/report", Text(), "idle", RO},
        {"com/a/cur/state", Text(), "stopped", RO},
        {"com/a/cur/script", Text(), "", RO},
        {"com/a/scripts", Of(T::List), "{}", RO},
        {"com/a/profiles", Of(T::List), "{}", RO},
        {"com/a/var/1/name", Text(), "APN"},
        {"com/a/var/1/value", Text(), "internet"},
        {"com/a/var/2/name", Text(), "USER"},
        {"com/a/var/3/name", Text(), "PASS"},
        {"com/a/var/{2,3}/value", Text(), ""},
        {"com/a/var/4/name", Text(), "PIN"},
        {"com/a/var/4/value", Text(), "0000"},
    };
}

bool IsNonSerialPort(std::string_view path) {
    for (const std::string_view group : {"dev/usb/", "dev/tcp/", "dev/mvp/", "com/"})
        if (path.starts_with(group)) return true;
    return false;
}

void AddRows(ParamTree& tree, const std::vector<Row>& rows, const SimOptions& options) {
    for (const auto& row : rows) {
        // A receiver without the extension board does not know its parameters at all.
        if (!options.extBoard && row.path.starts_with("ext/")) continue;
        const std::string& value = row.path == "rcv/model" && !options.model.empty() ? options.model : row.value;
        for (const auto& path : ParamDefaults::Expand(row.path)) {
            if (options.serialPortsOnly && IsNonSerialPort(path)) continue;
            tree.Add(path, row.kind, value, row.flags);
        }
    }
}

}  // namespace

std::vector<std::string> ParamDefaults::Expand(std::string_view pattern) {
    const auto open = pattern.find('{');
    if (open == std::string_view::npos) return {std::string(pattern)};
    const auto close = pattern.find('}', open);
    if (close == std::string_view::npos) return {std::string(pattern)};
    std::vector<std::string> out;
    const std::string_view head = pattern.substr(0, open);
    const std::string_view tail = pattern.substr(close + 1);
    std::string_view alternatives = pattern.substr(open + 1, close - open - 1);
    while (true) {
        const auto comma = alternatives.find(',');
        const std::string_view alt = alternatives.substr(0, comma);
        for (auto& rest : Expand(tail)) out.push_back(std::string(head) + std::string(alt) + rest);
        if (comma == std::string_view::npos) break;
        alternatives.remove_prefix(comma + 1);
    }
    return out;
}

std::string ParamDefaults::AntennaList() {
    std::string list = "{";
    for (const ANTENNA_SERIES& series : kAntennaSeries)
        for (int model = 1; model <= series.models; ++model)
            for (const char* radome : kRadomes) {
                if (list.size() > 1) list += ',';
                list += std::string(series.prefix) + std::to_string(model) + ' ' + radome;
            }
    return list + "}";
}

void ParamDefaults::Fill(ParamTree& tree, const SimOptions& options) {
    AddRows(tree, IdentityRows(), options);
    AddRows(tree, PowerRows(), options);
    AddRows(tree, PowerSwitchRows(options), options);
    AddRows(tree, LoggingRows(), options);
    AddRows(tree, ReferenceRows(options), options);
    AddRows(tree, TrackingRows(), options);
    AddRows(tree, PortRows(options), options);
}

}  // namespace rcvsim
