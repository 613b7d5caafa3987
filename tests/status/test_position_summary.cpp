// What the position page lists: the coordinate form the setting asks for, the solution, the
// receiver's error estimates, the geoid note, and satellites counted once per satellite.
#include <gtest/gtest.h>

#include <QLocale>
#include <algorithm>

#include "fenklib/frame/LibraryHelpers.h"
#include "fenklib/resources/StringIds.h"
#include "fenklib/status/PositionSummary.h"

namespace {

using P = devio::POSITION_RECORD;

P Fix(std::uint8_t flags = 0) {
    P r;
    r.geoValid = r.xyzValid = 1;
    r.lat = 45, r.lon = 10, r.height = 100, r.x = 4429000, r.y = 781000, r.z = 4487000;
    r.geoExtra = P::MakeExtra(4, 12, 0.8);
    r.flags = flags;
    return r;
}

QString Text(unsigned id) { return LoadResString(id).ToQString(); }
QString Num(double v) { return QLocale().toString(v, 'f', 3); }

const QString* Find(const std::vector<CPositionSummary::ROW>& rows, unsigned label) {
    const auto it = std::find_if(rows.begin(), rows.end(), [&](const auto& r) { return r.label == label; });
    return it == rows.end() ? nullptr : &it->value;
}

TEST(PositionSummary, RowsFollowTheSettingAndWhatTheRecordCarries) {
    P gst = Fix();
    gst.sigmaLat = 0.012, gst.sigmaLon = 0.015, gst.sigmaHeight = 0.03;
    P modelled = Fix(P::kSeparationModelled);
    modelled.geoidSeparation = 47.5;
    P twoD = Fix();
    twoD.height = P::kUnknown;
    struct Row {
        const char* legend;
        P record;
        ECoordSystem coords;
        bool both;
        std::vector<std::pair<unsigned, QString>> shown;   // label, value (empty: any)
        std::vector<unsigned> absent;
    };
    const Row rows[] = {
        {"geodetic setting", Fix(), COORD_GEODETIC, false, {{IDS_STATUS_LATITUDE, {}}, {IDS_HEIGHT, {}}}, {IDS_COORD_X, IDS_COORD_Z}},
        {"Cartesian setting", Fix(), COORD_CARTESIAN, false, {{IDS_COORD_X, {}}, {IDS_COORD_Z, {}}}, {IDS_STATUS_LATITUDE, IDS_HEIGHT}},
        {"both forms on demand", Fix(), COORD_CARTESIAN, true, {{IDS_STATUS_LATITUDE, {}}, {IDS_COORD_X, {}}}, {}},
        {"RTK fixed, 3-D", Fix(), COORD_GEODETIC, false,
         {{IDS_FIX_QUALITY, Text(IDS_FIX_RTK_FIXED)}, {IDS_SOLUTION_TYPE, Text(IDS_SOLUTION_3D)}}, {}},
        {"2-D fix", twoD, COORD_GEODETIC, false, {{IDS_SOLUTION_TYPE, Text(IDS_SOLUTION_2D)}}, {}},
        {"held position", Fix(P::kHeld), COORD_GEODETIC, false, {{IDS_SOLUTION_TYPE, Text(IDS_SOLUTION_HELD)}}, {}},
        {"no GST: no error rows", Fix(), COORD_GEODETIC, false, {}, {IDS_SIGMA_LAT, IDS_SIGMA_LON, IDS_SIGMA_HEIGHT}},
        {"GST errors", gst, COORD_GEODETIC, false,
         {{IDS_SIGMA_LAT, Num(0.012)}, {IDS_SIGMA_LON, Num(0.015)}, {IDS_SIGMA_HEIGHT, Num(0.03)}}, {}},
        {"modelled geoid separation", modelled, COORD_GEODETIC, false,
         {{IDS_GEOID_SEPARATION, Text(IDS_GEOID_MODELLED).arg(Num(47.5))}}, {}},
        {"no separation at all", Fix(P::kSeparationMissing), COORD_GEODETIC, false,
         {{IDS_GEOID_SEPARATION, Text(IDS_GEOID_MISSING)}}, {}},
    };
    for (const auto& row : rows) {
        CPositionSummary summary;
        summary.SetPosition(row.record);
        const auto got = summary.Rows(row.coords, row.both);
        for (const auto& [label, value] : row.shown) {
            const QString* v = Find(got, label);
            ASSERT_NE(v, nullptr) << row.legend << ": row " << label;
            if (!value.isEmpty()) {
                EXPECT_EQ(*v, value) << row.legend << ": row " << label;
            }
        }
        for (const unsigned label : row.absent) EXPECT_EQ(Find(got, label), nullptr) << row.legend << ": row " << label;
        EXPECT_EQ(summary.IsHeld(), row.record.IsHeld()) << row.legend;
        const QString text = CPositionSummary::Text(got).ToQString();
        for (const auto& r : got) EXPECT_TRUE(text.contains(Text(r.label) + u'\t' + r.value)) << row.legend << ": copied as shown";
    }
}

devio::SATELLITE_RECORD Sat(std::int32_t system, std::int32_t number, std::uint8_t nav, std::uint8_t signal) {
    devio::SATELLITE_RECORD s;
    s.system = system, s.number = number, s.navStatus = nav, s.signalId = signal;
    return s;
}

TEST(PositionSummary, SatellitesAreCountedOncePerSatellite) {
    constexpr std::uint8_t used = devio::SATELLITE_RECORD::kNavUsed, notUsed = devio::SATELLITE_RECORD::kNavNotUsed;
    struct Row {
        const char* legend;
        devio::SATLIST_RECORD list;
        QString total, gps;
    };
    const Row rows[] = {
        {"one satellite used on two signals", {Sat(1, 5, used, 1), Sat(1, 5, used, 7)}, "1 / 1", "1 / 1"},
        {"used on one signal, tracked on another", {Sat(1, 5, used, 1), Sat(1, 5, notUsed, 7)}, "1 / 1", "1 / 1"},
        {"two systems", {Sat(1, 5, used, 1), Sat(2, 5, notUsed, 1), Sat(1, 9, notUsed, 1)}, "1 / 3", "1 / 2"},
    };
    for (const auto& row : rows) {
        CPositionSummary summary;
        summary.SetSatellites(row.list);
        const auto got = summary.Rows(COORD_GEODETIC, false);
        ASSERT_NE(Find(got, IDS_SATS_USED_TRACKED), nullptr) << row.legend;
        EXPECT_EQ(*Find(got, IDS_SATS_USED_TRACKED), row.total) << row.legend;
        ASSERT_NE(Find(got, IDS_SYSTEM_GPS), nullptr) << row.legend;
        EXPECT_EQ(*Find(got, IDS_SYSTEM_GPS), row.gps) << row.legend;
    }
}

}  // namespace
