// The writing side of the command language: "set,", "init,", "event,", "create,", "remove,"
// and the simulator's own "sim," command.
#include <cmath>
#include <cstdio>
#include <cstdlib>

#include "tools/rcvsim/CoordText.h"
#include "tools/rcvsim/Keywords.h"
#include "tools/rcvsim/Receiver.h"

namespace rcvsim {
namespace {

std::string JoinFrom(const std::vector<std::string>& args, std::size_t first) {
    std::string value;
    for (std::size_t i = first; i < args.size(); ++i) value += (i > first ? "," : "") + args[i];
    return value;
}

bool ParseInt(std::string_view text, long lo, long hi, long& out) {
    const std::string s = CommandLine::Trim(text);
    if (s.empty()) return false;
    char* end = nullptr;
    const long v = std::strtol(s.c_str(), &end, 10);
    if (end != s.c_str() + s.size() || v < lo || v > hi) return false;
    out = v;
    return true;
}

bool ValidFileName(std::string_view path) {
    if (!CommandLine::StartsWith(path, "/log/") || path.size() <= 5 || path.size() > 64) return false;
    for (const char c : path.substr(5))
        if (c == '/' || c == '"' || c == ',' || c == '&' || c == ':' || c < 0x21 || c > 0x7e)
            return false;
    return true;
}

std::string PointBase(long slot) {
    char base[40];
    std::snprintf(base, sizeof base, "ref/avg/list/pnts/%02ld", slot);
    return base;
}

}  // namespace

Reply Receiver::Set(const Args& args, const Context& ctx) {
    if (args.empty()) return Reply::WrongFirst();
    const Target t = CommandLine::ParseTarget(args[0]);
    if (args.size() < 2) return Reply::WrongSecond();
    const std::string value = CommandLine::Trim(JoinFrom(args, 1));
    if (t.quoted && !t.attribute.empty()) return SetFileAttribute(t, value, ctx);
    if (t.path == "reset") {
        if (value != "yes") return Reply::WrongSecond();
        Restart();
        return Reply::Silent();
    }
    if (t.path.size() > 4 && t.path.ends_with("/clr")) {
        if (value != "y") return Reply::WrongSecond();
        return ClearItem(t.path.substr(0, t.path.size() - 4));
    }
    if (CommandLine::StartsWith(t.path, "msg/def/")) {
        const auto schedule = Schedule::Parse(value);
        if (!catalog_.Default(t.path.substr(8))) return Reply::WrongFirst();
        if (!schedule) return Reply::WrongSecond();
        catalog_.SetDefault(t.path.substr(8), *schedule);
        return Reply::Success();
    }
    if (t.path == "cur/file/a" || t.path == "cur/file/b") return SetCurrentFile(t.path, value, ctx);
    if (auto action = RunAction(t.path, value, ctx)) return *action;
    if (params_.Find(t.path)) return SetLeaf(t.path, value, ctx);
    if (params_.IsNode(t.path)) return SetNode(t.path, value);
    return Reply::WrongFirst();
}

Reply Receiver::SetLeaf(const std::string& path, const std::string& value, const Context&) {
    Param* p = params_.Find(path);
    if (p->ReadOnly()) return Reply::WrongFirst();
    const auto canonical = p->kind.Canonical(value);
    if (!canonical) return Reply::WrongSecond();
    p->value = *canonical;
    SyncCoordinates(path);
    if (path == "log/rot/sc/period" || path == "log/rot/sc/phase" || path == "log/rot/mode")
        nextRotationAt_ = 0;  // recomputed from the new schedule on the next poll
    // The overall volume sets every channel.
    if (path == "ext/audio/vol")
        for (const auto& channel : params_.Children(path)) AssignDerived(path + "/" + channel, p->value);
    return Reply::Success();
}

// A node takes a list of "<child>=<value>" items ("set,lock/waas/sat,{120=y,124=n}"); all
// items are checked before any is stored.
Reply Receiver::SetNode(const std::string& path, const std::string& value) {
    if (value.size() < 2 || value.front() != '{' || value.back() != '}') return Reply::WrongSecond();
    std::vector<std::pair<Param*, std::string>> updates;
    for (const auto& item : CommandLine::SplitTopLevel(CommandLine::StripBraces(value), ',')) {
        if (CommandLine::Trim(item).empty()) continue;
        const auto eq = item.find('=');
        if (eq == std::string::npos) return Reply::WrongSecond();
        Param* p = params_.Find(path + "/" + CommandLine::Trim(item.substr(0, eq)));
        if (!p || p->ReadOnly()) return Reply::WrongSecond();
        const auto canonical = p->kind.Canonical(item.substr(eq + 1));
        if (!canonical) return Reply::WrongSecond();
        updates.emplace_back(p, *canonical);
    }
    for (auto& [p, v] : updates) p->value = std::move(v);
    return Reply::Success();
}

Reply Receiver::SetCurrentFile(const std::string& path, const std::string& value, const Context& ctx) {
    std::string name = CommandLine::Unquote(value);
    if (name.empty()) {
        params_.Find(path)->value.clear();
        return Reply::Success();
    }
    if (name.find('/') == std::string::npos) name = "/log/" + name;
    if (name.front() != '/') name = "/" + name;
    if (!ValidFileName(name)) return Reply::WrongSecond();
    if (Value("dev/blk/a/removed") == "on") return Reply::Error("no medium");
    files_.Create(name, ctx.now);
    params_.Find(path)->value = name;
    RefreshDerived();
    return Reply::Success();
}

// Parameters that are orders rather than values; nullopt when `path` is not one.
std::optional<Reply> Receiver::RunAction(const std::string& path, const std::string& value, const Context& ctx) {
    if (!options_.extBoard && CommandLine::StartsWith(path, "ext/")) return Reply::WrongFirst();
    const auto expect = [&](std::string_view word) {
        return value == word ? Reply::Success() : Reply::WrongSecond();
    };
    if (path == "com/a/profile") {
        // Choosing a profile starts the script engine on it; the empty name stops it.
        const std::string name = CommandLine::Unquote(value);
        if (!name.empty() && !files_.Find("/com/a/profile/" + name)) return Reply::WrongSecond();
        AssignDerived(path, name);
        AssignDerived("com/a/cur/state", name.empty() ? "stopped" : "running");
        AssignDerived("com/a/cur/report", name.empty() ? "idle" : "profile " + name + " started");
        AssignDerived("com/a/cur/script", name.empty() ? "" : "init");
        return Reply::Success();
    }
    if (path == "log/rot/force") {
        if (value != "on") return Reply::WrongSecond();
        Rotate(ctx.now);
        return Reply::Success();
    }
    if (path == "pos/pd/reset") return expect("on");
    if (path == "ext/bt/reset") {
        if (value != "yes") return Reply::WrongSecond();
        AssignDerived("ext/bt/power", "on");   // the module comes back powered, off the multiplexer
        AssignDerived("ext/bt/mux", "off");
        return Reply::Success();
    }
    if (CommandLine::StartsWith(path, "ext/audio/play/")) {
        long sound = 0;
        if (!ParseInt(path.substr(15), 1, 64, sound)) return Reply::WrongFirst();
        return expect("on");
    }
    if (path == "ref/avg/list/pnts/add" || path == "ref/avg/list/pnts/del") {
        long slot = 0;
        if (!ParseInt(value, 0, 19, slot)) return Reply::WrongSecond();
        const std::string base = PointBase(slot);
        const bool exists = params_.IsNode(base);
        if (exists && Value(base + "/protect") == "on") return Reply::WrongSecond();
        if (path.ends_with("/del")) {
            if (!exists) return Reply::WrongSecond();
            params_.RemoveSubtree(base);
            return Reply::Success();
        }
        params_.RemoveSubtree(base);
        const auto where = CoordText::ParseGeo(Value("ref/avg/list/curpnt/arp/geo"));
        AddPoint(static_cast<int>(slot), Value("ref/avg/list/curpnt/name"),
                 std::atoi(Value("ref/avg/list/curpnt/id").c_str()), TimeText(ctx.now),
                 where ? *where : options_.site, true);
        return Reply::Success();
    }
    if (CommandLine::StartsWith(path, "ref/avg/list/pnts/") && path.ends_with("/option/protect")) {
        const std::string base = path.substr(0, path.size() - 15);
        Param* p = params_.Find(base + "/protect");
        if (!p) return Reply::WrongFirst();
        if (value != "on" && value != "off") return Reply::WrongSecond();
        p->value = value;
        return Reply::Success();
    }
    return std::nullopt;
}

Reply Receiver::ClearItem(const std::string& path) {
    if (path == "com/a") {
        // Uninstalling the script-port driver: its files, variables and profile go.
        files_.RemoveAll("/com/a/");
        std::erase_if(uploads_, [](const auto& u) { return CommandLine::StartsWith(u.first, "/com/a/"); });
        params_.RemoveSubtree("com/a/var");
        AssignDerived("com/a/profile", "");
        RefreshDerived();
        return Reply::Success();
    }
    if (!params_.IsNode(path) && !params_.Find(path)) return Reply::WrongFirst();
    params_.Reset(path, 0);
    return Reply::Success();
}

// A geodetic and a Cartesian text name the same point; writing one rewrites the other.
void Receiver::SyncCoordinates(const std::string& path) {
    const std::string stem = path.substr(0, path.size() - 3);
    if (path.ends_with("/geo")) {
        const auto g = CoordText::ParseGeo(Value(path));
        if (g && params_.Find(stem + "xyz")) AssignDerived(stem + "xyz", CoordText::FormatXyz(geodesy::ToCartesian(*g)));
    } else if (path.ends_with("/xyz")) {
        const auto e = CoordText::ParseXyz(Value(path));
        if (e && params_.Find(stem + "geo")) AssignDerived(stem + "geo", CoordText::FormatGeo(geodesy::ToGeodetic(*e)));
    }
}

Reply Receiver::Init(const Args& args, const Context& ctx) {
    if (args.empty()) return Reply::WrongFirst();
    const Target t = CommandLine::ParseTarget(args[0]);
    if (t.path == "setup" && options_.oldFirmware) return Reply::WrongCommand();
    if (t.path == "setup" || t.path.empty() || t.path == "dev/nvm/a") {
        Restart();
        return options_.silentInit ? Reply::Silent() : Reply::Success();
    }
    if (t.path == "dev/boot") return EnterLoader();
    if (t.path == "dev/blk/a") {
        files_.RemoveAll("/log/");
        for (const char* cur : {"cur/file/a", "cur/file/b"}) AssignDerived(cur, "");
        RefreshDerived();
        (void)ctx;
        return Reply::Success();
    }
    if (!params_.IsNode(t.path) && !params_.Find(t.path)) return Reply::WrongFirst();
    params_.Reset(t.path, 0);
    return Reply::Success();
}

Reply Receiver::Event(const Args& args, const Context& ctx) {
    if (args.empty()) return Reply::WrongFirst();
    const std::string record = CommandLine::Unquote(JoinFrom(args, 0));
    const auto eq = record.find('=');
    if (eq == std::string::npos || eq == 0) return Reply::WrongFirst();
    const std::string line = "EVT " + TimeText(ctx.now) + " " + record + "\n";
    for (const char* cur : {"cur/file/a", "cur/file/b"})
        if (!Value(cur).empty()) files_.Append(Value(cur), line, ctx.now);
    RefreshDerived();
    return Reply::Success();
}

Reply Receiver::Create(const Args& args, const Context& ctx) {
    if (args.empty()) return Reply::WrongFirst();
    const std::string path = CommandLine::Unquote(args[0]);
    if (!ValidFileName(path) || !files_.Create(path, ctx.now)) return Reply::WrongFirst();
    RefreshDerived();
    return Reply::Success();
}

Reply Receiver::Remove(const Args& args, const Context&) {
    if (args.empty()) return Reply::WrongFirst();
    std::string path = CommandLine::Unquote(args[0]);
    if (!path.empty() && path.front() != '/') path = "/" + path;
    if (!files_.Remove(path)) return Reply::WrongFirst();
    for (const char* cur : {"cur/file/a", "cur/file/b"})
        if (Value(cur) == path) AssignDerived(cur, "");
    RefreshDerived();
    return Reply::Success();
}

// sim,latency,<ms>[,<path>] | sim,silence,<path>|*|off | sim,garbage,<ms>[,<bytes>]
// sim,drop[,<ms>] | sim,dropafter,<ms> | sim,clear | sim,faults
Reply Receiver::Sim(const Args& args, const Context&) {
    if (args.empty()) return Reply::WrongFirst();
    const std::string verb = CommandLine::Trim(args[0]);
    long n = 0;
    const auto number = [&](std::size_t i, long lo, long hi) {
        return args.size() > i && ParseInt(args[i], lo, hi, n);
    };
    if (verb == "latency") {
        if (!number(1, 0, 600000)) return Reply::WrongSecond();
        faults_.latencyMs = static_cast<int>(n);
        faults_.latencyPath = args.size() > 2 ? CommandLine::NormalizePath(args[2]) : "";
    } else if (verb == "silence") {
        if (args.size() < 2) return Reply::WrongSecond();
        const std::string what = CommandLine::Trim(args[1]);
        if (what == "off") {
            faults_.silenceAll = false;
            faults_.silentPaths.clear();
        } else if (what == "*") {
            faults_.silenceAll = true;
        } else {
            faults_.silentPaths.push_back(CommandLine::NormalizePath(what));
        }
    } else if (verb == "garbage") {
        if (!number(1, 0, 3600000)) return Reply::WrongSecond();
        faults_.garbageEveryMs = static_cast<int>(n);
        if (number(2, 1, 65536)) faults_.garbageBytes = static_cast<int>(n);
    } else if (verb == "drop") {
        Reply r = Reply::Success();
        r.effect = ReplyEffect::DropLink;
        r.dropAfterMs = number(1, 0, 3600000) ? static_cast<int>(n) : 0;
        return r;
    } else if (verb == "dropafter") {
        if (!number(1, 0, 3600000)) return Reply::WrongSecond();
        faults_.dropAfterMs = static_cast<int>(n);
    } else if (verb == "clear") {
        faults_ = FaultPlan{};
    } else if (verb == "faults") {
        char text[160];
        std::snprintf(text, sizeof text, "{latency=%d,latencypath=%s,silence=%s,silent=%zu,garbage=%d,dropafter=%d}",
                      faults_.latencyMs, faults_.latencyPath.c_str(), faults_.silenceAll ? "all" : "some",
                      faults_.silentPaths.size(), faults_.garbageEveryMs, faults_.dropAfterMs);
        return Reply::Success(text);
    } else {
        return Reply::WrongFirst();
    }
    return Reply::Success();
}

}  // namespace rcvsim
