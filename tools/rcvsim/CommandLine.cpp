#include "tools/rcvsim/CommandLine.h"

namespace rcvsim {

std::vector<std::string> CommandLine::SplitTopLevel(std::string_view text, char sep) {
    std::vector<std::string> pieces;
    std::string current;
    int depth = 0;
    bool inQuotes = false;
    for (const char c : text) {
        if (c == '"') inQuotes = !inQuotes;
        if (!inQuotes) {
            if (c == '{' || c == '[') ++depth;
            if ((c == '}' || c == ']') && depth > 0) --depth;
            if (c == sep && depth == 0) {
                pieces.push_back(std::move(current));
                current.clear();
                continue;
            }
        }
        current.push_back(c);
    }
    pieces.push_back(std::move(current));
    return pieces;
}

std::string CommandLine::Trim(std::string_view text) {
    const auto first = text.find_first_not_of(" \t");
    if (first == std::string_view::npos) return {};
    const auto last = text.find_last_not_of(" \t");
    return std::string(text.substr(first, last - first + 1));
}

std::vector<std::string> CommandLine::SplitJoined(std::string_view line) {
    std::vector<std::string> commands;
    for (auto& piece : SplitTopLevel(line, ';')) {
        auto trimmed = Trim(piece);
        if (!trimmed.empty()) commands.push_back(std::move(trimmed));
    }
    return commands;
}

std::string CommandLine::Word(std::string_view command) {
    return Trim(command.substr(0, command.find(',')));
}

std::vector<std::string> CommandLine::Arguments(std::string_view command) {
    const auto comma = command.find(',');
    if (comma == std::string_view::npos) return {};
    return SplitTopLevel(command.substr(comma + 1), ',');
}

std::string CommandLine::Unquote(std::string_view text) {
    auto trimmed = Trim(text);
    if (trimmed.size() >= 2 && trimmed.front() == '"' && trimmed.back() == '"')
        return trimmed.substr(1, trimmed.size() - 2);
    return trimmed;
}

std::string CommandLine::StripBraces(std::string_view text) {
    auto trimmed = Trim(text);
    if (trimmed.size() >= 2 && trimmed.front() == '{' && trimmed.back() == '}')
        return trimmed.substr(1, trimmed.size() - 2);
    return trimmed;
}

std::string CommandLine::NormalizePath(std::string_view path) {
    std::string p = Trim(path);
    while (!p.empty() && p.front() == '/') p.erase(0, 1);
    if (p == "par") return {};
    if (StartsWith(p, "par/")) p.erase(0, 4);
    // "ref/arp//geo" names the default system's value, which is GPS.
    for (auto pos = p.find("//"); pos != std::string::npos; pos = p.find("//"))
        p.replace(pos, 2, "/gps/");
    while (!p.empty() && p.back() == '/') p.pop_back();
    return p;
}

Target CommandLine::ParseTarget(std::string_view argument) {
    Target target;
    std::string_view arg = argument;
    while (!arg.empty() && arg.front() == ' ') arg.remove_prefix(1);
    // A quoted path may carry its attribute inside the quotes ("/log/x&size") or after them.
    std::string unquoted;
    if (!arg.empty() && arg.front() == '"') {
        const auto close = arg.find('"', 1);
        unquoted = std::string(arg.substr(1, close == std::string_view::npos ? arg.npos : close - 1));
        if (close != std::string_view::npos) unquoted += arg.substr(close + 1);
        arg = unquoted;
        target.quoted = true;
    }
    const auto cut = arg.find_first_of("&:");
    target.path = NormalizePath(arg.substr(0, cut));
    std::string_view rest = cut == std::string_view::npos ? std::string_view{} : arg.substr(cut);
    if (!rest.empty() && rest.front() == '&') {
        rest.remove_prefix(1);
        const auto parts = SplitTopLevel(rest, ':');
        target.attribute = Trim(parts.front());
        rest = parts.size() > 1 ? rest.substr(parts.front().size()) : std::string_view{};
    }
    if (!rest.empty() && rest.front() == ':') target.option = Trim(rest.substr(1));
    return target;
}

}  // namespace rcvsim
