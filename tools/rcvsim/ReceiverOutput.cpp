// What the receiver sends on its own: scheduled messages ("em"/"dm"), events, and the log
// files it records.
#include <algorithm>
#include <cmath>
#include <cstdio>

#include "tools/rcvsim/Frame.h"
#include "tools/rcvsim/Keywords.h"
#include "tools/rcvsim/Receiver.h"

namespace rcvsim {
namespace {

struct Generator {
    const char* name;
    std::string (*make)(const Fix&);
};
constexpr Generator kNmea[] = {{"nmea/GGA", &Nmea::Gga}, {"nmea/RMC", &Nmea::Rmc}, {"nmea/GSA", &Nmea::Gsa},
                               {"nmea/GSV", &Nmea::Gsv}, {"nmea/ZDA", &Nmea::Zda}, {"nmea/GST", &Nmea::Gst},
                               {"nmea/VTG", &Nmea::Vtg}, {"nmea/GLL", &Nmea::Gll}};

// The binary and correction messages: one frame of the size a real one takes on the wire
// (twelve satellites in view), so that a port's load can be checked against bytes sent.
struct SizedMessage {
    const char* name;
    int bytes;
};
constexpr SizedMessage kSized[] = {
    {"qls/RT", 11},      {"qls/PV", 51},       {"qls/SI", 20},       {"qls/EL", 20},       {"qls/AZ", 20},
    {"qls/RC", 118},     {"qls/PC", 118},      {"qls/ET", 11},       {"rtcm/1", 110},      {"rtcm/3", 30},
    {"rtcm/18", 260},    {"rtcm/19", 260},     {"rtcm/22", 20},      {"rtcm/31", 100},     {"rtcm/32", 30},
    {"rtcm3/1004", 200}, {"rtcm3/1006", 27},   {"rtcm3/1008", 40},   {"rtcm3/1012", 150},  {"rtcm3/1033", 60},
    {"rtcm3/1074", 160}, {"rtcm3/1084", 130},  {"rtcm3/1230", 14},   {"cmr/0", 200},       {"cmr/1", 40},
    {"cmr/2", 80},       {"cmr/3", 150},       {"binex/00", 120},    {"binex/01-01", 1600}, {"binex/7f-05", 400},
};

// A frame of exactly `bytes` bytes whose payload changes with the epoch.
std::string SizedFrame(std::string_view name, int bytes, double at) {
    const std::string id(name.substr(name.find('/') + 1));
    std::string payload;
    for (int guess = 0; guess < 4; ++guess) {
        const int length = bytes - static_cast<int>(Frame::Message(id, payload).size() - payload.size());
        if (length < 0 || static_cast<int>(payload.size()) == length) break;
        payload.assign(static_cast<std::size_t>(length), '0');
    }
    const unsigned long epoch = static_cast<unsigned long>(at * 10);
    for (std::size_t i = 0; i < payload.size(); ++i) payload[i] = "0123456789ABCDEF"[(epoch + i * 7) % 16];
    return Frame::Message(id, payload);
}

// Position wander of each solution kind: amplitude in metres.
double Wander(std::string_view mode) {
    if (mode == "pd") return 0.01;
    if (mode == "pf") return 0.15;
    if (mode == "cd") return 0.6;
    return 1.8;
}

constexpr double kMetresPerDegree = 111320.0;

// A slow, smooth wander of amplitude `a` metres around the site, as a real solution drifts.
Geodetic Wandered(const Geodetic& site, double a, double t) {
    Geodetic g = site;
    g.latDeg += a * std::sin(t / 97.0) / kMetresPerDegree;
    g.lonDeg += a * std::cos(t / 131.0) / (kMetresPerDegree * std::cos(geodesy::Radians(site.latDeg)));
    g.height += 1.5 * a * std::sin(t / 173.0);
    return g;
}

int Quality(std::string_view mode) {
    if (mode == "pd") return 4;
    if (mode == "pf") return 5;
    if (mode == "cd") return 2;
    return 1;
}

struct LinkFormat {
    std::string_view imode;
    char letter;
    int bytesPerSecond;
};
constexpr LinkFormat kLinkFormats[] = {{"rtcm", 'R', 120}, {"rtcm3", 'T', 480}, {"cmr", 'C', 300}};

char PortLetter(std::string_view port) {
    if (port.size() != 9) return 0;
    const char last = port[8];
    if (port.substr(0, 8) == "dev/ser/") return static_cast<char>('A' + (last - 'a'));
    if (port.substr(0, 8) == "dev/tcp/") return static_cast<char>('E' + (last - 'a'));
    if (port == "dev/usb/a") return 'U';
    return 0;
}

}  // namespace

Reply Receiver::Enable(const Args& args, const Context& ctx) {
    if (args.empty()) return Reply::WrongFirst();
    const std::string port = ResolvePort(args[0], ctx);
    if (!IsOutputPort(port)) return Reply::WrongFirst();
    Args items(args.begin() + 1, args.end());
    if (items.size() == 1 && CommandLine::Trim(items[0]).starts_with('{'))
        items = CommandLine::SplitTopLevel(CommandLine::StripBraces(items[0]), ',');
    if (items.empty()) return Reply::WrongSecond();
    std::vector<std::pair<std::string, Schedule>> enable;
    for (const auto& item : items) {
        const auto parts = CommandLine::SplitTopLevel(item, ':');
        const auto name = catalog_.Canonical(parts[0]);
        if (!name || parts.size() > 2) return Reply::WrongSecond();
        const auto schedule = parts.size() == 2 ? Schedule::Parse(parts[1])
                                                : std::optional<Schedule>(*catalog_.Default(*name));
        if (!schedule) return Reply::WrongSecond();
        enable.emplace_back(*name, *schedule);
    }
    for (const auto& [name, schedule] : enable) schedule_.Enable(port, name, schedule, ctx.now);
    return Reply::Success();
}

Reply Receiver::DisableMessages(const Args& args, const Context& ctx) {
    if (args.empty()) return Reply::WrongFirst();
    const std::string port = ResolvePort(args[0], ctx);
    if (!IsOutputPort(port)) return Reply::WrongFirst();
    if (args.size() == 1) {
        schedule_.Disable(port);
        return Reply::Success();
    }
    for (std::size_t i = 1; i < args.size(); ++i) {
        const auto name = catalog_.Canonical(args[i]);
        if (!name) return Reply::WrongSecond();
        schedule_.Disable(port, *name);
    }
    return Reply::Success();
}

std::vector<Output> Receiver::Poll() {
    const std::lock_guard lock(mutex_);
    if (inLoader_ || std::chrono::steady_clock::now() < bootUntil_) return {};   // the loader sends nothing of its own but its requests
    const double now = clock_->Now();
    std::vector<Output> out;
    for (const int e : pendingEvents_) out.push_back({"", Frame::Event(e)});
    pendingEvents_.clear();
    AdvanceLogging(now);
    const auto due = schedule_.TakeDue(now);
    if (due.empty()) return out;
    Fix fix = MakeFix(due.front().at);
    for (const auto& d : due) {
        if (d.at != fix.time) fix = MakeFix(d.at);
        std::string bytes = MessageBytes(d.name, fix, d.at);
        if (d.port == "cur/file/a" || d.port == "cur/file/b") {
            if (!Value(d.port).empty()) files_.Append(Value(d.port), bytes, now);
            continue;
        }
        out.push_back({d.port, std::move(bytes)});
    }
    RefreshDerived();
    return out;
}

std::string Receiver::MessageBytes(const std::string& name, const Fix& fix, double now) const {
    for (const auto& g : kNmea)
        if (name == g.name) return g.make(fix);
    if (name == "fnk/DL") return Frame::Message("DL", DataLinkPayload(now));
    for (const auto& m : kSized)
        if (name == m.name) return SizedFrame(m.name, m.bytes, now);
    return {};
}

// One link per port whose input mode takes corrections; counters grow with time.
std::string Receiver::DataLinkPayload(double now) const {
    const double elapsed = std::max(0.0, now - startTime_);
    std::string links;
    int count = 0;
    for (const auto port : Keywords::DevicePorts()) {
        const char letter = PortLetter(port);
        const std::string imode = Value(std::string(port) + "/imode");
        for (const auto& f : kLinkFormats) {
            if (letter == 0 || imode != f.imode) continue;
            const long received = static_cast<long>(elapsed);
            const double age = std::fmod(elapsed, 1.0) + (letter % 3) * 0.3;
            char link[96];
            std::snprintf(link, sizeof link, ";%c,%c,%d,%.1f,%ld,%ld,%d", letter, f.letter,
                          100 + (letter - 'A') * 101, age, received, received / 1500,
                          f.bytesPerSecond);
            links += link;
            ++count;
        }
    }
    return std::to_string(count) + links;
}

Fix Receiver::MakeFix(double now) const {
    Fix fix;
    fix.time = now;
    const std::string mode = Value("pos/mode/cur");
    fix.quality = Quality(mode);
    const double mask = std::atof(Value("pos/elm").c_str());
    fix.sats = sky_.Visible(options_.site, now, mask);
    fix.dop = Constellation::ComputeDop(fix.sats);
    const double a = Wander(mode);
    fix.position = Wandered(options_.site, a, now);
    fix.sigma = a / 2;
    // Speed and course over ground from the wander's slope over one second.
    const Geodetic before = Wandered(options_.site, a, now - 0.5), after = Wandered(options_.site, a, now + 0.5);
    const double north = (after.latDeg - before.latDeg) * kMetresPerDegree;
    const double east = (after.lonDeg - before.lonDeg) * kMetresPerDegree * std::cos(geodesy::Radians(options_.site.latDeg));
    fix.speed = std::hypot(north, east);
    fix.course = std::fmod(geodesy::Degrees(std::atan2(east, north)) + 360.0, 360.0);
    return fix;
}

void Receiver::AdvanceLogging(double now) {
    if (Value("log/rot/mode") == "on") RotateOnSchedule(now);
    for (const char* channel : {"cur/file/a", "cur/file/b"}) {
        const std::string current = Value(channel);
        if (current.empty() || Value("dev/blk/a/removed") == "on" || now < nextLogAt_) continue;
        files_.Append(current, Nmea::Gga(MakeFix(now)), now);
    }
    if (now < nextLogAt_) return;
    const double period = std::max(0.05, std::atof(Value("log/sc/period").c_str()));
    nextLogAt_ = now + period;
    RefreshDerived();
}

// A new file at every multiple of the period after the phase (UTC seconds), stamped with that
// boundary's time as the receiver would have made it; a clock that jumped over several
// boundaries gets a file for each, up to kMaxCatchUp, then the schedule starts again from now.
void Receiver::RotateOnSchedule(double now) {
    constexpr int kMaxCatchUp = 64;
    const Schedule rotation{std::atof(Value("log/rot/sc/period").c_str()),
                            std::atof(Value("log/rot/sc/phase").c_str()), 0, 0};
    if (rotation.period <= 0) return;
    if (nextRotationAt_ == 0) nextRotationAt_ = OutputSchedule::NextAt(rotation, now + 1e-3);
    for (int i = 0; i < kMaxCatchUp && now >= nextRotationAt_; ++i) {
        Rotate(nextRotationAt_);
        nextRotationAt_ += rotation.period;
    }
    if (now >= nextRotationAt_) nextRotationAt_ = OutputSchedule::NextAt(rotation, now + 1e-3);
}

// Each channel that is logging moves on to a new file; the running count goes up by one
// (it is kept until the receiver's parameters are reset); with "rmold" on only the newest
// "sc/count" files stay, never a file being logged.
void Receiver::Rotate(double now) {
    std::vector<std::string> current;
    for (const char* channel : {"cur/file/a", "cur/file/b"}) {
        if (Value(channel).empty() && std::string_view(channel) == "cur/file/b") continue;
        const std::string name = "/log/" + NewLogName(now);
        files_.Create(name, now);
        AssignDerived(channel, name);
        current.push_back(name);
    }
    AssignDerived("log/rot/count", std::to_string(std::atol(Value("log/rot/count").c_str()) + 1));
    const long keep = std::atol(Value("log/rot/sc/count").c_str());
    if (Value("log/rot/rmold") == "on" && keep > 0) {
        auto logs = files_.List("/log/");
        std::erase_if(logs, [&](const StoredFile* f) {
            return std::find(current.begin(), current.end(), f->path) != current.end();
        });
        const std::size_t closed = static_cast<std::size_t>(std::max(0L, keep - static_cast<long>(current.size())));
        for (std::size_t i = 0; i + closed < logs.size(); ++i) files_.Remove(std::string(logs[i]->path));
    }
    RefreshDerived();
}

}  // namespace rcvsim
