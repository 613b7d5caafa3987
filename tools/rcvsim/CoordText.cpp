#include "tools/rcvsim/CoordText.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <vector>

#include "tools/rcvsim/CommandLine.h"

namespace rcvsim {
namespace {

std::string Angle(double deg, char pos, char neg, int degDigits) {
    const double a = std::abs(deg);
    int d = static_cast<int>(a);
    int m = static_cast<int>((a - d) * 60);
    double s = (a - d - m / 60.0) * 3600;
    if (s >= 59.9999995) {  // keep "%f" from printing 60.000000 seconds
        s = 0;
        if (++m == 60) m = 0, ++d;
    }
    char buf[48];
    std::snprintf(buf, sizeof buf, "%c%0*dd%02dm%fs", deg < 0 ? neg : pos, degDigits, d, m, s);
    return buf;
}

std::optional<double> ParseNumber(std::string_view text) {
    const std::string s = CommandLine::Trim(text);
    if (s.empty()) return std::nullopt;
    char* end = nullptr;
    const double v = std::strtod(s.c_str(), &end);
    if (end != s.c_str() + s.size() || !std::isfinite(v)) return std::nullopt;
    return v;
}

// "N55d45m12.3456s" -> signed degrees.
std::optional<double> ParseAngle(std::string_view text, char pos, char neg, double limit) {
    const std::string s = CommandLine::Trim(text);
    if (s.size() < 7 || (s[0] != pos && s[0] != neg)) return std::nullopt;
    const auto d = s.find('d'), m = s.find('m');
    if (d == std::string::npos || m == std::string::npos || m < d || s.back() != 's')
        return std::nullopt;
    const auto deg = ParseNumber(std::string_view(s).substr(1, d - 1));
    const auto min = ParseNumber(std::string_view(s).substr(d + 1, m - d - 1));
    const auto sec = ParseNumber(std::string_view(s).substr(m + 1, s.size() - m - 2));
    if (!deg || !min || !sec || *min < 0 || *min >= 60 || *sec < 0 || *sec >= 60 || *deg < 0)
        return std::nullopt;
    const double v = *deg + *min / 60 + *sec / 3600;
    if (v > limit) return std::nullopt;
    return s[0] == neg ? -v : v;
}

std::optional<std::vector<std::string>> W84Fields(std::string_view text) {
    const std::string t = CommandLine::Trim(text);
    if (t.size() < 2 || t.front() != '{' || t.back() != '}') return std::nullopt;
    auto fields = CommandLine::SplitTopLevel(CommandLine::StripBraces(t), ',');
    if (fields.size() != 4 || CommandLine::Trim(fields[0]) != "W84") return std::nullopt;
    return fields;
}

}  // namespace

std::string CoordText::FormatGeo(const Geodetic& g) {
    char h[48];
    std::snprintf(h, sizeof h, "%f", g.height);
    return "{W84," + Angle(g.latDeg, 'N', 'S', 2) + "," + Angle(g.lonDeg, 'E', 'W', 3) + "," + h +
           "}";
}

std::string CoordText::FormatXyz(const Ecef& e) {
    char buf[128];
    std::snprintf(buf, sizeof buf, "{W84,%.4f,%.4f,%.4f}", e.x, e.y, e.z);
    return buf;
}

std::optional<Geodetic> CoordText::ParseGeo(std::string_view text) {
    const auto fields = W84Fields(text);
    if (!fields) return std::nullopt;
    const auto lat = ParseAngle((*fields)[1], 'N', 'S', 90);
    const auto lon = ParseAngle((*fields)[2], 'E', 'W', 180);
    const auto h = ParseNumber((*fields)[3]);
    if (!lat || !lon || !h || std::abs(*h) > 100000) return std::nullopt;
    return Geodetic{*lat, *lon, *h};
}

std::optional<Ecef> CoordText::ParseXyz(std::string_view text) {
    const auto fields = W84Fields(text);
    if (!fields) return std::nullopt;
    const auto x = ParseNumber((*fields)[1]), y = ParseNumber((*fields)[2]),
               z = ParseNumber((*fields)[3]);
    if (!x || !y || !z) return std::nullopt;
    const double r = std::sqrt(*x * *x + *y * *y + *z * *z);
    // A reference point lies on the Earth, not in its core or in orbit.
    if (r < 6.2e6 || r > 6.5e6) return std::nullopt;
    return Ecef{*x, *y, *z};
}

}  // namespace rcvsim
