// WGS-84 both ways, checked against points whose coordinates follow from the ellipsoid's axes,
// against a closed-form inverse (Heikkinen) that shares no code with the module's, by round trips
// and in the local east/north/up frame.
#include <gtest/gtest.h>

#include <cmath>

#include "platform/geodesy/Wgs84.h"

namespace {

constexpr long double kA = 6378137.0L;
constexpr long double kF = 1.0L / 298.257223563L;
constexpr long double kE2 = kF * (2 - kF);
constexpr long double kB = kA * (1 - kF);
constexpr long double kPiL = 3.14159265358979323846264338327950288L;

struct GEO_DEG {
    double lat, lon, height;
};

// Heikkinen's exact closed form.
GEO_DEG Heikkinen(long double x, long double y, long double z) {
    const long double ep2 = (kA * kA - kB * kB) / (kB * kB);
    const long double p = std::sqrt(x * x + y * y);
    const long double F = 54 * kB * kB * z * z;
    const long double G = p * p + (1 - kE2) * z * z - kE2 * (kA * kA - kB * kB);
    const long double c = kE2 * kE2 * F * p * p / (G * G * G);
    const long double s = std::cbrt(1 + c + std::sqrt(c * c + 2 * c));
    const long double k = s + 1 + 1 / s;
    const long double P = F / (3 * k * k * G * G);
    const long double Q = std::sqrt(1 + 2 * kE2 * kE2 * P);
    const long double r0 = -P * kE2 * p / (1 + Q) +
                           std::sqrt(kA * kA / 2 * (1 + 1 / Q) - P * (1 - kE2) * z * z / (Q * (1 + Q)) - P * p * p / 2);
    const long double U = std::sqrt((p - kE2 * r0) * (p - kE2 * r0) + z * z);
    const long double V = std::sqrt((p - kE2 * r0) * (p - kE2 * r0) + (1 - kE2) * z * z);
    const long double z0 = kB * kB * z / (kA * V);
    const long double h = U * (1 - kB * kB / (kA * V));
    const long double lat = std::atan((z + ep2 * z0) / p);
    const long double lon = std::atan2(y, x);
    return {static_cast<double>(lat * 180 / kPiL), static_cast<double>(lon * 180 / kPiL), static_cast<double>(h)};
}

// Distance in metres between two geodetic positions close to each other.
double Apart(const GEO_DEG& a, const GEO_DEG& b) {
    const double north = (a.lat - b.lat) * 111320.0;
    const double east = (a.lon - b.lon) * 111320.0 * std::cos(a.lat * M_PI / 180);
    return std::sqrt(north * north + east * east + (a.height - b.height) * (a.height - b.height));
}

struct KNOWN_POINT {
    const char* legend;
    GEO_DEG geo;
    double x, y, z;
};
// Points on the axes and on the meridians whose Cartesian coordinates follow from the
// ellipsoid's axes alone.
const KNOWN_POINT kKnown[] = {
    {"equator, Greenwich", {0, 0, 0}, 6378137.0, 0, 0},
    {"equator, 90 E, 100 m up", {0, 90, 100}, 0, 6378237.0, 0},
    {"equator, 180, 1 km down", {0, 180, -1000}, -6377137.0, 0, 0},
    {"north pole", {90, 0, 0}, 0, 0, 6356752.314245179},
    {"south pole, 50 m up", {-90, 0, 50}, 0, 0, -6356802.314245179},
};

TEST(Wgs84, KnownPointsBothWays) {
    for (const KNOWN_POINT& k : kKnown) {
        const geodesy::Cartesian c = geodesy::ToCartesian({k.geo.lat, k.geo.lon, k.geo.height});
        EXPECT_LT(std::hypot(c.x - k.x, c.y - k.y, c.z - k.z), 1e-3) << k.legend;
        const geodesy::Geodetic g = geodesy::ToGeodetic({k.x, k.y, k.z});
        EXPECT_NEAR(g.latDeg, k.geo.lat, 1e-9) << k.legend;
        EXPECT_NEAR(g.height, k.geo.height, 1e-4) << k.legend;
        if (std::fabs(k.geo.lat) < 89) {   // at a pole every longitude is the same point
            EXPECT_NEAR(g.lonDeg, k.geo.lon, 1e-9) << k.legend;
        }
    }
}

// Survey sites and extremes: the iterative inverse against the closed form.
TEST(Wgs84, InverseAgreesWithTheClosedFormWithinAMillimetre) {
    struct Row {
        const char* legend;
        double x, y, z;
    };
    const Row rows[] = {
        {"mid-latitude site", 2845456.3, 2160948.9, 5265993.2},
        {"southern hemisphere, west", 1113194.9, -4842838.3, -3985552.7},
        {"high latitude, low orbit height", 500000.0, 300000.0, 6800000.0},
        {"near the equator, deep", -6370000.0, 10.0, 1000.0},
        {"GEO satellite altitude", 42164000.0, 0.0, 100000.0},
    };
    for (const Row& row : rows) {
        const geodesy::Geodetic g = geodesy::ToGeodetic({row.x, row.y, row.z});
        EXPECT_LT(Apart({g.latDeg, g.lonDeg, g.height}, Heikkinen(row.x, row.y, row.z)), 1e-3) << row.legend;
    }
}

TEST(Wgs84, RoundTripsKeepThePosition) {
    struct Row {
        const char* legend;
        GEO_DEG geo;
    };
    const Row rows[] = {
        {"southern and western hemispheres", {-33.45, -70.66, 520}},
        {"antimeridian, below the ellipsoid", {0, 180, -30}},
        {"close to the south pole", {-89.9999, 10, 4000}},
        {"close to the north pole, east", {89.99999, 135, 12}},
        {"mountain site", {27.988, 86.925, 8848}},
        {"low orbit", {51.6, -120, 420000}},
    };
    for (const Row& row : rows) {
        const geodesy::Cartesian c = geodesy::ToCartesian({row.geo.lat, row.geo.lon, row.geo.height});
        const geodesy::Geodetic back = geodesy::ToGeodetic(c);
        EXPECT_NEAR(back.latDeg, row.geo.lat, 1e-9) << row.legend;
        EXPECT_NEAR(std::remainder(back.lonDeg - row.geo.lon, 360.0), 0, 1e-9) << row.legend;
        EXPECT_NEAR(back.height, row.geo.height, 1e-4) << row.legend;
        const geodesy::Cartesian again = geodesy::ToCartesian(back);
        EXPECT_LT(std::hypot(again.x - c.x, again.y - c.y, again.z - c.z), 1e-4) << row.legend;
    }
}

// A point a known distance along a local axis, found in the frame of a site.
TEST(Wgs84, LocalFrameOfASite) {
    struct Row {
        const char* legend;
        GEO_DEG site;
        GEO_DEG point;
        double east, north, up, tolerance;
    };
    const Row rows[] = {
        {"the site itself", {45, 10, 100}, {45, 10, 100}, 0, 0, 0, 1e-6},
        {"straight up", {45, 10, 100}, {45, 10, 150}, 0, 0, 50, 1e-6},
        {"on the equator, a degree east", {0, 0, 0}, {0, 1, 0}, 111313.839, 0, -971.421, 1e-3},
        {"on the equator, a second north", {0, 0, 0}, {1.0 / 3600, 0, 0}, 0, 30.715, 0, 1e-3},
        {"south-west site, up and down are the normal's", {-33.45, -70.66, 520}, {-33.45, -70.66, 500}, 0, 0, -20, 1e-6},
    };
    for (const Row& row : rows) {
        const geodesy::Enu enu = geodesy::ToEnu({row.site.lat, row.site.lon, row.site.height},
                                                geodesy::ToCartesian({row.point.lat, row.point.lon, row.point.height}));
        EXPECT_NEAR(enu.east, row.east, row.tolerance) << row.legend;
        EXPECT_NEAR(enu.north, row.north, row.tolerance) << row.legend;
        EXPECT_NEAR(enu.up, row.up, row.tolerance) << row.legend;
    }
}

}  // namespace
