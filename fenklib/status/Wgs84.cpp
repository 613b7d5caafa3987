#include "fenklib/status/Wgs84.h"

#include <cmath>

namespace wgs84 {

namespace {
constexpr double kFlattening = 1.0 / kInverseFlattening;
constexpr double kE2 = kFlattening * (2.0 - kFlattening);   // first eccentricity squared
constexpr double kSemiMinor = kSemiMajor * (1.0 - kFlattening);
constexpr double kEp2 = kE2 / (1.0 - kE2);                  // second eccentricity squared

double PrimeVerticalRadius(double sinLat) { return kSemiMajor / std::sqrt(1.0 - kE2 * sinLat * sinLat); }
}  // namespace

XYZ GeoToXyz(const GEO& geo) {
    const double sinLat = std::sin(geo.lat);
    const double cosLat = std::cos(geo.lat);
    const double n = PrimeVerticalRadius(sinLat);
    return {(n + geo.height) * cosLat * std::cos(geo.lon), (n + geo.height) * cosLat * std::sin(geo.lon),
            (n * (1.0 - kE2) + geo.height) * sinLat};
}

// Bowring's parametric start refined twice: well below a millimetre from the centre of the
// Earth to far above it, without a loop whose count depends on the input.
GEO XyzToGeo(const XYZ& xyz) {
    const double p = std::hypot(xyz.x, xyz.y);
    const double lon = std::atan2(xyz.y, xyz.x);
    if (p < 1e-9) {
        const double lat = xyz.z >= 0 ? M_PI / 2 : -M_PI / 2;
        return {lat, lon, std::fabs(xyz.z) - kSemiMinor};
    }
    double beta = std::atan2(kSemiMajor * xyz.z, kSemiMinor * p);
    double lat = 0;
    for (int i = 0; i < 3; ++i) {
        const double sb = std::sin(beta), cb = std::cos(beta);
        lat = std::atan2(xyz.z + kEp2 * kSemiMinor * sb * sb * sb, p - kE2 * kSemiMajor * cb * cb * cb);
        beta = std::atan2((1.0 - kFlattening) * std::sin(lat), std::cos(lat));
    }
    const double sinLat = std::sin(lat);
    const double n = PrimeVerticalRadius(sinLat);
    // Near the poles the height is better taken from Z than from the horizontal distance.
    const double height = std::fabs(lat) < M_PI / 4 ? p / std::cos(lat) - n : xyz.z / sinLat - n * (1.0 - kE2);
    return {lat, lon, height};
}

void CompletePosition(devio::POSITION_RECORD& r) {
    if (r.xyzValid && !r.geoValid) {
        const GEO geo = XyzToGeo({r.x, r.y, r.z});
        r.lat = geo.lat * kRadToDeg;
        r.lon = geo.lon * kRadToDeg;
        r.height = geo.height;
        r.geoExtra = r.xyzExtra;
        r.geoValid = 1;
    } else if (r.geoValid && !r.xyzValid) {
        const XYZ xyz = GeoToXyz({r.lat * kDegToRad, r.lon * kDegToRad, r.height});
        r.x = xyz.x;
        r.y = xyz.y;
        r.z = xyz.z;
        r.xyzExtra = r.geoExtra;
        r.xyzValid = 1;
    }
}

}  // namespace wgs84

namespace wgs84 {

ENU ToEnu(const XYZ& o, double lat, double lon, const XYZ& p) {
    const double dx = p.x - o.x, dy = p.y - o.y, dz = p.z - o.z;
    const double sl = std::sin(lat), cl = std::cos(lat), so = std::sin(lon), co = std::cos(lon);
    return {-so * dx + co * dy, -sl * co * dx - sl * so * dy + cl * dz, cl * co * dx + cl * so * dy + sl * dz};
}

}  // namespace wgs84
