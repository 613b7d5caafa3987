// Receiver configuration windows offscreen against the simulator over loopback: what they read
// on open is the receiver's, what they write on OK is what the receiver then holds.
#include <gtest/gtest.h>

#include <QPushButton>

#include "ConfigDialogRun.h"
#include "SimLink.h"
#include "fenklib/config/CPositioningPS.h"
#include "fenklib/config/CRawMeasurementDlg.h"
#include "fenklib/config/CReceiverPowerDlg.h"
#include "fenklib/config/CTrackingOptionsPS.h"
#include "fenklib/receiver/CVokReceiverMate.h"
#include "platform/uikit/CMessageBoxResponder.h"

using fenktest::SimLink;
namespace par = devio::par;

namespace {

TEST(RawMeasurementOnSimulator, ReadsTheReceiverAndWritesTheChangesBack) {
    SimLink link;
    CRawMeasurementDlg::RAW_SETTINGS opened{};
    {
        CRawMeasurementDlg dlg(link.Receiver(), nullptr);
        const int result = fenktest::RunSteps(dlg, [&](int) {
            opened = dlg.Shown().value_or(opened);
            fenktest::SaveTourShot(dlg, "raw-measurement");
            dlg.Show({250, true, false, true});
            dlg.accept();
        });
        EXPECT_EQ(result, 1);
    }
    EXPECT_EQ(opened.intervalMs, 1000);
    EXPECT_FALSE(opened.clpStatic);
    EXPECT_TRUE(opened.codeMultipath);
    EXPECT_TRUE(opened.carrierMultipath);
    devio::CVokReceiverMate mate(link.Receiver());
    EXPECT_EQ(mate.Get(par::RawMsint), 250);
    EXPECT_TRUE(mate.Get(par::RawClpStatic));
    EXPECT_FALSE(mate.Get(par::RawCorrCaCode)) << "written as normal";
    EXPECT_TRUE(mate.Get(par::RawCorrCaCarrier));
}

TEST(PositioningOnSimulator, BothPagesReadAndWriteTheReceiver) {
    SimLink link;
    CParamFields::Values general, solution;
    {
        CPositioningPS sheet(link.Receiver(), nullptr);
        const int result = fenktest::RunSteps(sheet, [&](int step) {
            if (step == 0) {
                fenktest::SaveTourShot(sheet, "positioning");
                sheet.SetActivePage(1);
                return;
            }
            fenktest::SaveTourShot(sheet, "positioning-rtk");
            general = sheet.GeneralPage().Collected().value_or(general);
            solution = sheet.SolutionPage().Collected().value_or(solution);
            auto g = general, s = solution;
            g[0] = 3;      // position mode: RTK fixed
            g[6] = 4.5;    // PDOP mask
            s[0] = 0;      // extrapolated output
            s[3] = 0.5;    // period
            sheet.GeneralPage().Edit(g);
            sheet.SolutionPage().Edit(s);
            sheet.GetButton(1)->click();
        });
        EXPECT_EQ(result, 1);
    }
    ASSERT_EQ(general.size(), 13u);
    EXPECT_EQ(general[0].toInt(), 0) << "sp";
    EXPECT_EQ(general[4].toInt(), 1) << "kinematic";
    EXPECT_DOUBLE_EQ(general[6].toDouble(), 30.0);
    EXPECT_EQ(general[9].toInt(), 100);
    ASSERT_EQ(solution.size(), 5u);
    EXPECT_EQ(solution[0].toInt(), 1) << "delay";
    devio::CVokReceiverMate mate(link.Receiver());
    EXPECT_EQ(mate.Get(par::PosModeCur), devio::vok::POS_PD);
    EXPECT_DOUBLE_EQ(mate.Get(par::PosPdop), 4.5);
    EXPECT_EQ(mate.Get(par::PosPdMode), L"extrap");
    EXPECT_DOUBLE_EQ(mate.Get(par::PosPdPeriod), 0.5);
    EXPECT_DOUBLE_EQ(mate.Get(par::PosPdDyn), 1.0) << "unchanged";
}

// The SBAS lock list read from the simulator, one satellite locked, written back and read again.
TEST(TrackingOnSimulator, LockListRoundTrip) {
    SimLink link;
    CParamFields::Values locks;
    {
        CTrackingOptionsPS sheet(link.Receiver(), nullptr);
        const int result = fenktest::RunSteps(sheet, [&](int step) {
            if (step == 0) {
                fenktest::SaveTourShot(sheet, "tracking");
                sheet.SetActivePage(1);
                return;
            }
            fenktest::SaveTourShot(sheet, "tracking-sbas");
            locks = sheet.LocksPage().Collected().value_or(locks);
            auto l = locks;
            QVariantList sbas = l[5].toList();
            if (sbas.size() > 1) sbas[1] = QVariantList{sbas[1].toList().value(0), true};
            l[5] = sbas;
            sheet.LocksPage().Edit(l);
            auto s = sheet.SbasPage().Collected().value_or(CParamFields::Values{});
            if (s.size() > 1) s[1] = 138;   // slot 1 satellite
            sheet.SbasPage().Edit(s);
            sheet.GetButton(1)->click();
        });
        EXPECT_EQ(result, 1);
    }
    ASSERT_EQ(locks.size(), 7u);
    ASSERT_EQ(locks[5].toList().size(), 9) << "nine SBAS satellites";
    EXPECT_EQ(locks[6].toList().size(), 5) << "five QZSS satellites";
    devio::CVokReceiverMate mate(link.Receiver());
    const auto sbas = mate.GetSatLocks(L"waas");
    ASSERT_EQ(sbas.size(), 9u);
    EXPECT_EQ(sbas[1].satellite, 124);
    EXPECT_TRUE(sbas[1].locked);
    EXPECT_FALSE(sbas[0].locked);
    EXPECT_EQ(mate.Get(par::WaasSat, 1), 138);
}

struct POWER_CASE {
    const char* legend;
    const char* model;
    bool extBoard;
    bool powerUpShown;   // the extension family's power-up mode
};
const POWER_CASE kPowerCases[] = {
    {"extension family: power-up mode shown and written", "Lyn1", true, true},
    {"no extension board: power-up mode neither read nor written", "FNK-600", false, false},
};
class PowerOnSimulator : public ::testing::TestWithParam<POWER_CASE> {};

TEST_P(PowerOnSimulator, StatesRefreshAndSwitchesWriteBack) {
    const POWER_CASE& c = GetParam();
    rcvsim::SimOptions options;
    options.model = c.model;
    options.extBoard = c.extBoard;
    SimLink link(SimLink::Over::Tcp, options);
    const uikit::CMessageBoxResponder boxes;
    CReceiverPowerDlg dlg(link.Receiver(), nullptr);
    bool shown = false;
    const int result = fenktest::RunSteps(dlg, [&](int step) {
        if (step == 0) {
            shown = dlg.HasPowerUpMode();
            EXPECT_EQ(dlg.StateText(0), L"7.82");
            EXPECT_EQ(dlg.StateText(2), L"12.34");
            fenktest::SaveTourShot(dlg, c.extBoard ? "power" : "power-no-ext");
        }
        if (dlg.Refreshes() == 0) return;   // wait for one refresh while open
        auto v = dlg.Collected().value_or(CParamFields::Values{});
        ASSERT_GE(v.size(), 4u);
        EXPECT_EQ(v[1].toInt(), 2) << "switch 2: auto";
        v[2] = 0;   // switch 3 on
        if (v.size() > 4) v[4] = true;
        dlg.Edit(v);
        dlg.accept();
    });
    EXPECT_EQ(result, 1);
    EXPECT_EQ(shown, c.powerUpShown);
    EXPECT_TRUE(boxes.Requests().empty()) << "no refusal reached the user";
    devio::CVokReceiverMate mate(link.Receiver());
    EXPECT_EQ(mate.Get(par::PwrSwitch, 3), L"on");
    if (c.powerUpShown) {
        EXPECT_TRUE(mate.Get(par::ExtPowerupMode));
    }
}

INSTANTIATE_TEST_SUITE_P(Cases, PowerOnSimulator, ::testing::ValuesIn(kPowerCases));

}  // namespace
