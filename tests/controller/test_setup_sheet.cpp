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
        {"stored 0 shows geodetic, kept", 0, true, false, Pick::None, End::Ok, 0},
        {"stored 1 shows Cartesian, kept", 1, false, true, Pick::None, End::Ok, 1},
        {"stored 2 shows neither and is kept", 2, false, false, Pick::None, End::Ok, 2},
        {"stored 2, geodetic picked writes 0", 2, false, false, Pick::First, End::Ok, 0},
        {"stored 2, Cartesian picked writes 1", 2, false, false, Pick::Second, End::Ok, 1},
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
        {"autodetection on shows Autodetection", 1, true, false, Pick::None, End::Ok, 1},
        {"autodetection off shows Manual Selection", 0, false, true, Pick::None, End::Ok, 0},
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

TEST_F(SetupSheetTest, TourShowsBothPages) {
    CFenkGlobalSettings::Ref().SetCoordSystem(COORD_GEODETIC);
    CSetupPS sheet(nullptr);
    std::vector<std::string> titles;
    ControllerTestRun(sheet, [&] {
        for (int i = 0; i < sheet.GetPageCount(); ++i) {
            sheet.SetActivePage(i);
            titles.push_back(sheet.GetPage(i)->GetTitle().ToUtf8());
            SaveShot(sheet, i == 0 ? "SetupPS-General" : "SetupPS-Modems");
        }
        sheet.GetButton(uikit::IDCANCEL)->click();
    });
    EXPECT_EQ(titles, (std::vector<std::string>{"General", "Modems"}));
    EXPECT_EQ(sheet.windowTitle().toStdString(), "Setup");
}

}  // namespace
