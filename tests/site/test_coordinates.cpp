// Coordinates: the W84 texts sent to the receiver, angles as a surveyor types them, WGS-84
// conversions, the choice of editor, and both editors offscreen.
#include <gtest/gtest.h>

#include <QComboBox>
#include <QLineEdit>
#include <QSettings>
#include <QTemporaryDir>
#include <QTimer>
#include <cmath>
#include <functional>

#include "fenklib/receiver/CVokReceiverMateCore.h"
#include "fenklib/site/CGeoCoordEditDlg.h"
#include "fenklib/site/CXyzCoordEditDlg.h"
#include "fenklib/site/Wgs84.h"
#include "platform/uikit/CMessageBoxResponder.h"
#include "support/ScriptedReceiver.h"

using basekit::CSmartPtr;
using devio::CVokReceiverMateCore;
using devio::vok::POS_GEO;
using devio::vok::POS_XYZ;
using fenktest::CScriptedReceiver;

namespace {

TEST(W84Text, GeodeticTextsOfEveryHemisphereAndNearWholeMinutes) {
    struct Case { const char* legend; POS_GEO pos; const wchar_t* text; };
    const Case cases[] = {
        {"north-east", {55.5, 37.25, 150}, L"{W84,N55d30m0.000000s,E037d15m0.000000s,150.000000}"},
        {"south and west are letters, not signs", {-33.5, -70.25, 520.5}, L"{W84,S33d30m0.000000s,W070d15m0.000000s,520.500000}"},
        {"a hair below a whole degree carries into it", {55.99999999999, -37.99999999999, 0},
         L"{W84,N56d00m0.000000s,W038d00m0.000000s,0.000000}"},
        {"a hair below a whole minute carries into it", {10 + 59.99999999 / 3600, 20 + (59 + 59.9999999999 / 60) / 60, 0},
         L"{W84,N10d01m0.000000s,E021d00m0.000000s,0.000000}"},
        {"seconds just under 60 that survive the six decimals", {10 + 59.999998 / 3600, 0, -12.25},
         L"{W84,N10d00m59.999998s,E000d00m0.000000s,-12.250000}"},
        {"negative longitude just west of Greenwich", {0.5, -0.000001, 0}, L"{W84,N00d30m0.000000s,W000d00m0.003600s,0.000000}"},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(CVokReceiverMateCore::FormatW84(c.pos), c.text) << c.legend;
        const POS_GEO back = CVokReceiverMateCore::ParseW84Geo(CVokReceiverMateCore::FormatW84(c.pos));
        EXPECT_NEAR(back.lat, c.pos.lat, 1e-9) << c.legend;
        EXPECT_NEAR(back.lon, c.pos.lon, 1e-9) << c.legend;
        EXPECT_NEAR(back.height, c.pos.height, 1e-6) << c.legend;
    }
}

TEST(Angles, DegreesMinutesSecondsWithTheirCarry) {
    struct Case { const char* legend; double degrees; wgs84::DMS dms; };
    const Case cases[] = {
        {"south or west", -33.5, {true, 33, 30, 0}},
        {"a negative that rounds to zero has no hemisphere", -1e-12, {false, 0, 0, 0}},
        {"seconds kept to five decimals", 37.61560001, {false, 37, 36, 56.16004}},
    };
    for (const Case& c : cases) {
        const wgs84::DMS dms = wgs84::ToDms(c.degrees, 5);
        EXPECT_EQ(dms.negative, c.dms.negative) << c.legend;
        EXPECT_EQ(dms.degrees, c.dms.degrees) << c.legend;
        EXPECT_EQ(dms.minutes, c.dms.minutes) << c.legend;
        EXPECT_NEAR(dms.seconds, c.dms.seconds, 1e-9) << c.legend;
        EXPECT_NEAR(wgs84::FromDms(dms), c.degrees, 1e-8) << c.legend;
    }
}

TEST(Wgs84, KnownPointsAndRoundTrips) {
    struct Case { const char* legend; POS_GEO geo; std::optional<POS_XYZ> xyz; };
    const Case cases[] = {
        {"equator at Greenwich: the semi-major axis", {0, 0, 0}, POS_XYZ{6378137.0, 0, 0}},
        {"north pole: the semi-minor axis", {90, 0, 0}, POS_XYZ{0, 0, 6356752.314245}},
        {"southern and western hemispheres", {-33.45, -70.66, 520}, std::nullopt},
        {"antimeridian, below the ellipsoid", {0, 180, -30}, std::nullopt},
        {"close to the pole", {-89.9999, 10, 4000}, std::nullopt},
    };
    for (const Case& c : cases) {
        const POS_XYZ xyz = wgs84::ToXyz(c.geo);
        if (c.xyz) {
            EXPECT_NEAR(xyz.x, c.xyz->x, 1e-3) << c.legend;
            EXPECT_NEAR(xyz.y, c.xyz->y, 1e-3) << c.legend;
            EXPECT_NEAR(xyz.z, c.xyz->z, 1e-3) << c.legend;
        }
        const POS_GEO back = wgs84::ToGeo(xyz);
        EXPECT_NEAR(back.lat, c.geo.lat, 1e-9) << c.legend;
        EXPECT_NEAR(std::remainder(back.lon - c.geo.lon, 360.0), 0, 1e-9) << c.legend;
        EXPECT_NEAR(back.height, c.geo.height, 1e-4) << c.legend;
    }
}

TEST(CoordEditorChoice, TheTwoTestsOfTheSetting) {
    struct Case { const char* legend; ECoordSystem setting; CoordEditor unlessGeodetic; CoordEditor unlessCartesian; };
    const Case cases[] = {
        {"geodetic", COORD_GEODETIC, CoordEditor::Geo, CoordEditor::Geo},
        {"Cartesian", COORD_CARTESIAN, CoordEditor::Xyz, CoordEditor::Xyz},
        {"a stored 2 splits the two tests", static_cast<ECoordSystem>(2), CoordEditor::Xyz, CoordEditor::Geo},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(EditorUnlessGeodetic(c.setting), c.unlessGeodetic) << c.legend;
        EXPECT_EQ(EditorUnlessCartesian(c.setting), c.unlessCartesian) << c.legend;
    }
}

class CoordEditors : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(m_store.isValid());
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, m_store.path());
    }
    template <typename Dlg>
    static int RunModal(Dlg& dlg, const std::function<void()>& act) {
        QTimer::singleShot(0, &dlg, act);
        return dlg.DoModal();
    }
    static void Shot(QWidget& w, const char* name) {
        if (!qEnvironmentVariableIsEmpty("FENK_BUILD_DIR")) w.grab().save(qEnvironmentVariable("FENK_BUILD_DIR") + "/tour-" + name + ".png");
    }
    QTemporaryDir m_store;
    CSmartPtr<CScriptedReceiver> m_rx{new CScriptedReceiver()};
};

QLineEdit* Edit(const CGeoCoordEditDlg& d, unsigned id) { return d.Controls().Get<QLineEdit>(id); }

TEST_F(CoordEditors, GeodeticEntryAndItsRefusals) {
    // ids: latitude hemisphere 3001, degrees 3002, minutes 3003, seconds 3004, decimal 3005;
    // longitude 3006..3010; height 3011
    struct Case {
        const char* legend;
        std::function<void(CGeoCoordEditDlg&)> edit;
        int modal;
        POS_GEO result;
        size_t boxes;
    };
    const Case cases[] = {
        {"unchanged", {}, 1, {55.5, 37.25, 150}, 0},
        {"south and west chosen by hemisphere",
         [](CGeoCoordEditDlg& d) {
             d.Controls().Get<QComboBox>(3001)->setCurrentIndex(1);
             d.Controls().Get<QComboBox>(3006)->setCurrentIndex(1);
         },
         1, {-55.5, -37.25, 150}, 0},
        {"decimal degrees typed: the sexagesimal fields follow",
         [](CGeoCoordEditDlg& d) {
             Edit(d, 3005)->setText("-12.5125");
             emit Edit(d, 3005)->textEdited(Edit(d, 3005)->text());
         },
         1, {-12.5125, 37.25, 150}, 0},
        {"latitude 90°00'00\" is allowed", [](CGeoCoordEditDlg& d) { Edit(d, 3002)->setText("90"); Edit(d, 3003)->setText("0"); Edit(d, 3004)->setText("0"); },
         1, {90, 37.25, 150}, 0},
        {"latitude beyond 90 refused", [](CGeoCoordEditDlg& d) { Edit(d, 3002)->setText("90"); Edit(d, 3004)->setText("1"); }, 2, {1, 2, 3}, 1},
        {"60 seconds refused", [](CGeoCoordEditDlg& d) { Edit(d, 3009)->setText("60"); }, 2, {1, 2, 3}, 1},
        {"60 minutes refused", [](CGeoCoordEditDlg& d) { Edit(d, 3008)->setText("60"); }, 2, {1, 2, 3}, 1},
        {"fractional degrees in the degree field refused", [](CGeoCoordEditDlg& d) { Edit(d, 3007)->setText("37.5"); }, 2, {1, 2, 3}, 1},
        {"longitude 181 refused", [](CGeoCoordEditDlg& d) { Edit(d, 3007)->setText("181"); }, 2, {1, 2, 3}, 1},
        {"height not a number refused", [](CGeoCoordEditDlg& d) { Edit(d, 3011)->setText("x"); }, 2, {1, 2, 3}, 1},
    };
    for (const Case& c : cases) {
        POS_GEO pos{55.5, 37.25, 150};
        const POS_GEO before = pos;
        const uikit::CMessageBoxResponder boxes;
        CGeoCoordEditDlg dlg(m_rx, nullptr, pos);
        const int modal = RunModal(dlg, [&] {
            if (c.edit) c.edit(dlg);
            dlg.accept();
            if (dlg.isVisible()) dlg.reject();
        });
        EXPECT_EQ(modal, c.modal) << c.legend;
        EXPECT_EQ(boxes.Requests().size(), c.boxes) << c.legend;
        const POS_GEO expected = c.modal == 1 ? c.result : before;
        EXPECT_NEAR(pos.lat, expected.lat, 1e-9) << c.legend;
        EXPECT_NEAR(pos.lon, expected.lon, 1e-9) << c.legend;
        EXPECT_NEAR(pos.height, expected.height, 1e-9) << c.legend;
    }
    POS_GEO shown{-33.4512, -70.6623, 520};
    CGeoCoordEditDlg dlg(m_rx, nullptr, shown);
    RunModal(dlg, [&] { Shot(dlg, "GeoCoordEditDlg"); dlg.reject(); });
}

TEST_F(CoordEditors, CartesianEntryAndItsRefusals) {
    struct Case { const char* legend; unsigned id; QString text; int modal; POS_XYZ result; };
    const POS_XYZ start{2850000.1234, 2196000.5, 5245000.25};
    const Case cases[] = {
        {"unchanged", 3001, "2850000.1234", 1, start},
        {"negative X", 3001, "-2850000", 1, {-2850000, 2196000.5, 5245000.25}},
        {"not a number", 3002, "abc", 2, start},
        {"beyond any point of the earth", 3003, "1e8", 2, start},
    };
    for (const Case& c : cases) {
        POS_XYZ pos = start;
        const uikit::CMessageBoxResponder boxes;
        CXyzCoordEditDlg dlg(m_rx, nullptr, pos);
        const int modal = RunModal(dlg, [&] {
            dlg.Controls().Get<QLineEdit>(c.id)->setText(c.text);
            if (c.id == 3001 && c.modal == 1) Shot(dlg, "XyzCoordEditDlg");
            dlg.accept();
            if (dlg.isVisible()) dlg.reject();
        });
        EXPECT_EQ(modal, c.modal) << c.legend;
        EXPECT_EQ(boxes.Requests().size(), c.modal == 1 ? 0u : 1u) << c.legend;
        EXPECT_EQ(pos, c.result) << c.legend;
    }
}

}  // namespace
