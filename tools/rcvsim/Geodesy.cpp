#include "tools/rcvsim/Geodesy.h"

#include <cmath>

namespace rcvsim {

Look Geodesy::LookAt(const Geodetic& site, const Ecef& target) {
    const geodesy::Enu enu = geodesy::ToEnu(site, target);
    Look look;
    look.range = std::sqrt(enu.east * enu.east + enu.north * enu.north + enu.up * enu.up);
    look.elevationDeg = geodesy::Degrees(std::atan2(enu.up, std::hypot(enu.east, enu.north)));
    const double az = geodesy::Degrees(std::atan2(enu.east, enu.north));
    look.azimuthDeg = az < 0 ? az + 360 : az;
    if (look.range > 0) {
        look.east = enu.east / look.range;
        look.north = enu.north / look.range;
        look.up = enu.up / look.range;
    }
    return look;
}

}  // namespace rcvsim
