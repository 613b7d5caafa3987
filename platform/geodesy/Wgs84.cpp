#include "platform/geodesy/Wgs84.h"

#include <cmath>

namespace geodesy {
namespace {

constexpr double kEp2 = kE2 / (1.0 - kE2);   // second eccentricity squared

double PrimeVerticalRadius(double sinLat) { return kSemiMajor / std::sqrt(1.0 - kE2 * sinLat * sinLat); }

}  // namespace

Cartesian ToCartesian(const Geodetic& g) {
    const double lat = Radians(g.latDeg), lon = Radians(g.lonDeg);
    const double sinLat = std::sin(lat), cosLat = std::cos(lat);
    const double n = PrimeVerticalRadius(sinLat);
    return {(n + g.height) * cosLat * std::cos(lon), (n + g.height) * cosLat * std::sin(lon),
            (n * (1.0 - kE2) + g.height) * sinLat};
}

// Bowring's parametric start refined a fixed number of times: well below a millimetre from the
// centre of the Earth to far above it, without a loop whose count depends on the input.
Geodetic ToGeodetic(const Cartesian& c) {
    const double p = std::hypot(c.x, c.y);
    if (p < 1e-9) return {c.z >= 0 ? 90.0 : -90.0, 0.0, std::fabs(c.z) - kSemiMinor};
    const double lon = std::atan2(c.y, c.x);
    double beta = std::atan2(kSemiMajor * c.z, kSemiMinor * p);
    double lat = 0;
    for (int i = 0; i < 3; ++i) {
        const double sb = std::sin(beta), cb = std::cos(beta);
        lat = std::atan2(c.z + kEp2 * kSemiMinor * sb * sb * sb, p - kE2 * kSemiMajor * cb * cb * cb);
        beta = std::atan2((1.0 - kFlattening) * std::sin(lat), std::cos(lat));
    }
    const double sinLat = std::sin(lat);
    const double n = PrimeVerticalRadius(sinLat);
    // Near the poles the height is better taken from Z than from the distance to the axis.
    const double height = std::fabs(lat) < kPi / 4 ? p / std::cos(lat) - n : c.z / sinLat - n * (1.0 - kE2);
    return {Degrees(lat), Degrees(lon), height};
}

Enu ToEnu(const Geodetic& site, const Cartesian& point) {
    const Cartesian o = ToCartesian(site);
    const double dx = point.x - o.x, dy = point.y - o.y, dz = point.z - o.z;
    const double lat = Radians(site.latDeg), lon = Radians(site.lonDeg);
    const double sl = std::sin(lat), cl = std::cos(lat), so = std::sin(lon), co = std::cos(lon);
    return {-so * dx + co * dy, -sl * co * dx - sl * so * dy + cl * dz, cl * co * dx + cl * so * dy + sl * dz};
}

}  // namespace geodesy
