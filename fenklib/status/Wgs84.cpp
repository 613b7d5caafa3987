#include "fenklib/status/Wgs84.h"

#include "platform/geodesy/Wgs84.h"

namespace wgs84 {

void CompletePosition(devio::POSITION_RECORD& r) {
    if (r.xyzValid && !r.geoValid) {
        const geodesy::Geodetic geo = geodesy::ToGeodetic({r.x, r.y, r.z});
        r.lat = geo.latDeg;
        r.lon = geo.lonDeg;
        r.height = geo.height;
        r.geoExtra = r.xyzExtra;
        r.geoValid = 1;
    } else if (r.geoValid && !r.xyzValid) {
        const geodesy::Cartesian xyz = geodesy::ToCartesian({r.lat, r.lon, r.height});
        r.x = xyz.x;
        r.y = xyz.y;
        r.z = xyz.z;
        r.xyzExtra = r.geoExtra;
        r.xyzValid = 1;
    }
}

}  // namespace wgs84
