#pragma once
#include "platform/devio/PositionRecord.h"

// The status pages show and plot both halves of a fix; a receiver that outputs only one of them
// gets the other derived on the WGS-84 ellipsoid.
namespace wgs84 {

inline constexpr double kSemiMajor = 6378137.0;
inline constexpr double kInverseFlattening = 298.257223563;
inline constexpr double kDegToRad = 0.017453292519943295;
inline constexpr double kRadToDeg = 57.29577951308232;

struct XYZ {
    double x, y, z;
};
struct GEO {
    double lat, lon, height;   // radians, radians, metres
};

XYZ GeoToXyz(const GEO& geo);
GEO XyzToGeo(const XYZ& xyz);

// Fills the missing half of a record that carries exactly one; others are left as they came.
void CompletePosition(devio::POSITION_RECORD& record);

}  // namespace wgs84

namespace wgs84 {

struct ENU {
    double east, north, up;
};
// The offset of xyz from origin in the local east/north/up frame at the origin's geodetic
// latitude and longitude (radians).
ENU ToEnu(const XYZ& origin, double originLat, double originLon, const XYZ& xyz);

}  // namespace wgs84
