#include "tools/rcvsim/Schedule.h"

#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstdlib>

#include "tools/rcvsim/CommandLine.h"

namespace rcvsim {
namespace {

std::optional<double> Real(const std::string& s, double lo, double hi) {
    if (s.empty()) return std::nullopt;
    char* end = nullptr;
    const double v = std::strtod(s.c_str(), &end);
    if (end != s.c_str() + s.size() || !std::isfinite(v) || v < lo || v > hi) return std::nullopt;
    return v;
}

std::optional<long long> Integer(const std::string& s, int base, long long lo, long long hi) {
    if (s.empty()) return std::nullopt;
    errno = 0;
    char* end = nullptr;
    const long long v = std::strtoll(s.c_str(), &end, base);
    if (errno != 0 || end != s.c_str() + s.size() || v < lo || v > hi) return std::nullopt;
    return v;
}

}  // namespace

std::string Schedule::Format() const {
    char buf[96];
    std::snprintf(buf, sizeof buf, "{%.2f,%.2f,%d,0x%x}", period, phase, count, flags);
    return buf;
}

std::optional<Schedule> Schedule::Parse(std::string_view text) {
    const std::string t = CommandLine::Trim(text);
    if (t.size() < 2 || t.front() != '{' || t.back() != '}') return std::nullopt;
    const auto f = CommandLine::SplitTopLevel(CommandLine::StripBraces(t), ',');
    if (f.size() != 4) return std::nullopt;
    const auto period = Real(CommandLine::Trim(f[0]), 0, 86400);
    const auto phase = Real(CommandLine::Trim(f[1]), 0, 86400);
    const auto count = Integer(CommandLine::Trim(f[2]), 10, -256, 32767);
    const std::string flagText = CommandLine::Trim(f[3]);
    if (flagText.size() < 3 || flagText[0] != '0' || (flagText[1] != 'x' && flagText[1] != 'X'))
        return std::nullopt;
    const auto flags = Integer(flagText.substr(2), 16, 0, 0xffffffffLL);
    if (!period || !phase || !count || !flags) return std::nullopt;
    return Schedule{*period, *phase, static_cast<int>(*count), static_cast<unsigned>(*flags)};
}

}  // namespace rcvsim
