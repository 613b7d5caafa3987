// Receiver configuration windows offscreen against the simulator over loopback: what they read
// on open is the receiver's, what they write on OK is what the receiver then holds.
#include <gtest/gtest.h>

#include "ConfigDialogRun.h"
#include "SimLink.h"
#include "fenklib/config/CRawMeasurementDlg.h"
#include "fenklib/receiver/CVokReceiverMate.h"

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

}  // namespace
