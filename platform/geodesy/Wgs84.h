#pragma once

// Positions on the WGS-84 ellipsoid: earth-centred Cartesian coordinates and geodetic latitude,
// longitude and height, each way, and the local east/north/up frame of a site. Plain C++ with
// no dependency, so that the status sheet, the site windows and the receiver simulator share it.
namespace geodesy {

inline constexpr double kPi = 3.14159265358979323846;
inline constexpr double kSemiMajor = 6378137.0;                 // a, metres
inline constexpr double kInverseFlattening = 298.257223563;     // 1/f
inline constexpr double kFlattening = 1.0 / kInverseFlattening;
inline constexpr double kSemiMinor = kSemiMajor * (1.0 - kFlattening);
inline constexpr double kE2 = kFlattening * (2.0 - kFlattening);   // first eccentricity squared

constexpr double Radians(double degrees) { return degrees * kPi / 180.0; }
constexpr double Degrees(double radians) { return radians * 180.0 / kPi; }

struct Cartesian {
    double x = 0, y = 0, z = 0;   // metres from the centre of the Earth
};
struct Geodetic {
    double latDeg = 0, lonDeg = 0;   // degrees, north and east positive
    double height = 0;               // metres above the ellipsoid
};
struct Enu {
    double east = 0, north = 0, up = 0;   // metres
};

Cartesian ToCartesian(const Geodetic& geodetic);
// Longitudes come back in -180..180; a point on the axis is a pole at longitude 0.
Geodetic ToGeodetic(const Cartesian& cartesian);
// The offset of point from site in the east/north/up frame whose up is the ellipsoid's normal
// at site.
Enu ToEnu(const Geodetic& site, const Cartesian& point);

}  // namespace geodesy
