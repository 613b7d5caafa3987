#include "fenklib/site/Wgs84.h"

#include <cmath>

#include "platform/geodesy/Wgs84.h"

namespace wgs84 {

devio::vok::POS_XYZ ToXyz(const devio::vok::POS_GEO& geo) {
    const geodesy::Cartesian c = geodesy::ToCartesian({geo.lat, geo.lon, geo.height});
    return {c.x, c.y, c.z};
}

devio::vok::POS_GEO ToGeo(const devio::vok::POS_XYZ& xyz) {
    const geodesy::Geodetic g = geodesy::ToGeodetic({xyz.x, xyz.y, xyz.z});
    return {g.latDeg, g.lonDeg, g.height};
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
