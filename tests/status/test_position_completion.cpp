// The status pages derive the missing half of a fix: a record with one half gets the other with
// the half's extra word; a record with both or neither passes as it came.
#include <gtest/gtest.h>

#include <cmath>

#include "fenklib/status/Wgs84.h"

namespace {

TEST(PositionCompletion, TheMissingHalfIsDerived) {
    struct Row {
        const char* legend;
        bool fromGeo;
        double lat, lon, height, x, y, z;
    };
    const Row rows[] = {
        {"geodetic only: equator, 90 E, 100 m up", true, 0, 90, 100, 0, 6378237.0, 0},
        {"Cartesian only: south pole, 50 m up", false, -90, 0, 50, 0, 0, -6356802.314245179},
        {"Cartesian only: equator, 180, 1 km down", false, 0, 180, -1000, -6377137.0, 0, 0},
    };
    for (const Row& row : rows) {
        devio::POSITION_RECORD r;
        if (row.fromGeo) {
            r.geoValid = 1;
            r.lat = row.lat, r.lon = row.lon, r.height = row.height;
            r.geoExtra = 0x12345678u;
        } else {
            r.xyzValid = 1;
            r.x = row.x, r.y = row.y, r.z = row.z;
            r.xyzExtra = 0x12345678u;
        }
        wgs84::CompletePosition(r);
        EXPECT_TRUE(r.xyzValid && r.geoValid) << row.legend;
        EXPECT_EQ(r.xyzExtra, 0x12345678u) << row.legend << ": the extra word goes along";
        EXPECT_EQ(r.geoExtra, 0x12345678u) << row.legend << ": the extra word goes along";
        EXPECT_LT(std::hypot(r.x - row.x, r.y - row.y, r.z - row.z), 1e-3) << row.legend;
        EXPECT_NEAR(r.lat, row.lat, 1e-8) << row.legend;
        EXPECT_NEAR(r.height, row.height, 1e-3) << row.legend;
        if (std::fabs(row.lat) < 89) {
            EXPECT_NEAR(std::remainder(r.lon - row.lon, 360.0), 0, 1e-8) << row.legend;
        }
    }
}

TEST(PositionCompletion, RecordsWithBothHalvesOrNeitherPassAsTheyCame) {
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
