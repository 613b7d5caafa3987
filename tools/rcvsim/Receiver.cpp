#include "tools/rcvsim/Receiver.h"

#include <cmath>
#include <cstdlib>
#include <cstdio>
#include <ctime>

#include "tools/rcvsim/CoordText.h"
#include "tools/rcvsim/Keywords.h"
#include "tools/rcvsim/ParamDefaults.h"
#include "tools/rcvsim/Throttle.h"

namespace rcvsim {

const Receiver::Command Receiver::kCommands[] = {
    {"print", &Receiver::Print},   {"set", &Receiver::Set},
    {"list", &Receiver::List},     {"em", &Receiver::Enable},
    {"dm", &Receiver::DisableMessages}, {"init", &Receiver::Init},
    {"event", &Receiver::Event},   {"create", &Receiver::Create},
    {"remove", &Receiver::Remove}, {"sim", &Receiver::Sim},
};

Receiver::Receiver(SimOptions options, std::shared_ptr<const SimClock> clock)
    : options_(std::move(options)),
      clock_(std::move(clock)),
      startTime_(clock_->Now()),
      faults_(options_.faults),
      rng_(options_.seed) {
    ResetParameters();
    SeedFiles(startTime_);
    nextLogAt_ = startTime_;
}

Reply Receiver::Execute(std::string_view line, std::string_view terminal) {
    const std::lock_guard lock(mutex_);
    const Context ctx{std::string(terminal), clock_->Now()};
    // The Bluetooth module's escape is not a command: the receiver passes it to the module
    // and answers nothing.
    if (CommandLine::Trim(line) == "#OFF#") {
        ++bluetoothEscapes_;
        return Reply::Silent();
    }
    const auto commands = CommandLine::SplitJoined(line);
    if (commands.empty()) return Reply::WrongCommand();
    Reply combined;
    for (const auto& command : commands) {
        Reply reply = ExecuteOne(command, ctx);
        if (!reply.Ok() || reply.effect != ReplyEffect::None) return reply;
        if (!reply.text.empty()) {
            if (!combined.text.empty()) combined.text += '\n';
            combined.text += reply.text;
        }
    }
    return combined;
}

Reply Receiver::ExecuteOne(const std::string& command, const Context& ctx) {
    const std::string word = CommandLine::Word(command);
    for (const auto& c : kCommands) {
        if (c.word != word) continue;
        Reply reply = (this->*c.handler)(CommandLine::Arguments(command), ctx);
        if (word == "set" && reply.Ok()) {
            if (writes_.size() == kWritesKept) writes_.erase(writes_.begin());
            writes_.push_back(command);
        }
        return reply;
    }
    return Reply::WrongCommand();
}

std::vector<std::string> Receiver::Writes() const {
    const std::lock_guard lock(mutex_);
    return writes_;
}

int Receiver::BluetoothEscapes() const {
    const std::lock_guard lock(mutex_);
    return bluetoothEscapes_;
}

FaultPlan Receiver::Faults() const {
    const std::lock_guard lock(mutex_);
    return faults_;
}

void Receiver::SetFaults(const FaultPlan& plan) {
    const std::lock_guard lock(mutex_);
    faults_ = plan;
}

double Receiver::PortBytesPerSecond(std::string_view port) const {
    const std::lock_guard lock(mutex_);
    const std::string base(port);
    const Param* rate = params_.Find(base + "/rate");
    const Param* bits = params_.Find(base + "/bits");
    const Param* parity = params_.Find(base + "/parity");
    const Param* stops = params_.Find(base + "/stops");
    if (!rate || !bits || !parity || !stops) return 0;
    return Throttle::BytesPerSecond(std::stod(rate->value), std::stoi(bits->value),
                                    parity->value != "N", std::stoi(stops->value));
}

LineSettings Receiver::PortLine(std::string_view port) const {
    const std::lock_guard lock(mutex_);
    const std::string base(port);
    LineSettings line;
    const auto value = [&](const char* leaf) {
        const Param* p = params_.Find(base + leaf);
        return p ? p->value : std::string();
    };
    line.rate = std::atoi(value("/rate").c_str());
    line.bits = std::atoi(value("/bits").c_str());
    const std::string parity = value("/parity");
    line.parity = parity.find("odd") != std::string::npos ? 'O' : parity.find("even") != std::string::npos ? 'E' : 'N';
    line.stops = std::atoi(value("/stops").c_str());
    return line;
}

Fix Receiver::CurrentFix() const {
    const std::lock_guard lock(mutex_);
    return MakeFix(clock_->Now());
}

std::string Receiver::Value(std::string_view path) const {
    const Param* p = params_.Find(path);
    return p ? p->value : std::string();
}

void Receiver::AssignDerived(std::string_view path, std::string value) {
    if (Param* p = params_.Find(path)) p->value = std::move(value);
}

std::string Receiver::TimeText(double t) {
    const std::time_t whole = static_cast<std::time_t>(std::floor(t));
    std::tm tm{};
    gmtime_r(&whole, &tm);
    char buf[64];
    std::snprintf(buf, sizeof buf, "%04d/%02d/%02d %02d:%02d:%02d", tm.tm_year + 1900,
                  tm.tm_mon + 1, tm.tm_mday, tm.tm_hour, tm.tm_min, tm.tm_sec);
    return buf;
}

std::string Receiver::ResolvePort(std::string_view raw, const Context& ctx) const {
    const std::string port = CommandLine::NormalizePath(raw);
    return port == "cur/term" ? ctx.terminal : port;
}

bool Receiver::IsOutputPort(std::string_view port) const {
    return Keywords::IsDevicePort(port) || port == "cur/file/a" || port == "cur/file/b";
}

// ---- state -------------------------------------------------------------------------------

void Receiver::ResetParameters() {
    ParamTree fresh;
    ParamDefaults::Fill(fresh, options_);
    // Line settings live in the port hardware and survive a restart.
    for (const auto& [path, param] : params_.Leaves(""))
        if ((param->flags & kKeepOnReset) != 0)
            if (Param* p = fresh.Find(path)) p->value = param->value;
    params_ = std::move(fresh);
    ApplyFirmware();
    SeedPoints();
    catalog_.Reset();
    schedule_.Clear();
    RefreshDerived();
}

void Receiver::Restart() {
    ResetParameters();
    pendingEvents_.push_back(7);
}

void Receiver::SeedFiles(double now) {
    struct Seed {
        const char* path;
        const char* content;
    };
    static constexpr Seed kDriver[] = {
        {"/com/a/script/version", "name=FNK UHF;version=2.1.4;description=UHF radio modem driver"},
        {"/com/a/script/init", "send \"ATZ\\r\"\nwait \"OK\" 2\nsend \"AT&F\\r\"\n"},
        {"/com/a/script/dial", "send \"ATD%PHONE%\\r\"\nwait \"CONNECT\" 30\n"},
        {"/com/a/script/hangup", "delay 1\nsend \"+++\"\ndelay 1\nsend \"ATH\\r\"\n"},
        {"/com/a/profile/default", "channel=1\npower=1\nprotocol=transparent\n"},
        {"/com/a/profile/base", "channel=3\npower=2\nprotocol=transparent\n"},
    };
    for (const auto& s : kDriver) files_.Put(s.path, s.content, now - 86400 * 30);
    if (options_.fullLogFolder) SeedLogFolder(now - 2 * 86400);
    SeedOldLogs(now - 2 * 86400);
    // Yesterday's log and today's, filled with what the receiver recorded then.
    const double yesterday = now - 86400;
    const std::string old = "/log/" + NewLogName(yesterday);
    files_.Create(old, yesterday);
    for (int i = 0; i < 120; ++i) files_.Append(old, Nmea::Gga(MakeFix(yesterday + i)), yesterday + i);
    const std::string current = "/log/" + NewLogName(now);
    files_.Create(current, now);
    params_.Find("cur/file/a")->value = current;
    RefreshDerived();
}

void Receiver::SeedPoints() {
    struct Seed {
        int slot, id;
        const char* name;
        const char* date;
        double north, east, up;  // metres from the site
    };
    static constexpr Seed kPoints[] = {{0, 1, "PILLAR-1", "2024/05/20 08:14:03", 35.2, -12.4, 0.8},
                                       {1, 2, "ROOF-NE", "2024/06/02 15:40:27", -120.6, 88.1, 14.3}};
    constexpr double kMetresPerDegree = 111320.0;
    for (const auto& s : kPoints) {
        Geodetic g = options_.site;
        g.latDeg += s.north / kMetresPerDegree;
        g.lonDeg += s.east / (kMetresPerDegree * std::cos(geodesy::Radians(g.latDeg)));
        g.height += s.up;
        AddPoint(s.slot, s.name, s.id, s.date, g, false);
    }
}

void Receiver::AddPoint(int slot, const std::string& name, int id, const std::string& date,
                        const Geodetic& where, bool automatic) {
    char base[40];
    std::snprintf(base, sizeof base, "ref/avg/list/pnts/%02d/", slot);
    const std::string b = base;
    const Ecef here = geodesy::ToCartesian(options_.site), there = geodesy::ToCartesian(where);
    const double dist = std::sqrt((here.x - there.x) * (here.x - there.x) +
                                  (here.y - there.y) * (here.y - there.y) +
                                  (here.z - there.z) * (here.z - there.z));
    char distText[32];
    std::snprintf(distText, sizeof distText, "%.3f", dist);
    const auto ro = kReadOnly;
    params_.Add(b + "id", ValueKind::Int(0, 99), std::to_string(id), ro);
    params_.Add(b + "name", ValueKind::Text(), name, ro);
    params_.Add(b + "date", ValueKind::Text(), date, ro);
    params_.Add(b + "dist", ValueKind::Real(0, 1e7, 3), distText, ro);
    params_.Add(b + "protect", ValueKind::Words(Keywords::OnOff()), "off", ro);
    params_.Add(b + "auto", ValueKind::Words(Keywords::OnOff()), automatic ? "on" : "off", ro);
    for (const char* which : {"arp", "pos"}) {
        params_.Add(b + which + "/geo", ValueKind::Of(ValueKind::Type::GeoCoord),
                    CoordText::FormatGeo(where), ro);
        params_.Add(b + which + "/xyz", ValueKind::Of(ValueKind::Type::XyzCoord),
                    CoordText::FormatXyz(there), ro);
    }
}

void Receiver::RefreshDerived() {
    const long long used = static_cast<long long>(files_.TotalBytes());
    AssignDerived("dev/blk/a/free", std::to_string(ParamDefaults::kDiskBytes - used));
    AssignDerived("dev/blk/a/files", std::to_string(files_.Count()));
    for (const auto& [kind, path] : {std::pair{"script", "com/a/scripts"},
                                     std::pair{"profile", "com/a/profiles"}}) {
        std::string list = "{";
        for (const StoredFile* f : files_.List(std::string("/com/a/") + kind + "/")) {
            if (list.size() > 1) list += ',';
            list += FileStore::Name(f->path);
        }
        AssignDerived(path, list + "}");
    }
}

// Sizes and times only: the bytes are generated from each file's name when read.
void Receiver::SeedOldLogs(double before) {
    const auto& sizes = options_.seededLogs;
    for (std::size_t i = 0; i < sizes.size(); ++i) {
        const double when = before - 3600.0 * static_cast<double>(sizes.size() - i);
        files_.PutGenerated("/log/" + NewLogName(when), sizes[i], when, when);
    }
}

// A season of field work: a session or two on most of the last six weeks, from a few hundred
// kilobytes to a dozen megabytes, and three all-day static sessions of 90 to 300 MB. Starts
// and lengths vary with the seed; a file's last change is its start plus what 20 Hz raw data
// (about 4 KB/s) takes to fill it.
void Receiver::SeedLogFolder(double before) {
    constexpr int kDays = 42;
    constexpr double kBytesPerSecond = 4000.0;
    constexpr std::uint64_t kLarge[] = {300ull << 20, 150ull << 20, 90ull << 20};
    std::uint64_t state = 0x2545F4914F6CDD1Dull ^ options_.seed;
    const auto next = [&state] {
        state ^= state << 13;
        state ^= state >> 7;
        state ^= state << 17;
        return state;
    };
    const double midnight = std::floor(before / 86400.0) * 86400.0;
    for (int day = kDays; day > 0; --day) {
        const std::uint64_t roll = next();
        if (roll % 7 == 0) continue;   // a day off
        const int sessions = 1 + static_cast<int>(roll / 7 % 3 == 0);
        for (int s = 0; s < sessions; ++s) {
            const double start = midnight - 86400.0 * day + 6 * 3600 + s * 5 * 3600 + static_cast<double>(next() % 3600);
            const bool large = day % 14 == 0 && s == 0;
            const std::uint64_t size = large ? kLarge[(day / 14 - 1) % 3] : (200u << 10) + next() % (12u << 20);
            const double end = start + static_cast<double>(size) / kBytesPerSecond;
            files_.PutGenerated("/log/" + NewLogName(start), size, start, end);
        }
    }
}

std::string Receiver::NewLogName(double now) const {
    const std::time_t whole = static_cast<std::time_t>(std::floor(now));
    std::tm tm{};
    gmtime_r(&whole, &tm);
    std::string prefix = params_.Find("cmd/create/prefix") ? Value("cmd/create/prefix") : "log";
    if (prefix.empty()) prefix = "log";
    char stem[64];
    std::snprintf(stem, sizeof stem, "%s%02d%02d", prefix.c_str(), tm.tm_mon + 1, tm.tm_mday);
    for (int i = 0;; ++i) {
        std::string name = stem;
        name += i < 26 ? std::string(1, static_cast<char>('a' + i)) : "_" + std::to_string(i);
        name += ".fnk";
        if (!files_.Find("/log/" + name)) return name;
    }
}

}  // namespace rcvsim
