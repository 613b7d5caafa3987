// The reading side of the command language: "print," and "list,".
#include <cstdio>
#include <cstdlib>

#include "tools/rcvsim/Keywords.h"
#include "tools/rcvsim/Receiver.h"

namespace rcvsim {
namespace {

bool IsFilePath(std::string_view path) {
    return CommandLine::StartsWith(path, "log/") || CommandLine::StartsWith(path, "com/a/script/") ||
           CommandLine::StartsWith(path, "com/a/profile/");
}

// "[name,size,time]" -> {"name","size","time"}; "size" -> {"size"}.
std::vector<std::string> AttributeNames(std::string_view attribute) {
    std::string inner(attribute);
    if (inner.size() >= 2 && inner.front() == '[' && inner.back() == ']')
        inner = inner.substr(1, inner.size() - 2);
    std::vector<std::string> names;
    for (auto& n : CommandLine::SplitTopLevel(inner, ',')) names.push_back(CommandLine::Trim(n));
    return names;
}

bool IsListAttribute(std::string_view attribute) {
    return !attribute.empty() && attribute.front() == '[';
}

}  // namespace

Reply Receiver::Print(const Args& args, const Context& ctx) {
    if (args.empty()) return Reply::WrongFirst();
    const Target t = CommandLine::ParseTarget(args[0]);
    if (t.path.empty()) return t.On() && t.attribute.empty() ? Reply::Success(Dump()) : Reply::WrongFirst();
    if (t.path == "cur/term") return Reply::Success("/" + ctx.terminal);
    if (CommandLine::StartsWith(t.path, "out/") && !CommandLine::StartsWith(t.path, "out/elm")) {
        const std::string port = ResolvePort(t.path.substr(4), ctx);
        if (!IsOutputPort(port)) return Reply::WrongFirst();
        return Reply::Success(PortOutputs(port));
    }
    if (t.path == "msg/def") {
        std::string text = "{";
        for (const auto& name : catalog_.Names())
            text += (text.size() > 1 ? "," : "") + name + "=" + catalog_.Default(name)->Format();
        return Reply::Success(text + "}");
    }
    if (CommandLine::StartsWith(t.path, "msg/def/")) {
        const Schedule* s = catalog_.Default(t.path.substr(8));
        return s ? Reply::Success(s->Format()) : Reply::WrongFirst();
    }
    if (!t.attribute.empty()) return PrintAttribute(t, ctx);
    if (const Param* p = params_.Find(t.path)) return Reply::Success(p->value);
    if (params_.IsNode(t.path)) return Reply::Success(NodeText(t.path));
    const std::string file = "/" + t.path;
    if (const StoredFile* f = files_.Find(file)) return PrintFileAttributes(*f, "[name,size,time]", "");
    if (t.path == "log") return PrintDirectory("/log/", "name");
    return Reply::WrongFirst();
}

Reply Receiver::PrintAttribute(const Target& t, const Context&) const {
    if (t.path == "log") return PrintDirectory("/log/", t.attribute);
    if (t.path == "cur/file/a" || t.path == "cur/file/b") {
        const StoredFile* f = files_.Find(Value(t.path));
        if (!f) return t.attribute == "size" ? Reply::Success("0") : Reply::WrongFirst();
        return PrintFileAttributes(*f, t.attribute, t.option);
    }
    if (t.path == "dev/blk/a" && (t.attribute == "blocks" || t.attribute == "block_size")) {
        return Reply::Success("/dev/blk/a&" + t.attribute + "=" + Value("dev/blk/a/" + t.attribute));
    }
    if (IsFilePath(t.path)) {
        const StoredFile* f = files_.Find("/" + t.path);
        if (!f) return Reply::WrongFirst();
        return PrintFileAttributes(*f, t.attribute, t.option);
    }
    return Reply::WrongFirst();
}

std::string Receiver::FileAttribute(const StoredFile& file, std::string_view name) const {
    if (name == "name") return FileStore::Name(file.path);
    if (name == "size") return std::to_string(file.Size());
    if (name == "time") return TimeText(file.mtime);
    return {};
}

Reply Receiver::PrintFileAttributes(const StoredFile& file, std::string_view attribute,
                                    std::string_view option) const {
    if (attribute == "content") {
        if (option.empty()) return Reply::Success(file.Read(0, file.Size()));
        // ":{offset,length}" reads a piece, so that large files can be copied in parts.
        const auto f = CommandLine::SplitTopLevel(CommandLine::StripBraces(option), ',');
        if (f.size() != 2) return Reply::WrongFirst();
        const long long offset = std::atoll(f[0].c_str()), length = std::atoll(f[1].c_str());
        if (offset < 0 || length < 0 || static_cast<std::uint64_t>(offset) > file.Size())
            return Reply::WrongFirst();
        return Reply::Success(file.Read(static_cast<std::uint64_t>(offset), static_cast<std::uint64_t>(length)));
    }
    std::string text;
    for (const auto& name : AttributeNames(attribute)) {
        const std::string value = FileAttribute(file, name);
        if (value.empty()) return Reply::WrongFirst();
        text += (text.empty() ? "" : ",") + value;
    }
    return Reply::Success(IsListAttribute(attribute) ? "{" + text + "}" : text);
}

Reply Receiver::PrintDirectory(std::string_view dir, std::string_view attribute) const {
    const auto names = AttributeNames(attribute);
    std::string text = "{";
    for (const StoredFile* f : files_.List(dir)) {
        std::string entry;
        for (const auto& name : names) {
            const std::string value = FileAttribute(*f, name);
            if (value.empty()) return Reply::WrongFirst();
            entry += (entry.empty() ? "" : ",") + value;
        }
        if (text.size() > 1) text += ',';
        text += IsListAttribute(attribute) ? "{" + entry + "}" : entry;
    }
    return Reply::Success(text + "}");
}

std::string Receiver::NodeText(std::string_view path) const {
    std::string text = "{";
    for (const auto& child : params_.Children(path)) {
        const std::string full = std::string(path) + "/" + child;
        const Param* p = params_.Find(full);
        if (text.size() > 1) text += ',';
        text += child + "=" + (p ? p->value : NodeText(full));
    }
    return text + "}";
}

std::string Receiver::PortOutputs(const std::string& port) const {
    std::string text = "{";
    for (const auto& e : schedule_.Entries(port)) {
        if (text.size() > 1) text += ',';
        text += MessageCatalog::Display(e.name) + "=" + e.schedule.Format();
    }
    return text + "}";
}

std::string Receiver::Dump() const {
    std::string out;
    for (const auto& [path, param] : params_.Leaves("")) out += "/par/" + path + "=" + param->value + "\n";
    for (const auto& name : catalog_.Names())
        out += "/par/msg/def/" + name + "=" + catalog_.Default(name)->Format() + "\n";
    for (const auto& port : Keywords::DevicePorts())
        out += "/par/out/" + std::string(port) + "=" + PortOutputs(std::string(port)) + "\n";
    // The almanac the receiver holds, then its non-volatile records, up to the dump size.
    for (const auto& sat : sky_.Satellites()) {
        char line[200];
        std::snprintf(line, sizeof line,
                      "/par/alm/%d/%03d={a=%.1f,i=%.4f,raan=%.6f,u0=%.6f,lon=%.3f,health=0}\n",
                      static_cast<int>(sat.system), sat.prn, sat.radius, sat.inclination, sat.raan,
                      sat.argLat0, sat.lonDeg);
        out += line;
    }
    std::mt19937 rng(options_.seed);
    for (int record = 0; out.size() < options_.dumpBytes; ++record) {
        char line[64];
        std::snprintf(line, sizeof line, "/par/nvm/rec/%05d={", record);
        out += line;
        for (int i = 0; i < 24; ++i) {
            char byte[4];
            std::snprintf(byte, sizeof byte, "%02x", static_cast<unsigned>(rng() & 0xff));
            out += byte;
        }
        out += "}\n";
    }
    return out;
}

Reply Receiver::List(const Args& args, const Context&) {
    if (args.empty()) return Reply::WrongFirst();
    const Target t = CommandLine::ParseTarget(args[0]);
    const auto braced = [](const std::vector<std::string>& items) {
        std::string text = "{";
        for (const auto& i : items) text += (text.size() > 1 ? "," : "") + i;
        return text + "}";
    };
    if (t.path == "msg") {
        std::vector<std::string> groups;
        for (const auto g : MessageCatalog::Groups()) groups.emplace_back(g);
        return Reply::Success(braced(groups));
    }
    if (t.path == "msg/def") return Reply::Success(braced(catalog_.Names()));
    if (CommandLine::StartsWith(t.path, "msg/")) {
        const std::string group = t.path.substr(4);
        if (!catalog_.HasGroup(group)) return Reply::WrongFirst();
        return Reply::Success(braced(catalog_.NamesIn(group)));
    }
    if (const Param* p = params_.Find(t.path)) {
        if (p->kind.type != ValueKind::Type::List) return Reply::WrongFirst();
        return Reply::Success(p->value);
    }
    if (params_.IsNode(t.path)) {
        std::vector<std::string> items;
        for (const auto& child : params_.Children(t.path)) {
            const std::string full = t.path + "/" + child;
            const Param* p = params_.Find(full);
            const bool port = Keywords::IsDevicePort(full) || full == "com/a";
            items.push_back(child + "=" + (p ? p->kind.Name() : port ? "port" : "node"));
        }
        const std::string list = braced(items);
        return Reply::Success(options_.listEcho ? "{/par/" + t.path + "=" + list + "}" : list);
    }
    if (t.path == "log") return PrintDirectory("/log/", "name");
    return Reply::WrongFirst();
}

}  // namespace rcvsim
