#include "fenklib/site/Wgs84.h"

#include <cmath>
#include <numbers>

namespace wgs84 {
namespace {

constexpr double kA = 6378137.0;                 // semi-major axis, metres
constexpr double kF = 1.0 / 298.257223563;       // flattening
constexpr double kE2 = kF * (2 - kF);            // first eccentricity squared
constexpr double kRad = std::numbers::pi / 180.0;

}  // namespace

devio::vok::POS_XYZ ToXyz(const devio::vok::POS_GEO& geo) {
    const double lat = geo.lat * kRad, lon = geo.lon * kRad;
    const double n = kA / std::sqrt(1 - kE2 * std::sin(lat) * std::sin(lat));
    return {(n + geo.height) * std::cos(lat) * std::cos(lon), (n + geo.height) * std::cos(lat) * std::sin(lon),
            (n * (1 - kE2) + geo.height) * std::sin(lat)};
}

// Iterated on the latitude; a few rounds reach well below a millimetre anywhere off the axis.
devio::vok::POS_GEO ToGeo(const devio::vok::POS_XYZ& xyz) {
    const double p = std::hypot(xyz.x, xyz.y);
    const double lon = std::atan2(xyz.y, xyz.x);
    if (p < 1e-9) {   // on the axis: a pole
        const double b = kA * (1 - kF);
        return {xyz.z >= 0 ? 90.0 : -90.0, 0.0, std::fabs(xyz.z) - b};
    }
    double lat = std::atan2(xyz.z, p * (1 - kE2));
    double height = 0;
    for (int i = 0; i < 10; ++i) {
        const double n = kA / std::sqrt(1 - kE2 * std::sin(lat) * std::sin(lat));
        height = p / std::cos(lat) - n;
        lat = std::atan2(xyz.z, p * (1 - kE2 * n / (n + height)));
    }
    return {lat / kRad, lon / kRad, height};
}

DMS ToDms(double degrees, int decimals) {
    const double scale = std::pow(10.0, decimals);
    const long long units = std::llround(std::fabs(degrees) * 3600.0 * scale);
    const long long perMinute = std::llround(60 * scale), perDegree = 60 * perMinute;
    DMS dms;
    dms.negative = degrees < 0 && units != 0;
    dms.degrees = static_cast<int>(units / perDegree);
    dms.minutes = static_cast<int>(units % perDegree / perMinute);
    dms.seconds = static_cast<double>(units % perMinute) / scale;
    return dms;
}

double FromDms(const DMS& dms) {
    const double value = dms.degrees + dms.minutes / 60.0 + dms.seconds / 3600.0;
    return dms.negative ? -value : value;
}

}  // namespace wgs84
