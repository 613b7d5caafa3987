#pragma once

namespace rcvsim {

struct Geodetic {
    double latDeg = 0;
    double lonDeg = 0;
    double height = 0;  // metres above the WGS-84 ellipsoid
};

struct Ecef {
    double x = 0;
    double y = 0;
    double z = 0;
};

struct Look {
    double elevationDeg = 0;
    double azimuthDeg = 0;  // 0..360, clockwise from north
    double range = 0;       // metres
    double east = 0, north = 0, up = 0;  // unit line-of-sight vector in the local frame
};

// WGS-84 conversions and the view of a point in space from a site on the ground.
class Geodesy {
public:
    static constexpr double kPi = 3.14159265358979323846;
    static constexpr double kA = 6378137.0;
    static constexpr double kF = 1.0 / 298.257223563;
    static constexpr double kEarthRate = 7.2921151467e-5;  // rad/s

    static double Rad(double deg) { return deg * kPi / 180.0; }
    static double Deg(double rad) { return rad * 180.0 / kPi; }
    static Ecef ToEcef(const Geodetic& g);
    static Geodetic ToGeodetic(const Ecef& e);
    static Look LookAt(const Geodetic& site, const Ecef& target);
};

}  // namespace rcvsim
