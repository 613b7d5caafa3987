// The library settings sheet: what each page shows for a stored value and what it writes.
#include <QPushButton>
#include <QRadioButton>

#include "ControllerFixture.h"
#include "fenklib/controller/CSetupPS.h"
#include "fenklib/frame/CFenkGlobalSettings.h"
#include "platform/uikit/MessageBoxTypes.h"

namespace {

enum class Pick { None, First, Second };
enum class End { Ok, Cancel, Apply };

struct ChoiceCase {
    const char* legend;
    int stored;
    bool firstShown, secondShown;   // what the page shows checked
    Pick pick;
    End end;
    int saved;
};

// Opens page index, checks what it shows, picks, ends the sheet; returns the sheet's result.
template <typename Page>
int Drive(CSetupPS& sheet, Page& page, int index, const ChoiceCase& c, unsigned first, unsigned second) {
    return ControllerTestRun(sheet, [&] {
        sheet.SetActivePage(index);
        auto* a = page.Controls().template Get<QRadioButton>(first);
        auto* b = page.Controls().template Get<QRadioButton>(second);
        EXPECT_EQ(a->isChecked(), c.firstShown) << c.legend;
        EXPECT_EQ(b->isChecked(), c.secondShown) << c.legend;
        SaveShot(sheet, index == 0 ? "SetupPS-General" : "SetupPS-Modems");
        if (c.pick == Pick::First) a->click();
        if (c.pick == Pick::Second) b->click();
        if (c.end == End::Apply) {
            sheet.GetButton(uikit::CResizablePropertySheet::ID_APPLY_NOW)->click();
            sheet.GetButton(uikit::IDCANCEL)->click();
        } else {
            sheet.GetButton(c.end == End::Ok ? uikit::IDOK : uikit::IDCANCEL)->click();
        }
    });
}

class SetupSheetTest : public ControllerTest {};

TEST_F(SetupSheetTest, CoordinateSystemChoice) {
    const ChoiceCase cases[] = {
        {"stored 2 shows neither and is kept", 2, false, false, Pick::None, End::Ok, 2},
        {"stored 2, geodetic picked writes 0", 2, false, false, Pick::First, End::Ok, 0},
        {"stored 0, Cartesian picked writes 1", 0, true, false, Pick::Second, End::Ok, 1},
        {"stored 1, geodetic picked then Cancel keeps 1", 1, false, true, Pick::First, End::Cancel, 1},
        {"stored 1, geodetic picked, Apply writes 0 before Cancel", 1, false, true, Pick::First, End::Apply, 0},
    };
    for (const auto& c : cases) {
        CFenkGlobalSettings::Ref().SetCoordSystem(static_cast<ECoordSystem>(c.stored));
        CSetupPS sheet(nullptr);
        const int result = Drive(sheet, sheet.General(), 0, c, CSetupGeneralPP::IDC_GEODETIC, CSetupGeneralPP::IDC_CARTESIAN);
        EXPECT_EQ(result, c.end == End::Ok ? uikit::IDOK : uikit::IDCANCEL) << c.legend;
        EXPECT_EQ(static_cast<int>(CFenkGlobalSettings::Ref().GetCoordSystem()), c.saved) << c.legend;
    }
}

TEST_F(SetupSheetTest, ModemDetectionChoice) {
    const ChoiceCase cases[] = {
        {"Manual Selection picked writes off", 1, true, false, Pick::Second, End::Ok, 0},
        {"Autodetection picked writes on", 0, false, true, Pick::First, End::Ok, 1},
        {"a pick cancelled is not written", 1, true, false, Pick::Second, End::Cancel, 1},
    };
    for (const auto& c : cases) {
        CFenkGlobalSettings::Ref().SetModemAutodetection(c.stored != 0);
        CSetupPS sheet(nullptr);
        Drive(sheet, sheet.Modems(), 1, c, CSetupModemsPP::IDC_AUTODETECTION, CSetupModemsPP::IDC_MANUAL);
        EXPECT_EQ(CFenkGlobalSettings::Ref().GetModemAutodetection() ? 1 : 0, c.saved) << c.legend;
    }
}

}  // namespace
