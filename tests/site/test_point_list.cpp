// The stored point list's Protect button against the simulator over loopback: what it writes
// to the receiver, what the list then shows, and the buttons it leaves for that point.
#include <gtest/gtest.h>

#include <QPushButton>
#include <QSettings>
#include <QTemporaryDir>
#include <optional>

#include "fenklib/receiver/CVokReceiverMate.h"
#include "fenklib/receiver/ParamCatalogue.h"
#include "fenklib/site/CAutoSeed_PointListDlg.h"
#include "integration/SimLink.h"
#include "support/EventTrigger.h"

namespace par = devio::par;

namespace {

enum : unsigned { IDC_DELETE = 3333, IDC_PROTECT };

// The simulator holds two points, in places 0 and 1, both unprotected.
TEST(PointList, ProtectButtonTogglesThePointsProtection) {
    QTemporaryDir store;
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, store.path());
    struct Case {
        const char* legend;
        bool before[2];   // protected at the start, places 0 and 1
        int row;          // the point selected when Protect is pressed
        bool after[2];
    };
    const Case cases[] = {
        {"an unprotected point becomes protected", {false, false}, 0, {true, false}},
        {"a protected point is released", {true, false}, 0, {false, false}},
        {"only the selected point changes", {true, false}, 1, {true, true}},
    };
    for (const Case& c : cases) {
        fenktest::SimLink link;
        devio::CVokReceiverMate mate(link.Receiver());
        for (int slot = 0; slot < 2; ++slot) mate.Set(par::RefAvgPointOptionProtect, c.before[slot], slot);

        CAutoSeed_PointListDlg dlg(link.Receiver(), nullptr);
        auto* protect = dlg.Controls().Get<QPushButton>(IDC_PROTECT);
        int idles = 0;
        bool pressedBefore = true, pressedAfter = false, deleteAfter = true;
        const fenktest::CIdleTrigger idle(&dlg, [&] {
            if (idles++ == 0) {
                dlg.Select(c.row);
                pressedBefore = protect->isChecked();
                protect->click();   // writes, then reads the list again
                return;
            }
            pressedAfter = protect->isChecked();   // the same point is still selected after the re-read
            deleteAfter = dlg.Controls().Item(IDC_DELETE)->isEnabled();
            dlg.EndDialog(1);
        });
        fenktest::EndAfterMinute(&dlg, [&] { dlg.EndDialog(2); });
        ASSERT_EQ(dlg.DoModal(), 1) << c.legend;
        EXPECT_EQ(pressedBefore, c.before[c.row]) << c.legend << ": the button shows the point's protection";
        for (int slot = 0; slot < 2; ++slot) {
            EXPECT_EQ(mate.Get(par::RefAvgPointProtect, slot), c.after[slot]) << c.legend << ", place " << slot;
            ASSERT_EQ(dlg.Points().size(), 2u) << c.legend;
            EXPECT_EQ(dlg.Points()[static_cast<size_t>(slot)].isProtected, c.after[slot]) << c.legend << ": the list shows it";
        }
        EXPECT_EQ(pressedAfter, c.after[c.row]) << c.legend;
        EXPECT_EQ(deleteAfter, !c.after[c.row]) << c.legend << ": a protected point cannot be deleted";
    }
}

}  // namespace
