// The guided compass calibration: its arithmetic, and a run on the file backend.
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <cmath>

#include "ControllerFixture.h"
#include "fenklib/controller/CCompassCalibrationDlg.h"
#include "fenklib/frame/LibraryHelpers.h"
#include "fenklib/resources/StringIds.h"
#include "platform/uikit/CMessageBoxResponder.h"
#include "support/EventTrigger.h"

namespace {

TEST(CompassCalibrationMath, CorrectionIsTheMeanOnTheCircle) {
    struct Case {
        const char* legend;
        std::array<double, 4> readings;   // at 0, 90, 180, 270
        double correction, spread;
    };
    const Case cases[] = {
        {"reads 5 too high everywhere", {5, 95, 185, 275}, -5, 0},
        {"reads 10 too low, across north", {350, 80, 170, 260}, 10, 0},
        {"uneven turn", {2, 92, 178, 268}, 0, 2},
        {"north read as 359 and 1 around it", {359, 91, 179, 271}, 0, 1},
        {"half a turn off", {180, 270, 0, 90}, 180, 0},
    };
    for (const auto& c : cases) {
        CompassCalibration calibration;
        for (double r : c.readings) calibration.Add(r);
        EXPECT_TRUE(calibration.Complete()) << c.legend;
        EXPECT_NEAR(calibration.Correction(), c.correction, 1e-9) << c.legend;
        EXPECT_NEAR(calibration.Spread(), c.spread, 1e-9) << c.legend;
    }
}

class CalibrationTest : public ControllerTest {};

TEST_F(CalibrationTest, GuidedRunStoresTheCorrection) {
    struct Case {
        const char* legend;
        const char* stored;               // correction already stored ("" none)
        std::array<double, 4> raw;        // the raw compass at each heading shown
        const char* saved;                // correction file afterwards
    };
    const Case cases[] = {
        {"first calibration", "", {3, 93, 183, 273}, "-3.000\n"},
        {"recalibration replaces the old correction", "-3.000", {6, 96, 186, 276}, "-6.000\n"},
        {"a true compass stores zero", "", {0, 90, 180, 270}, "0.000\n"},
    };
    for (const auto& c : cases) {
        Make({"Zed2", true, true, "compass"});
        if (*c.stored) Put("compass/correction", c.stored);
        CCompassCalibrationDlg dialog(nullptr);
        std::vector<int> progress;
        const int result = ControllerTestRun(dialog, [&] {
            auto* next = dialog.Controls().Get<QPushButton>(CCompassCalibrationDlg::IDC_NEXT);
            auto* store = dialog.Controls().Get<QPushButton>(CCompassCalibrationDlg::IDC_STORE);
            ASSERT_TRUE(fenktest::WaitIdle(&dialog)) << "the compass was never asked";
            for (int i = 0; i < 4; ++i) {
                EXPECT_FALSE(store->isEnabled()) << c.legend << " step " << i;
                Put("compass/heading", QByteArray::number(c.raw[i]).toStdString());   // the person turned the controller
                next->click();
                EXPECT_FALSE(next->isEnabled()) << c.legend << ": a second reading while the first runs";
                ASSERT_TRUE(fenktest::WaitIdle(&dialog));
                progress.push_back(dialog.Controls().Get<QProgressBar>(CCompassCalibrationDlg::IDC_PROGRESS)->value());
            }
            EXPECT_FALSE(next->isEnabled()) << c.legend;
            SaveShot(dialog, "CompassCalibrationDlg");
            store->click();
        });
        EXPECT_EQ(result, 1) << c.legend;
        EXPECT_EQ(progress, (std::vector<int>{1, 2, 3, 4})) << c.legend;
        EXPECT_EQ(Get("compass/correction"), c.saved) << c.legend;
        SetUp();
    }
}

TEST_F(CalibrationTest, WithoutCompassSaysSoAndOffersOnlyCancel) {
    Make({"Zed2", true, true, "laser"});
    CCompassCalibrationDlg dialog(nullptr);
    const int result = ControllerTestRun(dialog, [&] {
        ASSERT_TRUE(fenktest::WaitIdle(&dialog));
        EXPECT_EQ(dialog.Controls().Get<QLabel>(CCompassCalibrationDlg::IDC_STEP)->text(), LoadResString(IDS_NO_COMPASS).ToQString());
        EXPECT_FALSE(dialog.Controls().Item(CCompassCalibrationDlg::IDC_NEXT)->isEnabled());
        EXPECT_FALSE(dialog.Controls().Item(CCompassCalibrationDlg::IDC_STORE)->isEnabled());
        dialog.reject();
    });
    EXPECT_EQ(result, 2);
}

TEST_F(CalibrationTest, AFailedReadingIsReportedAndTheStepRepeats) {
    Make({"Zed2", true, true, "compass"});
    const uikit::CMessageBoxResponder boxes;
    CCompassCalibrationDlg dialog(nullptr);
    ControllerTestRun(dialog, [&] {
        ASSERT_TRUE(fenktest::WaitIdle(&dialog));
        Put("compass/heading", "");
        dialog.Controls().Get<QPushButton>(CCompassCalibrationDlg::IDC_NEXT)->click();
        ASSERT_TRUE(fenktest::WaitIdle(&dialog));
        EXPECT_EQ(dialog.Controls().Get<QProgressBar>(CCompassCalibrationDlg::IDC_PROGRESS)->value(), 0);
        EXPECT_TRUE(dialog.Controls().Item(CCompassCalibrationDlg::IDC_NEXT)->isEnabled());
        dialog.reject();
    });
    ASSERT_EQ(boxes.Requests().size(), 1u);
    EXPECT_NE(boxes.Requests()[0].text.ToUtf8().find("compass"), std::string::npos);
}

}  // namespace
