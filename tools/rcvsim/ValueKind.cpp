#include "tools/rcvsim/ValueKind.h"

#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstdlib>

#include "tools/rcvsim/CommandLine.h"
#include "tools/rcvsim/CoordText.h"
#include "tools/rcvsim/Keywords.h"

namespace rcvsim {
namespace {

bool HasControl(std::string_view s) {
    for (const unsigned char c : s)
        if (c < 0x20 || c == 0x7f) return true;
    return false;
}

std::optional<std::string> CanonicalInt(std::string_view in, double lo, double hi) {
    const std::string s = CommandLine::Trim(in);
    if (s.empty()) return std::nullopt;
    errno = 0;
    char* end = nullptr;
    const long long v = std::strtoll(s.c_str(), &end, 10);
    if (errno != 0 || end != s.c_str() + s.size()) return std::nullopt;
    if (static_cast<double>(v) < lo || static_cast<double>(v) > hi) return std::nullopt;
    return std::to_string(v);
}

std::optional<std::string> CanonicalReal(std::string_view in, double lo, double hi, int decimals) {
    const std::string s = CommandLine::Trim(in);
    if (s.empty()) return std::nullopt;
    char* end = nullptr;
    const double v = std::strtod(s.c_str(), &end);
    if (end != s.c_str() + s.size() || !std::isfinite(v) || v < lo || v > hi) return std::nullopt;
    char buf[64];
    std::snprintf(buf, sizeof buf, "%.*f", decimals, v);
    return buf;
}

std::optional<std::string> CanonicalPair(std::string_view in, std::string_view a,
                                         std::string_view b) {
    const std::string inner = CommandLine::StripBraces(in);
    if (inner.size() + 2 != CommandLine::Trim(in).size()) return std::nullopt;  // braces needed
    const auto items = CommandLine::SplitTopLevel(inner, ',');
    if (items.size() != 2) return std::nullopt;
    std::string out = "{";
    for (std::size_t i = 0; i < 2; ++i) {
        const std::string item = CommandLine::Trim(items[i]);
        if (item != a && item != b) return std::nullopt;
        out += item + (i == 0 ? "," : "}");
    }
    return out;
}

}  // namespace

std::optional<std::string> ValueKind::Canonical(std::string_view input) const {
    if (HasControl(input)) return std::nullopt;
    switch (type) {
    case Type::Text: return CommandLine::Unquote(input);
    case Type::Int: return CanonicalInt(input, min, max);
    case Type::Real: return CanonicalReal(input, min, max, decimals);
    case Type::Keyword: {
        const std::string w = CommandLine::Trim(input);
        if (!Keywords::Contains(words, w)) return std::nullopt;
        return w;
    }
    case Type::PortRef: {
        const std::string w = CommandLine::Trim(input);
        if (w.empty() || w.front() != '/') return std::nullopt;
        if (!Keywords::Contains(Keywords::Ports(), std::string_view(w).substr(1)))
            return std::nullopt;
        return w;
    }
    case Type::FlagPair: return CanonicalPair(input, "y", "n");
    case Type::SwitchPair: return CanonicalPair(input, "on", "off");
    case Type::GeoCoord: {
        const auto g = CoordText::ParseGeo(input);
        if (!g) return std::nullopt;
        return CoordText::FormatGeo(*g);
    }
    case Type::XyzCoord: {
        const auto e = CoordText::ParseXyz(input);
        if (!e) return std::nullopt;
        return CoordText::FormatXyz(*e);
    }
    case Type::CorrMode: {
        const std::string w = CommandLine::Trim(input);
        if (w == "mpnew" || w == "on") return std::string("on");
        if (w == "normal" || w == "off") return std::string("off");
        return std::nullopt;
    }
    case Type::List: {
        const std::string w = CommandLine::Trim(input);
        if (w.size() < 2 || w.front() != '{' || w.back() != '}') return std::nullopt;
        return w;
    }
    }
    return std::nullopt;
}

const char* ValueKind::Name() const {
    switch (type) {
    case Type::Text: return "text";
    case Type::Int: return "int";
    case Type::Real: return "real";
    case Type::Keyword: return "kw";
    case Type::PortRef: return "port";
    case Type::FlagPair:
    case Type::SwitchPair:
    case Type::List: return "list";
    case Type::GeoCoord:
    case Type::XyzCoord: return "coord";
    case Type::CorrMode: return "kw";
    }
    return "text";
}

}  // namespace rcvsim
