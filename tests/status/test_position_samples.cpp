// Occupation statistics of the scatter page: offsets around the mean, deviations and CEPs.
#include <gtest/gtest.h>

#include <cmath>

#include "fenklib/status/PositionSamples.h"

namespace {

// A fix at east/north/up metres from a site at 45 N 10 E.
devio::POSITION_RECORD At(double east, double north, double up) {
    const double lat = geodesy::Radians(45), lon = geodesy::Radians(10);
    const geodesy::Cartesian o = geodesy::ToCartesian({45, 10, 100});
    const double sl = std::sin(lat), cl = std::cos(lat), so = std::sin(lon), co = std::cos(lon);
    devio::POSITION_RECORD r;
    r.xyzValid = 1;
    r.x = o.x - so * east - sl * co * north + cl * co * up;
    r.y = o.y + co * east - sl * so * north + cl * so * up;
    r.z = o.z + cl * north + sl * up;
    return r;
}

TEST(PositionSamples, StatisticsOfKnownScatters) {
    struct Row {
        const char* legend;
        std::vector<std::array<double, 3>> enu;
        double sdEast, sdNorth, sdUp, cep50, cep95;
    };
    const Row rows[] = {
        {"one fix: no spread", {{5, 5, 5}}, 0, 0, 0, 0, 0},
        {"two fixes east-west 2 m apart", {{-1, 0, 0}, {1, 0, 0}}, std::sqrt(2.0), 0, 0, 1, 1},
        {"square of four around a point, 1 m up and down", {{1, 0, 1}, {-1, 0, -1}, {0, 1, 1}, {0, -1, -1}},
         std::sqrt(2.0 / 3), std::sqrt(2.0 / 3), std::sqrt(4.0 / 3), 1, 1},
        {"nine close, one far: CEP95 reaches the far one", {{0, 0, 0}, {0, 0, 0}, {0, 0, 0}, {0, 0, 0}, {0, 0, 0},
                                                              {0, 0, 0}, {0, 0, 0}, {0, 0, 0}, {0, 0, 0}, {10, 0, 0}},
         std::sqrt(10.0), 0, 0, 1, 9},
    };
    for (const auto& row : rows) {
        CPositionSamples samples(100);
        for (const auto& p : row.enu) samples.Add(At(p[0], p[1], p[2]), QDateTime());
        const auto st = samples.Statistics();
        EXPECT_EQ(st.count, row.enu.size()) << row.legend;
        EXPECT_NEAR(st.deviation.east, row.sdEast, 1e-6) << row.legend;
        EXPECT_NEAR(st.deviation.north, row.sdNorth, 1e-6) << row.legend;
        EXPECT_NEAR(st.deviation.up, row.sdUp, 1e-6) << row.legend;
        EXPECT_NEAR(st.cep50, row.cep50, 1e-6) << row.legend;
        EXPECT_NEAR(st.cep95, row.cep95, 1e-6) << row.legend;
    }
}

TEST(PositionSamples, BoundedResettableAndBlindToWhatCannotBePlotted) {
    CPositionSamples samples(3);
    for (int i = 0; i < 5; ++i) samples.Add(At(i, 0, 0), QDateTime());
    ASSERT_EQ(samples.Samples().size(), 3u) << "the oldest leave first";
    EXPECT_NEAR(samples.Samples().front().enu.east, 2, 1e-6);
    devio::POSITION_RECORD geoOnly;
    geoOnly.geoValid = 1;
    samples.Add(geoOnly, QDateTime());
    EXPECT_EQ(samples.Samples().size(), 3u) << "a record without its Cartesian half is not plotted";
    auto held = At(50, 50, 0);
    held.flags = devio::POSITION_RECORD::kHeld;
    samples.Add(held, QDateTime());
    auto twoD = At(1, 1, 0);
    twoD.z = devio::POSITION_RECORD::kUnknown;
    samples.Add(twoD, QDateTime());
    EXPECT_EQ(samples.Samples().size(), 3u) << "neither a held fix nor one without a height is plotted";
    EXPECT_EQ(samples.HeldLeftOut(), 1u);
    samples.Reset();
    EXPECT_EQ(samples.Statistics().count, 0u);
    EXPECT_EQ(samples.HeldLeftOut(), 0u);
}

}  // namespace
