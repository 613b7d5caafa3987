#pragma once
// The simulated modems: a UHF survey radio answering the "SL" commands and a cellular modem
// answering 3GPP TS 27.007 AT commands (docs/simulator.md, "Simulated modems"). No I/O here:
// Execute() takes one command line and gives the bytes of the answer.
#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

#include "tools/rcvsim/SimClock.h"

namespace rcvsim {

enum class ModemKind { Uhf, Cellular };

// Faults a simulated modem injects, as the receiver's fault plan does. Commands are matched by
// prefix ("SL@P" matches "SL@P?" and "SL@P=500"; "*" matches every command).
struct ModemFaults {
    int latencyMs = 0;                       // delay before an answer
    std::string latencyCommand;              // only for these commands; empty = all
    bool silenceAll = false;                 // answer nothing (but "sim," lines)
    std::vector<std::string> silentCommands; // never answer these
    int garbageEveryMs = 0;                  // a burst of noise between answers this often; 0 = off
    int garbageBytes = 16;
    int dropAfterMs = 0;                     // close each new connection this long after it opens
    std::vector<std::string> errorCommands;  // answer "ERROR" to these settings (lines with '=')

    static bool Matches(std::string_view line, std::string_view prefix) {
        return prefix.empty() || prefix == "*" || line.substr(0, prefix.size()) == prefix;
    }
    bool Silent(std::string_view line) const;
    int LatencyFor(std::string_view line) const;
    bool RefusesSetting(std::string_view line) const;
};

struct ModemOptions {
    ModemKind kind = ModemKind::Uhf;
    // UHF: "FR-400" (protocol and FEC by number) or "FR-460" (by name, fewer power levels, CR LF
    // line ends); cellular: "CM-27". Empty: the kind's first.
    std::string model;
    int lineRate = 115200;
    bool throttle = false;                  // pace both directions at the line rate
    bool simLocked = false;                 // the SIM starts asking for its PIN
    std::string pin = "1234";
    double registerAfterS = 3.0;            // searching this long after the SIM is ready
    bool roaming = false;                   // registers as roaming, not home
    std::uint32_t seed = 1;
    ModemFaults faults;
};

class ModemCore {
public:
    static constexpr int kMaxChannels = 40;

    ModemCore(ModemOptions options, std::shared_ptr<const SimClock> clock);

    // One command line without its end. The answer's bytes as the modem sends them (echo
    // included), or nothing at all for a line this modem ignores.
    std::string Execute(std::string_view line);
    // Every setting ("...=...") the modem took, in order (the latest 1000).
    std::vector<std::string> Writes() const;
    ModemFaults Faults() const;
    void SetFaults(const ModemFaults& faults);
    const ModemOptions& Options() const { return options_; }
    const std::string& Model() const { return model_; }
    // The simulator's own "sim,..." lines (faults); true when the line was one.
    bool IsSimLine(std::string_view line) const { return line.substr(0, 4) == "sim,"; }

private:
    struct Channel {
        int number = 0;
        double frequency = 0;
        double spacing = 12.5;
        int power = 0;
    };

    std::string ExecuteSim(std::string_view line);
    std::string ExecuteUhf(std::string_view line);
    std::string ExecuteCellular(std::string_view line);
    std::string UhfSet(std::string_view key, std::string_view value);
    std::string UhfQuery(std::string_view key, std::string_view arg);
    std::string CellularQuery(std::string_view command);
    std::string EnterPin(std::string_view argument);
    std::string Uhf(const std::string& text) const;             // one radio answer line
    static std::string AtLines(const std::vector<std::string>& lines, bool ok);
    int RoundPower(int mw) const;
    int FieldStrength() const;
    int Rssi() const;
    int Registration() const;
    void NoteWrite(std::string_view line);

    const ModemOptions options_;
    const std::shared_ptr<const SimClock> clock_;
    std::string model_;
    mutable std::mutex mutex_;
    ModemFaults faults_;
    std::vector<std::string> writes_;
    // UHF radio
    double low_ = 403.0, high_ = 473.0;
    double frequency_ = 438.0;
    double spacing_ = 12.5;
    int power_ = 1000;
    std::vector<int> powerLevels_;
    int protocol_ = 0;
    bool fec_ = false;
    unsigned address_ = 1;
    std::vector<Channel> channels_;
    int activeChannel_ = 1;
    bool listOn_ = false;
    // Cellular modem
    bool echo_ = true;
    enum class Sim { Ready, Pin, Puk } sim_ = Sim::Ready;
    int wrongPins_ = 0;
    double readySince_ = 0;
    std::string apn_ = "internet";
};

}  // namespace rcvsim
