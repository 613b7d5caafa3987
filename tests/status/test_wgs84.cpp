// The missing half of a fix on WGS-84, checked against points whose coordinates are known and
// against a closed-form conversion (Heikkinen) that shares no code with the library's.
#include <gtest/gtest.h>

#include <cmath>

#include "fenklib/status/Wgs84.h"

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

TEST(Wgs84, GeodeticOnlyGetsTheKnownCartesian) {
    for (const auto& k : kKnown) {
        devio::POSITION_RECORD r;
        r.geoValid = 1;
        r.lat = k.geo.lat, r.lon = k.geo.lon, r.height = k.geo.height;
        r.geoExtra = 0x12345678u;
        wgs84::CompletePosition(r);
        EXPECT_TRUE(r.xyzValid) << k.legend;
        EXPECT_EQ(r.xyzExtra, 0x12345678u) << k.legend << ": the extra word goes along";
        EXPECT_LT(std::hypot(r.x - k.x, r.y - k.y, r.z - k.z), 1e-3) << k.legend;
    }
}

TEST(Wgs84, CartesianOnlyGetsTheKnownGeodetic) {
    for (const auto& k : kKnown) {
        devio::POSITION_RECORD r;
        r.xyzValid = 1;
        r.x = k.x, r.y = k.y, r.z = k.z;
        r.xyzExtra = 7;
        wgs84::CompletePosition(r);
        EXPECT_TRUE(r.geoValid) << k.legend;
        EXPECT_EQ(r.geoExtra, 7u) << k.legend;
        EXPECT_NEAR(r.lat, k.geo.lat, 1e-8) << k.legend;
        EXPECT_NEAR(r.height, k.geo.height, 1e-3) << k.legend;
        if (std::fabs(k.geo.lat) < 89) {
            EXPECT_NEAR(r.lon, k.geo.lon, 1e-8) << k.legend;
        }
    }
}

// Survey sites and extremes: the library's iterative inverse against the closed form.
TEST(Wgs84, CartesianOnlyAgreesWithTheClosedFormWithinAMillimetre) {
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
    for (const auto& row : rows) {
        devio::POSITION_RECORD r;
        r.xyzValid = 1;
        r.x = row.x, r.y = row.y, r.z = row.z;
        wgs84::CompletePosition(r);
        EXPECT_LT(Apart({r.lat, r.lon, r.height}, Heikkinen(row.x, row.y, row.z)), 1e-3) << row.legend;
    }
}

TEST(Wgs84, RecordsWithBothHalvesOrNeitherPassAsTheyCame) {
    struct Row {
        const char* legend;
        std::uint8_t xyz, geo;
    };
    for (const Row row : {Row{"both", 1, 1}, Row{"neither", 0, 0}}) {
        devio::POSITION_RECORD r;
        r.xyzValid = row.xyz, r.geoValid = row.geo;
        r.x = 1, r.y = 2, r.z = 3, r.lat = 4, r.lon = 5, r.height = 6, r.xyzExtra = 8, r.geoExtra = 9;
        wgs84::CompletePosition(r);
        EXPECT_EQ(r.xyzValid, row.xyz) << row.legend;
        EXPECT_EQ(r.geoValid, row.geo) << row.legend;
        EXPECT_EQ(r.x, 1) << row.legend;
        EXPECT_EQ(r.lat, 4) << row.legend;
        EXPECT_EQ(r.xyzExtra, 8u) << row.legend;
        EXPECT_EQ(r.geoExtra, 9u) << row.legend;
    }
}

}  // namespace
