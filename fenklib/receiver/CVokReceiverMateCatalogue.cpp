// Catalogue operations whose commands or replies have a shape of their own.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cwchar>

#include "fenklib/receiver/CVokReceiverMateCore.h"
#include "platform/basekit/CCommException.h"

namespace devio {

namespace {

constexpr unsigned kDisableTimeoutMs = 20000;
constexpr unsigned kAntennaListTimeoutMs = 60000;
constexpr const wchar_t* kWrongCommand = L"{2,,wrong command}";
constexpr const wchar_t* kWrongParameter = L"{2,,wrong 1st parameter}";

std::vector<ustring> BracedList(const ustring& reply) {
    ustring inner = reply;
    CVokReceiverMateCore::ExtractBracedText(reply, false, inner);
    std::vector<ustring> items;
    CVokReceiverMateCore::SplitTopLevelList(inner, items);
    return items;
}

// "name = value" split at the first equals sign, the name trimmed of blanks.
bool SplitPair(const ustring& item, ustring& name, ustring& value) {
    const size_t eq = item.find(L'=');
    if (eq == ustring::npos) return false;
    name = ustring(item.substr(0, eq)).Trim();
    value = item.substr(eq + 1);
    return true;
}

// d, m, s of an angle's absolute value; s is the remainder in seconds.
// Rounded to the six decimals of the text first, in whole microseconds of arc, so that an
// angle a hair below a whole minute reads 01m00.000000s and never 00m60.000000s.
void SplitAngle(double a, int& d, int& m, double& s) {
    constexpr long long kPerSecond = 1000000, kPerMinute = 60 * kPerSecond, kPerDegree = 60 * kPerMinute;
    const long long micro = std::llround(std::fabs(a) * static_cast<double>(kPerDegree));
    d = static_cast<int>(micro / kPerDegree);
    m = static_cast<int>(micro % kPerDegree / kPerMinute);
    s = static_cast<double>(micro % kPerMinute) / kPerSecond;
}

bool ParseAngle(const ustring& text, wchar_t negative, double& out) {
    wchar_t hemi = 0;
    int d = 0, m = 0;
    double s = 0;
    const basekit::CCLocaleScope cLocale;
    if (std::swscanf(text.c_str(), L" %lc%dd%dm%lfs", &hemi, &d, &m, &s) != 4) return false;
    out = d + m / 60.0 + s / 3600.0;
    if (hemi == negative) out = -out;
    return true;
}

}  // namespace

ustring CVokReceiverMateCore::GetPowerBoardFirmware() { return Get(par::RcvVerPowFw); }

std::vector<ustring> CVokReceiverMateCore::GetPowerSwitches() {
    return BracedList(ExecuteCommand(L"print,pwr/switch:on", true));
}

std::vector<int> CVokReceiverMateCore::ListPowerSwitches() {
    std::vector<int> numbers;
    for (const ustring& item : GetPowerSwitches()) {
        ustring name, value;
        if (!SplitPair(item, name, value)) continue;
        const int n = static_cast<int>(std::wcstol(name.c_str(), nullptr, 10));
        if (n > 0) numbers.push_back(n);
    }
    return numbers;
}

bool CVokReceiverMateCore::IsUnknownParameter(const basekit::CCommException& e) { return e.Reply() == kWrongParameter; }

void CVokReceiverMateCore::SendBluetoothEscape() { SendRawString(L"#OFF#"); }

std::vector<vok::SAT_LOCK> CVokReceiverMateCore::GetSatLocks(const ustring& system) {
    std::vector<vok::SAT_LOCK> locks;
    for (const ustring& item : BracedList(ExecuteCommand(L"print,lock/" + system + L"/sat:on"))) {
        int sat = 0;
        wchar_t flag = 0;
        if (std::swscanf(item.c_str(), L"%d=%lc", &sat, &flag) == 2) locks.push_back({sat, flag == L'y'});
    }
    return locks;
}

void CVokReceiverMateCore::SetSatLocks(const ustring& system, const std::vector<vok::SAT_LOCK>& locks) {
    ustring list;
    for (const auto& lock : locks) {
        if (!list.empty()) list += L',';
        list += ustring::Format(L"%d=%s", lock.satellite, lock.locked ? L"y" : L"n");
    }
    CheckCommandArgument(system, false);
    ExecuteCommand(ustring::Format(L"set,lock/%s/sat,{%s}", system, list));
}

bool CVokReceiverMateCore::GetGpsL5Lock() {
    const std::vector<ustring> items = BracedList(ExecuteCommand(L"print,lock/gps/l5", true));
    return items.size() >= 2 && ParseOnOff(items[1]);
}

void CVokReceiverMateCore::SetGpsL5Lock(bool on) {
    ExecuteCommand(ustring::Format(L"set,lock/gps/l5,{off,%s}", FormatOnOff(on)));
}

void CVokReceiverMateCore::GetLogImp(bool& first, bool& second) {
    wchar_t a = 0, b = 0;
    const ustring reply = ExecuteCommand(L"print,log/imp");
    const int n = std::swscanf(reply.c_str(), L"{%lc,%lc}", &a, &b);
    first = n >= 1 && a == L'y';
    second = n >= 2 && b == L'y';
}

void CVokReceiverMateCore::SetLogImp(bool first, bool second) {
    ExecuteCommand(ustring::Format(L"set,log/imp,{%s,%s}", first ? L"y" : L"n", second ? L"y" : L"n"));
}

ustring CVokReceiverMateCore::GetCurrentFile(wchar_t channel) {
    ustring name = ExecuteCommand(ustring::Format(L"print,/cur/file/%c", channel), true);
    for (size_t at = name.find(L"/log/"); at != ustring::npos; at = name.find(L"/log/")) name.erase(at, 5);
    return name;
}

void CVokReceiverMateCore::SetCurrentFile(wchar_t channel, const ustring& name) {
    CheckCommandArgument(name, true);
    ExecuteCommand(ustring::Format(L"set,/cur/file/%c,\"%s\"", channel, name));
}

std::vector<int> CVokReceiverMateCore::GetFsInitState() {
    std::vector<int> values;
    for (const ustring& item : BracedList(ExecuteCommand(L"print,stat/fsinit", true)))
        values.push_back(conv::Int::Parse(item));
    return values;
}

ustring CVokReceiverMateCore::GetFileList(unsigned timeoutMs) {
    return ExecuteCommand(L"print,/log/&[name,size,time]", false, timeoutMs);
}

std::vector<vok::LOG_FILE> CVokReceiverMateCore::ListLogFiles(unsigned timeoutMs) { return ParseFileList(GetFileList(timeoutMs)); }

std::vector<vok::LOG_FILE> CVokReceiverMateCore::ParseFileList(const ustring& reply) {
    std::vector<vok::LOG_FILE> files;
    ustring inner;
    if (!ExtractBracedText(reply, false, inner)) return files;
    std::vector<ustring> entries;
    SplitTopLevelList(inner, entries);
    for (const ustring& entry : entries) {
        ustring fields;
        std::vector<ustring> parts;
        if (!ExtractBracedText(entry, false, fields)) continue;
        SplitTopLevelList(fields, parts);
        if (parts.size() < 3 || parts[0].empty()) continue;
        wchar_t* end = nullptr;
        const unsigned long long size = std::wcstoull(parts[1].c_str(), &end, 10);
        if (end == parts[1].c_str()) continue;
        files.push_back(vok::LOG_FILE{parts[0], size, parts[2]});
    }
    return files;
}

void CVokReceiverMateCore::Identify(unsigned timeoutMs, ustring& model, ustring& serial, ustring& firmware) {
    model = ExecuteCommand(L"print," + ustring(par::RcvModel.path), true, timeoutMs);
    serial = ExecuteCommand(L"print," + ustring(par::RcvSn.path), true, timeoutMs);
    firmware = ExecuteCommand(L"print," + ustring(par::RcvVerMain.path), true, timeoutMs);
}

ustring CVokReceiverMateCore::ReadSettingsListing(const std::function<void(std::uint64_t, int, int)>& onReply) {
    // A listing may reach megabytes on a full receiver; the time-out follows from that size.
    constexpr unsigned kListingBytes = 16u * 1024u * 1024u;
    constexpr const wchar_t* kQueries[] = {L"print,/par:on", L"print,/dev/blk/a&blocks:on", L"print,/dev/blk/a&block_size:on"};
    constexpr int kParts = static_cast<int>(std::size(kQueries));
    const unsigned timeout = GetCommandTimeout(kListingBytes);
    ustring listing;
    int done = 0;
    const CReplyBytesScope bytes(*this, [&](std::uint64_t received) {
        if (onReply) onReply(listing.size() + received, done, kParts);
    });
    for (; done < kParts; ++done) {
        if (done > 0) listing += L"\r\n";
        listing += ExecuteCommand(kQueries[done], false, timeout);
        if (onReply) onReply(listing.size(), done + 1, kParts);
    }
    return listing;
}

std::uint64_t CVokReceiverMateCore::GetFileSize(const ustring& path) {
    CheckCommandArgument(path, true);
    return std::wcstoull(ExecuteCommand(ustring::Format(L"print,\"%s\"&size", path), true).c_str(), nullptr, 10);
}

// The block comes as binary; its bytes are taken as received, not through the reply's text.
std::string CVokReceiverMateCore::ReadFileBlock(const ustring& path, std::uint64_t offset, std::uint64_t length) {
    CheckCommandArgument(path, true);
    const ustring command = ustring::Format(L"print,\"%s\"&content:{%llu,%llu}", path, static_cast<unsigned long long>(offset),
                                            static_cast<unsigned long long>(length));
    return Exchange(command, GetCommandTimeout(static_cast<unsigned>(length)), true, true).payload;
}

// Blocks go as hexadecimal digits: a command line holds text only.
void CVokReceiverMateCore::WriteFileBlock(const ustring& path, std::uint64_t offset, std::string_view bytes) {
    static constexpr wchar_t kDigits[] = L"0123456789abcdef";
    CheckCommandArgument(path, true);
    ustring command = ustring::Format(L"set,\"%s\"&upload:{%llu},", path, static_cast<unsigned long long>(offset));
    command.reserve(command.size() + 2 * bytes.size());
    for (const char c : bytes) {
        const auto b = static_cast<unsigned char>(c);
        command += kDigits[b >> 4];
        command += kDigits[b & 0x0F];
    }
    ExecuteCommand(command, false, GetCommandTimeout(static_cast<unsigned>(command.size())));
}

void CVokReceiverMateCore::CommitFileUpload(const ustring& path, std::uint64_t size) {
    CheckCommandArgument(path, true);
    ExecuteCommand(ustring::Format(L"set,\"%s\"&commit,%llu", path, static_cast<unsigned long long>(size)));
}

void CVokReceiverMateCore::DiscardFileUpload(const ustring& path) {
    CheckCommandArgument(path, true);
    ExecuteCommand(ustring::Format(L"set,\"%s\"&discard,y", path));
}

ustring CVokReceiverMateCore::FormatW84(const vok::POS_GEO& pos) {
    int ld = 0, lm = 0, od = 0, om = 0;
    double ls = 0, os = 0;
    SplitAngle(pos.lat, ld, lm, ls);
    SplitAngle(pos.lon, od, om, os);
    return ustring::Format(L"{W84,%c%02dd%02dm%fs,%c%03dd%02dm%fs,%f}", pos.lat < 0 ? L'S' : L'N', ld, lm, ls,
                           pos.lon < 0 ? L'W' : L'E', od, om, os, pos.height);
}

ustring CVokReceiverMateCore::FormatW84(const vok::POS_XYZ& pos) {
    return ustring::Format(L"{W84,%.4f,%.4f,%.4f}", pos.x, pos.y, pos.z);
}

vok::POS_GEO CVokReceiverMateCore::ParseW84Geo(const ustring& reply) {
    vok::POS_GEO pos;
    const std::vector<ustring> items = BracedList(reply);
    if (items.size() < 4) return pos;
    if (!ParseAngle(items[1], L'S', pos.lat) || !ParseAngle(items[2], L'W', pos.lon)) return vok::POS_GEO{};
    pos.height = conv::Real::Parse(items[3]);
    return pos;
}

vok::POS_XYZ CVokReceiverMateCore::ParseW84Xyz(const ustring& reply) {
    const std::vector<ustring> items = BracedList(reply);
    if (items.size() < 4) return {};
    return {conv::Real::Parse(items[1]), conv::Real::Parse(items[2]), conv::Real::Parse(items[3])};
}

void CVokReceiverMateCore::SetReferencePosition(const wchar_t* which, const vok::POS_GEO& pos) {
    ExecuteCommand(ustring::Format(L"set,ref/%s//geo,%s", which, FormatW84(pos)));
}
void CVokReceiverMateCore::SetReferencePosition(const wchar_t* which, const vok::POS_XYZ& pos) {
    ExecuteCommand(ustring::Format(L"set,ref/%s//xyz,%s", which, FormatW84(pos)));
}
vok::POS_GEO CVokReceiverMateCore::GetReferenceGeo(const wchar_t* which) {
    return ParseW84Geo(ExecuteCommand(ustring::Format(L"print,ref/%s/gps/geo", which)));
}
vok::POS_XYZ CVokReceiverMateCore::GetReferenceXyz(const wchar_t* which) {
    return ParseW84Xyz(ExecuteCommand(ustring::Format(L"print,ref/%s/gps/xyz", which)));
}
void CVokReceiverMateCore::SetCurrentPointPosition(const wchar_t* which, const vok::POS_GEO& pos) {
    ExecuteCommand(ustring::Format(L"set,ref/avg/list/curpnt/%s/geo,%s", which, FormatW84(pos)));
}
void CVokReceiverMateCore::SetCurrentPointPosition(const wchar_t* which, const vok::POS_XYZ& pos) {
    ExecuteCommand(ustring::Format(L"set,ref/avg/list/curpnt/%s/xyz,%s", which, FormatW84(pos)));
}
vok::POS_GEO CVokReceiverMateCore::GetCurrentPointGeo(const wchar_t* which) {
    return ParseW84Geo(ExecuteCommand(ustring::Format(L"print,ref/avg/list/curpnt/%s/geo", which)));
}
vok::POS_XYZ CVokReceiverMateCore::GetCurrentPointXyz(const wchar_t* which) {
    return ParseW84Xyz(ExecuteCommand(ustring::Format(L"print,ref/avg/list/curpnt/%s/xyz", which)));
}
vok::POS_GEO CVokReceiverMateCore::GetStoredPointGeo(int index, const wchar_t* which) {
    return ParseW84Geo(ExecuteCommand(ustring::Format(L"print,ref/avg/list/pnts/%02d/%s/geo", index, which)));
}
vok::POS_XYZ CVokReceiverMateCore::GetStoredPointXyz(int index, const wchar_t* which) {
    return ParseW84Xyz(ExecuteCommand(ustring::Format(L"print,ref/avg/list/pnts/%02d/%s/xyz", index, which)));
}

void CVokReceiverMateCore::SetSerialParameters(vok::EDev port, vok::EBaudRate rate, vok::ERtsControl rts,
                                               vok::EStopBits stops, vok::EParity parity, vok::EByteSize bits) {
    const ustring p = vok::ToKeyword(port);
    // The receiver answers at the new settings, so no reply is waited for.
    ExecuteCommand(ustring::Format(L"set,%s/rate,%s;set,%s/rtscts,%s;set,%s/stops,%s;set,%s/parity,%s;set,%s/bits,%s",
                                   p, vok::ToKeyword(rate), p, vok::ToKeyword(rts), p, vok::ToKeyword(stops), p,
                                   vok::ToKeyword(parity), p, vok::ToKeyword(bits)),
                   false, 0, false, false);
}

std::vector<ustring> CVokReceiverMateCore::GetPortScriptList(vok::EDev port, const wchar_t* which) {
    return BracedList(ExecuteCommand(ustring::Format(L"print,%s/%s", vok::ToKeyword(port), which), true));
}

std::vector<ustring> CVokReceiverMateCore::GetPortScriptList(vok::ECom port, const wchar_t* which) {
    return BracedList(ExecuteCommand(ustring::Format(L"print,%s/%s", vok::ToKeyword(port), which), true));
}

ustring CVokReceiverMateCore::GetScriptVariableName(const ustring& port, int index) {
    try {
        return Get(par::PortVarName, port, index);
    } catch (const basekit::CCommException& e) {
        if (e.Reply() == kWrongParameter) return {};
        throw;
    }
}

void CVokReceiverMateCore::SendEvent(const ustring& name, const ustring& value) {
    CheckCommandArgument(name, true);
    CheckCommandArgument(value, true);
    ExecuteCommand(ustring::Format(L"event,\"%s=%s\"", name, value));
}

std::vector<ustring> CVokReceiverMateCore::ListParameterNames(const ustring& portClass) {
    ustring reply;
    try {
        reply = ExecuteCommand(L"list,/par/" + portClass, true);
    } catch (const basekit::CCommException& e) {
        if (e.Reply() == kWrongCommand || e.Reply() == kWrongParameter) return {};
        throw;
    }
    // A receiver that echoes the path wraps the list in one more pair of braces.
    if (reply.find(L"/par/") != ustring::npos) ExtractBracedText(reply, false, reply);
    std::vector<ustring> names;
    for (const ustring& item : BracedList(reply)) {
        ustring name, value;
        if (!SplitPair(item, name, value)) name = ustring(item).Trim();
        if (!name.empty()) names.push_back(name);
    }
    return names;
}

std::vector<vok::EDev> CVokReceiverMateCore::ListPorts(const ustring& portClass) {
    std::vector<vok::EDev> ports;
    for (const ustring& name : ListParameterNames(portClass)) {
        const vok::EDev dev = vok::FromKeyword<vok::EDev>(ustring::Format(L"%s/%s", portClass, name));
        if (std::find(ports.begin(), ports.end(), dev) == ports.end()) ports.push_back(dev);
    }
    return ports;
}

std::vector<vok::EDev> CVokReceiverMateCore::ListOutputPorts() {
    std::vector<vok::EDev> ports;
    for (const wchar_t* portClass : {L"dev/ser", L"dev/usb", L"dev/tcp", L"dev/mvp"})
        for (const vok::EDev dev : ListPorts(portClass)) ports.push_back(dev);
    return ports;
}

std::vector<vok::ECom> CVokReceiverMateCore::ListScriptPorts() {
    std::vector<vok::ECom> ports;
    for (const ustring& name : ListParameterNames(L"com")) {
        const vok::ECom com = vok::FromKeyword<vok::ECom>(L"com/" + name);
        if (std::find(ports.begin(), ports.end(), com) == ports.end()) ports.push_back(com);
    }
    return ports;
}

std::vector<ustring> CVokReceiverMateCore::ListAntennaIds() {
    return BracedList(ExecuteCommand(L"list,/par/antdb/ids/id", true, kAntennaListTimeoutMs));
}

std::vector<ustring> CVokReceiverMateCore::ListMessages(const ustring& group) {
    CheckCommandArgument(group, false);
    return BracedList(ExecuteCommand(L"list,/msg/" + group, true));
}

void CVokReceiverMateCore::EnableMessages(vok::EDev port, const ustring& list) {
    ExecuteCommand(ustring::Format(L"em,/%s,%s", vok::ToKeyword(port), list));
}

ustring CVokReceiverMateCore::FormatSchedule(const vok::MSG& msg) {
    return ustring::Format(L"{%f,%f,%d,0x%x}", msg.period, msg.phase, msg.count, msg.flags);
}

void CVokReceiverMateCore::EnableMessage(vok::EDev port, const vok::MSG& msg) {
    CheckCommandArgument(msg.name, false);
    ExecuteCommand(ustring::Format(L"em,/%s,%s:%s", vok::ToKeyword(port), msg.name, FormatSchedule(msg)));
}

bool CVokReceiverMateCore::StartLiveOutput(vok::EDev port) {
    static constexpr const wchar_t* kLiveOutput =
        L"/msg/nmea/GGA:{1,0,0,0x0},/msg/nmea/GSA:{1,0,0,0x0},/msg/nmea/GSV:{1,0,0,0x0},"
        L"/msg/nmea/ZDA:{1,0,0,0x0},/msg/nmea/GST:{1,0,0,0x0},/msg/fnk/DL:{1,0,0,0x0}";
    if (!GetPortMessages(port).empty()) return false;
    EnableMessages(port, kLiveOutput);
    return true;
}

void CVokReceiverMateCore::DisableMessages(vok::EDev port) {
    ExecuteCommand(ustring::Format(L"dm,/%s", vok::ToKeyword(port)), false, kDisableTimeoutMs);
}

vok::MSG CVokReceiverMateCore::ParseSchedule(const ustring& name, const ustring& braced, bool& ok) {
    vok::MSG msg;
    msg.name = name;
    ustring inner;
    ok = ExtractBracedText(braced, false, inner);
    std::vector<ustring> fields;
    if (ok) SplitTopLevelList(inner, fields);
    ok = ok && fields.size() == 4 && std::swscanf(fields[3].c_str(), L" 0x%x", &msg.flags) == 1;
    if (!ok) return msg;
    msg.period = conv::Real::Parse(fields[0]);
    msg.phase = conv::Real::Parse(fields[1]);
    msg.count = conv::Int::Parse(fields[2]);
    return msg;
}

std::vector<vok::MSG> CVokReceiverMateCore::GetPortMessages(vok::EDev port) {
    std::vector<vok::MSG> messages;
    for (const ustring& item : BracedList(ExecuteCommand(ustring::Format(L"print,out/%s:on", vok::ToKeyword(port))))) {
        ustring name, value;
        bool ok = false;
        if (!SplitPair(item, name, value)) continue;
        const vok::MSG msg = ParseSchedule(name, value, ok);
        if (ok) messages.push_back(msg);
    }
    return messages;
}

void CVokReceiverMateCore::SetPortMessages(vok::EDev port, const std::vector<vok::MSG>& messages) {
    for (const vok::MSG& msg : messages) CheckCommandArgument(msg.name, false);   // nothing is sent for a bad list
    DisableMessages(port);
    for (const vok::MSG& msg : messages) EnableMessage(port, msg);
}

vok::MSG CVokReceiverMateCore::GetDefaultSchedule(const ustring& name) {
    CheckCommandArgument(name, false);
    bool ok = false;
    return ParseSchedule(name, ExecuteCommand(L"print,/msg/def/" + name, true), ok);
}

void CVokReceiverMateCore::SetDefaultSchedule(const vok::MSG& msg) {
    CheckCommandArgument(msg.name, false);
    ExecuteCommand(ustring::Format(L"set,/msg/def/%s,%s", msg.name, FormatSchedule(msg)));
}

void CVokReceiverMateCore::InitItem(const ustring& item) {
    CheckCommandArgument(item, false);
    ExecuteCommand(L"init," + item);
}

void CVokReceiverMateCore::CreateItem(const ustring& item) {
    CheckCommandArgument(item, false);
    ExecuteCommand(L"create," + item);
}

void CVokReceiverMateCore::RemoveItem(const ustring& item) {
    CheckCommandArgument(item, true);
    ExecuteCommand(L"remove,\"" + item + L"\"");
}

}  // namespace devio
