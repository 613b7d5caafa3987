#include "tools/rcvsim/Geodesy.h"

#include <cmath>

namespace rcvsim {
namespace {
constexpr double kE2 = Geodesy::kF * (2 - Geodesy::kF);
}

Ecef Geodesy::ToEcef(const Geodetic& g) {
    const double lat = Rad(g.latDeg), lon = Rad(g.lonDeg);
    const double n = kA / std::sqrt(1 - kE2 * std::sin(lat) * std::sin(lat));
    return {(n + g.height) * std::cos(lat) * std::cos(lon),
            (n + g.height) * std::cos(lat) * std::sin(lon),
            (n * (1 - kE2) + g.height) * std::sin(lat)};
}

Geodetic Geodesy::ToGeodetic(const Ecef& e) {
    const double p = std::hypot(e.x, e.y);
    const double lon = std::atan2(e.y, e.x);
    double lat = std::atan2(e.z, p * (1 - kE2));
    double h = 0;
    // A handful of fixed-point steps converges to well below a millimetre on the Earth.
    for (int i = 0; i < 8; ++i) {
        const double n = kA / std::sqrt(1 - kE2 * std::sin(lat) * std::sin(lat));
        h = std::abs(std::cos(lat)) > 1e-12 ? p / std::cos(lat) - n : std::abs(e.z) - n * (1 - kE2);
        lat = std::atan2(e.z, p * (1 - kE2 * n / (n + h)));
    }
    return {Deg(lat), Deg(lon), h};
}

Look Geodesy::LookAt(const Geodetic& site, const Ecef& target) {
    const Ecef s = ToEcef(site);
    const double dx = target.x - s.x, dy = target.y - s.y, dz = target.z - s.z;
    const double lat = Rad(site.latDeg), lon = Rad(site.lonDeg);
    const double east = -std::sin(lon) * dx + std::cos(lon) * dy;
    const double north = -std::sin(lat) * std::cos(lon) * dx - std::sin(lat) * std::sin(lon) * dy +
                         std::cos(lat) * dz;
    const double up = std::cos(lat) * std::cos(lon) * dx + std::cos(lat) * std::sin(lon) * dy +
                      std::sin(lat) * dz;
    Look look;
    look.range = std::sqrt(dx * dx + dy * dy + dz * dz);
    look.elevationDeg = Deg(std::atan2(up, std::hypot(east, north)));
    double az = Deg(std::atan2(east, north));
    look.azimuthDeg = az < 0 ? az + 360 : az;
    if (look.range > 0) {
        look.east = east / look.range;
        look.north = north / look.range;
        look.up = up / look.range;
    }
    return look;
}

}  // namespace rcvsim
