#pragma once
#include "platform/geodesy/Wgs84.h"

namespace rcvsim {

using Geodetic = geodesy::Geodetic;
using Ecef = geodesy::Cartesian;

struct Look {
    double elevationDeg = 0;
    double azimuthDeg = 0;  // 0..360, clockwise from north
    double range = 0;       // metres
    double east = 0, north = 0, up = 0;  // unit line-of-sight vector in the local frame
};

// The view of a point in space from a site on the ground.
class Geodesy {
public:
    static constexpr double kEarthRate = 7.2921151467e-5;  // rad/s

    static Look LookAt(const Geodetic& site, const Ecef& target);
};

}  // namespace rcvsim
