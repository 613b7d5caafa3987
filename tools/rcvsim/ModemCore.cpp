#include "tools/rcvsim/ModemCore.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdlib>

namespace rcvsim {
namespace {

constexpr int kWriteLog = 1000;
constexpr const char* kProtocols[] = {"SATELLINE-3AS", "PacCrest-4FSK", "PacCrest-GMSK",
                                      "PacCrest-FST",  "TrimTalk450s",  "TrimMark III"};
constexpr int kProtocolCount = 6;
// +CME ERROR numbers (3GPP TS 27.007): 3 operation not allowed, 12 SIM PUK required, 16 incorrect password.
constexpr const char* kCmeNotAllowed = "+CME ERROR: 3";
constexpr const char* kCmePukRequired = "+CME ERROR: 12";
constexpr const char* kCmeWrongPin = "+CME ERROR: 16";

std::string Fixed(double v, int decimals) {
    char buffer[64];
    const auto r = std::to_chars(buffer, buffer + sizeof buffer, v, std::chars_format::fixed, decimals);
    return std::string(buffer, r.ptr);
}

// A number as the radios take it: digits and one decimal point; a comma makes it no number.
bool Number(std::string_view text, double& out) {
    if (text.empty() || text.find(',') != std::string_view::npos) return false;
    const auto r = std::from_chars(text.data(), text.data() + text.size(), out, std::chars_format::fixed);
    return r.ec == std::errc() && r.ptr == text.data() + text.size() && std::isfinite(out);
}

bool Integer(std::string_view text, long long& out) {
    if (text.empty()) return false;
    const auto r = std::from_chars(text.data(), text.data() + text.size(), out);
    return r.ec == std::errc() && r.ptr == text.data() + text.size();
}

std::string Hex4(unsigned v) {
    static const char* digits = "0123456789ABCDEF";
    std::string s(4, '0');
    for (int i = 3; i >= 0; --i, v >>= 4) s[static_cast<size_t>(i)] = digits[v & 15];
    return s;
}

std::vector<std::string_view> Split(std::string_view text, char sep) {
    std::vector<std::string_view> out;
    for (;;) {
        const size_t at = text.find(sep);
        out.push_back(text.substr(0, at));
        if (at == std::string_view::npos) return out;
        text.remove_prefix(at + 1);
    }
}

}  // namespace

bool ModemFaults::Silent(std::string_view line) const {
    if (silenceAll) return true;
    return std::any_of(silentCommands.begin(), silentCommands.end(), [&](const std::string& p) { return Matches(line, p); });
}

int ModemFaults::LatencyFor(std::string_view line) const { return Matches(line, latencyCommand) ? latencyMs : 0; }

bool ModemFaults::RefusesSetting(std::string_view line) const {
    if (line.find('=') == std::string_view::npos) return false;
    return std::any_of(errorCommands.begin(), errorCommands.end(), [&](const std::string& p) { return Matches(line, p); });
}

ModemCore::ModemCore(ModemOptions options, std::shared_ptr<const SimClock> clock)
    : options_(std::move(options)), clock_(std::move(clock)), faults_(options_.faults) {
    model_ = !options_.model.empty() ? options_.model : options_.kind == ModemKind::Uhf ? "FR-400" : "CM-27";
    // The by-name model has fewer power levels: a power between them is rounded to the nearest.
    powerLevels_ = model_ == "FR-460" ? std::vector<int>{100, 500, 1000} : std::vector<int>{10, 20, 50, 100, 200, 500, 1000};
    for (int i = 0; i < kMaxChannels; ++i)
        channels_.push_back(Channel{i + 1, 430.150 + 0.025 * i, i % 2 ? 25.0 : 12.5, i % 3 ? 500 : 1000});
    sim_ = options_.simLocked ? Sim::Pin : Sim::Ready;
    readySince_ = clock_->Now();
}

std::vector<std::string> ModemCore::Writes() const {
    const std::lock_guard lock(mutex_);
    return writes_;
}

ModemFaults ModemCore::Faults() const {
    const std::lock_guard lock(mutex_);
    return faults_;
}

void ModemCore::SetFaults(const ModemFaults& faults) {
    const std::lock_guard lock(mutex_);
    faults_ = faults;
}

void ModemCore::NoteWrite(std::string_view line) {
    if (line.find('=') == std::string_view::npos) return;
    writes_.emplace_back(line);
    if (writes_.size() > kWriteLog) writes_.erase(writes_.begin());
}

std::string ModemCore::Execute(std::string_view line) {
    if (IsSimLine(line)) return ExecuteSim(line);
    const std::lock_guard lock(mutex_);
    return options_.kind == ModemKind::Uhf ? ExecuteUhf(line) : ExecuteCellular(line);
}

// ---- the simulator's own lines ----

std::string ModemCore::ExecuteSim(std::string_view line) {
    const auto f = Split(line.substr(4), ',');
    const std::string_view what = f[0];
    const std::string arg = f.size() > 1 ? std::string(f[1]) : std::string();
    long long n = 0;
    const std::lock_guard lock(mutex_);
    if (what == "latency" && Integer(arg, n)) {
        faults_.latencyMs = static_cast<int>(n);
        faults_.latencyCommand = f.size() > 2 ? std::string(f[2]) : std::string();
    } else if (what == "silence" && arg == "off") {
        faults_.silenceAll = false;
        faults_.silentCommands.clear();
    } else if (what == "silence" && arg == "*") {
        faults_.silenceAll = true;
    } else if (what == "silence" && !arg.empty()) {
        faults_.silentCommands.push_back(arg);
    } else if (what == "garbage" && Integer(arg, n)) {
        faults_.garbageEveryMs = static_cast<int>(n);
        long long bytes = 16;
        if (f.size() > 2 && Integer(f[2], bytes)) faults_.garbageBytes = static_cast<int>(bytes);
    } else if (what == "dropafter" && Integer(arg, n)) {
        faults_.dropAfterMs = static_cast<int>(n);
    } else if (what == "error" && arg == "off") {
        faults_.errorCommands.clear();
    } else if (what == "error" && !arg.empty()) {
        faults_.errorCommands.push_back(arg);
    } else if (what == "clear") {
        faults_ = ModemFaults{};
    } else {
        return "ERROR\r\n";
    }
    return "OK\r\n";
}

// ---- UHF radio ----

std::string ModemCore::Uhf(const std::string& text) const { return text + (model_ == "FR-460" ? "\r\n" : "\r"); }

int ModemCore::RoundPower(int mw) const {
    int best = powerLevels_.front();
    for (const int level : powerLevels_)
        if (std::abs(level - mw) < std::abs(best - mw)) best = level;
    return best;
}

int ModemCore::FieldStrength() const {
    // The last received message's strength wanders as the base's signal fades and returns.
    const double t = clock_->Now();
    return static_cast<int>(std::lround(-97 + 6 * std::sin(t / 7.0) + 2 * std::sin(t / 1.3)));
}

std::string ModemCore::ExecuteUhf(std::string_view line) {
    if (line.substr(0, 2) != "SL" || line.size() < 5) return {};   // not for the radio's command mode
    const std::string_view key = line.substr(2, 2);
    const char op = line[4];
    const std::string_view rest = line.substr(5);
    if (op == '?') return UhfQuery(key, rest);
    if (op != '=') return Uhf("ERROR");
    if (faults_.RefusesSetting(line)) return Uhf("ERROR");
    const std::string answer = UhfSet(key, rest);
    if (answer == "OK") NoteWrite(line);
    return Uhf(answer);
}

std::string ModemCore::UhfQuery(std::string_view key, std::string_view arg) {
    const bool byName = model_ == "FR-460";
    if (key == "$L") {
        long long i = 0;
        if (!Integer(arg, i) || i < 0 || i >= static_cast<long long>(channels_.size())) return Uhf("ERROR");
        const Channel& c = channels_[static_cast<size_t>(i)];
        return Uhf("CH " + std::to_string(c.number) + ", " + Fixed(c.frequency, 6) + " MHz, " + Fixed(c.spacing, 1) +
                   " kHz, " + std::to_string(c.power) + " mW");
    }
    if (!arg.empty()) return Uhf("ERROR");
    if (key == "%P") return Uhf(model_);
    if (key == "%V") return Uhf(byName ? "4.12.0" : "3.58.2");
    if (key == "%S") return Uhf(byName ? "46000217" : "40123456");
    if (key == "&F") return Uhf(Fixed(frequency_, 5) + " MHz");
    if (key == "&C") return Uhf(Fixed((low_ + high_) / 2, 5) + " MHz");
    if (key == "&W") return Uhf(Fixed(spacing_, 1) + " kHz");
    if (key == "!D") return Uhf(Fixed(low_, 5) + " MHz");
    if (key == "!U") return Uhf(Fixed(high_, 5) + " MHz");
    if (key == "@P") return Uhf(std::to_string(power_) + " mW");
    if (key == "@R") return Uhf(std::to_string(FieldStrength()) + " dBm");
    if (key == "#I") return Uhf(Hex4(address_) + ";" + Hex4(address_));
    if (key == "$C") return Uhf(std::to_string(channels_.size()));
    if (key == "$F") return Uhf(std::to_string(activeChannel_));
    if (key == "$M") return Uhf(listOn_ ? "1" : "0");
    if (key == "$D") return Uhf(channels_.empty() ? "0" : std::to_string(channels_.front().number));
    if (!byName && key == "@S") return Uhf(std::to_string(protocol_));
    if (!byName && key == "@F") return Uhf(fec_ ? "1" : "0");
    if (byName && key == "+P") return Uhf(kProtocols[protocol_]);
    if (byName && key == "+F") return Uhf(fec_ ? "ON" : "OFF");
    return Uhf("ERROR");
}

std::string ModemCore::UhfSet(std::string_view key, std::string_view value) {
    const bool byName = model_ == "FR-460";
    double v = 0;
    long long n = 0;
    if (key == "&F") {
        if (!Number(value, v) || v < low_ || v > high_) return "ERROR";
        frequency_ = std::round(v * 1e5) / 1e5;
        return "OK";
    }
    if (key == "&W") {
        if (!Number(value, v) || (v != 12.5 && v != 20.0 && v != 25.0)) return "ERROR";
        spacing_ = v;
        return "OK";
    }
    if (key == "@P") {
        if (!Integer(value, n) || n < 0 || n > 99999) return "ERROR";
        power_ = RoundPower(static_cast<int>(n));
        return "OK";
    }
    if (key == "#I") {
        unsigned a = 0;
        const auto r = std::from_chars(value.data(), value.data() + value.size(), a, 16);
        if (value.empty() || value.size() > 4 || r.ptr != value.data() + value.size()) return "ERROR";
        address_ = a;
        return "OK";
    }
    if (key == "$C") {
        if (!Integer(value, n) || n < 0 || n > kMaxChannels) return "ERROR";
        channels_.resize(static_cast<size_t>(n));
        return "OK";
    }
    if (key == "$L") {
        // "Iaa,Nbbbbbb,Fccc.cccccc,Wdd.ddd,Peeeee"
        const auto f = Split(value, ',');
        long long index = 0, number = 0, power = 0;
        double freq = 0, spacing = 0;
        if (f.size() != 5 || f[0].substr(0, 1) != "I" || f[1].substr(0, 1) != "N" || f[2].substr(0, 1) != "F" ||
            f[3].substr(0, 1) != "W" || f[4].substr(0, 1) != "P" || !Integer(f[0].substr(1), index) ||
            !Integer(f[1].substr(1), number) || !Number(f[2].substr(1), freq) || !Number(f[3].substr(1), spacing) ||
            !Integer(f[4].substr(1), power))
            return "ERROR";
        if (index < 0 || index >= static_cast<long long>(channels_.size()) || freq < low_ || freq > high_ ||
            (spacing != 12.5 && spacing != 20.0 && spacing != 25.0) || power < 0 || power > 99999)
            return "ERROR";
        channels_[static_cast<size_t>(index)] =
            Channel{static_cast<int>(number), freq, spacing, power == 0 ? 0 : RoundPower(static_cast<int>(power))};
        return "OK";
    }
    if (key == "$F") {
        if (!Integer(value, n) || n < 0 || n > 999999) return "ERROR";
        activeChannel_ = static_cast<int>(n);
        return "OK";
    }
    if (key == "$M") {
        if (value != "0" && value != "1") return "ERROR";
        listOn_ = value == "1";
        return "OK";
    }
    if (!byName && key == "@S") {
        if (!Integer(value, n) || n < 0 || n >= kProtocolCount) return "ERROR";
        protocol_ = static_cast<int>(n);
        return "OK";
    }
    if (!byName && key == "@F") {
        if (value != "0" && value != "1") return "ERROR";
        fec_ = value == "1";
        return "OK";
    }
    if (byName && key == "+P") {
        for (int i = 0; i < kProtocolCount; ++i)
            if (value == kProtocols[i]) {
                protocol_ = i;
                return "OK";
            }
        return "ERROR";
    }
    if (byName && key == "+F") {
        if (value != "ON" && value != "OFF") return "ERROR";
        fec_ = value == "ON";
        return "OK";
    }
    return "ERROR";
}

// ---- cellular modem ----

std::string ModemCore::AtLines(const std::vector<std::string>& lines, bool ok) {
    std::string out;
    for (const auto& l : lines) out += "\r\n" + l + "\r\n";
    return out + (ok ? "\r\nOK\r\n" : "");
}

int ModemCore::Rssi() const {
    const double t = clock_->Now();
    return static_cast<int>(std::lround(18 + 5 * std::sin(t / 11.0)));
}

int ModemCore::Registration() const {
    if (sim_ != Sim::Ready) return 0;
    if (clock_->Now() - readySince_ < options_.registerAfterS) return 2;
    return options_.roaming ? 5 : 1;
}

std::string ModemCore::ExecuteCellular(std::string_view line) {
    if (line.size() < 2 || (line.substr(0, 2) != "AT" && line.substr(0, 2) != "at")) return {};
    const std::string echo = echo_ ? std::string(line) + "\r" : std::string();
    const std::string command(line);
    if (command == "ATE0" || command == "ATE1") {
        echo_ = command == "ATE1";
        return echo + AtLines({}, true);
    }
    if (faults_.RefusesSetting(command)) return echo + "\r\nERROR\r\n";
    if (command.rfind("AT+CPIN=", 0) == 0) return echo + EnterPin(std::string_view(command).substr(8));
    if (command.rfind("AT+CGDCONT=", 0) == 0) {
        // 1,"IP","apn"
        const auto f = Split(std::string_view(command).substr(11), ',');
        if (f.size() != 3 || f[0] != "1" || f[1] != "\"IP\"" || f[2].size() < 2 || f[2].front() != '"' || f[2].back() != '"')
            return echo + "\r\nERROR\r\n";
        apn_ = std::string(f[2].substr(1, f[2].size() - 2));
        NoteWrite(command);
        return echo + AtLines({}, true);
    }
    return echo + CellularQuery(command);
}

std::string ModemCore::CellularQuery(std::string_view command) {
    if (command == "AT") return AtLines({}, true);
    if (command == "ATI") return AtLines({"Norvale " + model_, "Revision: CM27.02.114"}, true);
    if (command == "AT+CGMI") return AtLines({"Norvale"}, true);
    if (command == "AT+CGMM") return AtLines({model_}, true);
    if (command == "AT+CGMR") return AtLines({"CM27.02.114"}, true);
    if (command == "AT+CGSN") return AtLines({"3569380356" + std::to_string(10000 + options_.seed % 90000)}, true);
    if (command == "AT+CPIN?") {
        const char* state = sim_ == Sim::Ready ? "READY" : sim_ == Sim::Pin ? "SIM PIN" : "SIM PUK";
        return AtLines({std::string("+CPIN: ") + state}, true);
    }
    if (command == "AT+CSQ") return AtLines({"+CSQ: " + std::to_string(Rssi()) + ",99"}, true);
    if (command == "AT+CREG?") return AtLines({"+CREG: 0," + std::to_string(Registration())}, true);
    if (command == "AT+COPS?") {
        const int reg = Registration();
        if (reg != 1 && reg != 5) return AtLines({"+COPS: 0"}, true);
        return AtLines({std::string("+COPS: 0,0,\"") + (reg == 5 ? "Fenk Roam" : "Fenk Mobile") + "\",7"}, true);
    }
    if (command == "AT+CGDCONT?") {
        if (apn_.empty()) return AtLines({}, true);
        return AtLines({"+CGDCONT: 1,\"IP\",\"" + apn_ + "\",\"0.0.0.0\",0,0"}, true);
    }
    return "\r\nERROR\r\n";
}

std::string ModemCore::EnterPin(std::string_view argument) {
    if (sim_ == Sim::Puk) return "\r\n" + std::string(kCmePukRequired) + "\r\n";
    if (sim_ != Sim::Pin) return "\r\n" + std::string(kCmeNotAllowed) + "\r\n";
    if (argument.size() < 2 || argument.front() != '"' || argument.back() != '"') return "\r\nERROR\r\n";
    if (argument.substr(1, argument.size() - 2) != options_.pin) {
        if (++wrongPins_ >= 3) sim_ = Sim::Puk;
        return "\r\n" + std::string(kCmeWrongPin) + "\r\n";
    }
    wrongPins_ = 0;
    sim_ = Sim::Ready;
    readySince_ = clock_->Now();
    writes_.emplace_back("AT+CPIN=\"****\"");
    return AtLines({}, true);
}

}  // namespace rcvsim
