// The controller tools: power switch and power rules of the internal receiver and modem (and
// the port hooks following the rules written), and the device pages over the file backend.
#include <QCheckBox>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <optional>

#include "ControllerFixture.h"
#include "fenklib/controller/CBackpackToolsPS.h"
#include "fenklib/controller/CZedToolsPS.h"
#include "fenklib/frame/CFenkGlobalSettings.h"
#include "fenklib/frame/LibraryHelpers.h"
#include "support/EventTrigger.h"
#include "fenklib/frame/PortHooks.h"
#include "fenklib/resources/StringIds.h"
#include "platform/devio/IPortAddr.h"
#include "platform/uikit/CFileDialogResponder.h"
#include "platform/uikit/CMessageBoxResponder.h"

namespace {

using P = CControllerPowerPP;
constexpr unsigned kBoxes[] = {P::IDC_RULE_CONNECT, P::IDC_RULE_DISCONNECT, P::IDC_RULE_EXIT};

std::string Text(const CDialogControls& controls, unsigned id) { return controls.Get<QLabel>(id)->text().toStdString(); }
std::string Res(unsigned id) { return LoadResString(id).ToUtf8(); }

class ToolsSheetTest : public ControllerTest {};

TEST_F(ToolsSheetTest, RuleBoxesShowAndWriteTheirBits) {
    struct Case {
        const char* legend;
        std::uint32_t stored;
        int page;                     // 0 receiver, 1 modem
        std::array<bool, 3> shown;    // the boxes as the page opens
        int toggle;                   // box index clicked, -1 none
        bool ok;
        std::uint32_t saved;
    };
    const Case cases[] = {
        {"receiver page shows bits 0 to 2", 6, 0, {false, true, true}, -1, true, 6},
        {"modem page shows bits 3 to 5 and leaves the receiver's", 7, 1, {false, false, false}, 2, true, 39},
        {"all set shows all on the modem page", 63, 1, {true, true, true}, 1, true, 47},
        {"a change cancelled is not written", 9, 0, {true, false, false}, 1, false, 9},
    };
    for (const auto& c : cases) {
        Make({"Zed2", true, true, ""});
        CFenkGlobalSettings::Ref().SetZedSettings(Zed_Settings(c.stored));
        CZedToolsPS sheet(nullptr);
        CControllerPowerPP& page = c.page == 0 ? sheet.Receiver() : sheet.Modem();
        ControllerTestRun(sheet, [&] {
            sheet.SetActivePage(c.page);
            for (int i = 0; i < 3; ++i)
                EXPECT_EQ(page.Controls().Get<QCheckBox>(kBoxes[i])->isChecked(), c.shown[i]) << c.legend << " box " << i;
            if (c.toggle >= 0) page.Controls().Get<QCheckBox>(kBoxes[c.toggle])->click();
            sheet.GetButton(c.ok ? uikit::IDOK : uikit::IDCANCEL)->click();
        });
        EXPECT_EQ(CFenkGlobalSettings::Ref().GetZedSettings().word, c.saved) << c.legend;
        SetUp();
    }
}

// The boxes as a person ticks them from the defaults (9), the bit each writes into the stored
// word, then the hooks the host calls around its ports.
TEST_F(ToolsSheetTest, HooksFollowTheRulesThePagesWrote) {
    struct Case {
        const char* legend;
        CONTROLLER controller;
        int page;          // 0 receiver, 1 modem
        int toggle;        // box clicked on that page, from the defaults (9)
        int hook;          // 0 open, 1 close, 2 exit
        const wchar_t* port;
        bool result;
        const char* actions;
        std::optional<unsigned> message;
        std::uint32_t saved;
    };
    const Case cases[] = {
        {"on-connect kept: receiver powered silently", {"Zed2", false, true, ""}, 0, -1, 0, L"serial:/dev/ttyS1", true, "receiver on\n", {}, 9},
        {"on-connect cleared: opening refused", {"Zed2", false, true, ""}, 0, 0, 0, L"serial:/dev/ttyS1", false, "", IDS_UNPOWERED_RECEIVER_ZED, 8},
        {"modem on-connect cleared: opening refused", {"Zed2", true, false, ""}, 1, 0, 0, L"serial:/dev/ttyS2", false, "", IDS_UNPOWERED_MODEM, 1},
        {"off-disconnect ticked: receiver off at close", {"Zed2", true, true, ""}, 0, 1, 1, L"serial:/dev/ttyS1", true, "receiver off\n", {}, 11},
        {"off-disconnect not ticked: left on", {"Zed2", true, true, ""}, 0, 2, 1, L"serial:/dev/ttyS1", true, "", {}, 13},
        {"modem off-disconnect ticked", {"Zed2", true, true, ""}, 1, 1, 1, L"serial:/dev/ttyS2", true, "modem off\n", {}, 25},
        {"receiver off-exit ticked", {"Zed2", true, true, ""}, 0, 2, 2, nullptr, true, "receiver off\n", {}, 13},
        {"modem off-exit ticked", {"Zed2", true, true, ""}, 1, 2, 2, nullptr, true, "modem off\n", {}, 41},
    };
    for (const auto& c : cases) {
        Make(c.controller);
        CFenkGlobalSettings::Ref().SetZedSettings(Zed_Settings());
        {
            CZedToolsPS sheet(nullptr);
            CControllerPowerPP& page = c.page == 0 ? sheet.Receiver() : sheet.Modem();
            ControllerTestRun(sheet, [&] {
                sheet.SetActivePage(c.page);
                if (c.toggle >= 0) page.Controls().Get<QCheckBox>(kBoxes[c.toggle])->click();
                sheet.GetButton(uikit::IDOK)->click();
            });
        }
        const uikit::CMessageBoxResponder boxes;
        bool result = true;
        if (c.hook == 0) result = PreOpenPort(devio::IPortAddr::Parse(c.port));
        if (c.hook == 1) result = PostClosePort(devio::IPortAddr::Parse(c.port));
        if (c.hook == 2) OnExitApp();
        EXPECT_EQ(CFenkGlobalSettings::Ref().GetZedSettings().word, c.saved) << c.legend;
        EXPECT_EQ(result, c.result) << c.legend;
        EXPECT_EQ(Actions(), c.actions) << c.legend;
        ASSERT_EQ(boxes.Requests().size(), c.message ? 1u : 0u) << c.legend;
        if (c.message) {
            EXPECT_EQ(boxes.Requests()[0].text, LoadResString(*c.message)) << c.legend;
        }
        SetUp();
    }
}

TEST_F(ToolsSheetTest, PowerSwitchActsAtOnce) {
    struct Case {
        const char* legend;
        CONTROLLER controller;
        bool backpack;
        int page;                // 0 receiver, 1 modem
        bool present;
        unsigned click;          // 0: none
        const char* actions;
        std::string state;       // the page's line after the click
    };
    const std::string zedAbsent = basekit::ustring::Format(LoadResString(IDS_NO_INTERNAL_RECEIVER).c_str(), LoadResString(IDS_ZED_TOOLS)).ToUtf8();
    const std::string backpackAbsent = basekit::ustring::Format(LoadResString(IDS_NO_INTERNAL_RECEIVER).c_str(), LoadResString(IDS_BACKPACK_TOOLS)).ToUtf8();
    const Case cases[] = {
        {"receiver off, Power On switches it on", {"Zed2", false, false, ""}, false, 0, true, P::IDC_POWER_ON, "receiver on\n", Res(IDS_POWER_IS_ON)},
        {"receiver on, Power Off switches it off", {"Zed2", true, false, ""}, false, 0, true, P::IDC_POWER_OFF, "receiver off\n", Res(IDS_POWER_IS_OFF)},
        {"modem off, Power On switches the modem", {"Zer1", true, false, ""}, false, 1, true, P::IDC_POWER_ON, "modem on\n", Res(IDS_POWER_IS_ON)},
        {"not of the family: says so, nothing to switch", {"", false, false, ""}, false, 0, false, 0, "", zedAbsent},
        {"backpack sheet on a backpack controller", {"Pad7", false, false, ""}, true, 0, true, P::IDC_POWER_ON, "receiver on\n", Res(IDS_POWER_IS_ON)},
        {"backpack sheet elsewhere names Backpack Tools", {"Zed2", false, false, ""}, true, 0, false, 0, "", backpackAbsent},
    };
    for (const auto& c : cases) {
        Make(c.controller);
        CZedToolsPS zed(nullptr);
        CBackpackToolsPS backpack(nullptr);
        uikit::CResizablePropertySheet& sheet = c.backpack ? static_cast<uikit::CResizablePropertySheet&>(backpack) : zed;
        CControllerPowerPP& page = c.backpack ? backpack.Receiver() : c.page == 0 ? zed.Receiver() : zed.Modem();
        ControllerTestRun(sheet, [&] {
            sheet.SetActivePage(c.page);
            EXPECT_EQ(page.Controls().Item(P::IDC_POWER_ON)->isEnabled() || page.Controls().Item(P::IDC_POWER_OFF)->isEnabled(), c.present) << c.legend;
            SaveShot(sheet, c.backpack ? "BackpackToolsPS-Receiver" : c.page == 0 ? "ZedToolsPS-Receiver" : "ZedToolsPS-Modem");
            if (c.click) page.Controls().Get<QPushButton>(c.click)->click();
            EXPECT_EQ(Text(page.Controls(), P::IDC_STATE), c.state) << c.legend;
            if (c.present) {
                EXPECT_FALSE(page.Controls().Item(c.click)->isEnabled()) << c.legend << ": the switch just used";
            }
            sheet.GetButton(uikit::IDCANCEL)->click();
        });
        EXPECT_EQ(Actions(), c.actions) << c.legend;
        SetUp();
    }
}

TEST_F(ToolsSheetTest, DevicePages) {
    QTemporaryDir out;
    const std::string image = QDir(out.path()).filePath(QStringLiteral("still.jpg")).toStdString();
    const auto number = [](double v, int decimals) { return QLocale().toString(v, 'f', decimals).toStdString(); };
    struct Case {
        const char* legend;
        const char* devices;
        int page;                  // 2 laser, 3 camera, 4 compass
        const char* file;          // the device's reading file and its content
        const char* content;
        std::string state;         // the page's line after its action
        bool errorBox;
    };
    const Case cases[] = {
        {"laser reads the distance", "laser", 2, "laser/distance", "12.345", "Distance: " + number(12.345, 3) + " m", false},
        {"laser absent says so", "", 2, nullptr, nullptr, Res(IDS_NO_LASER), false},
        {"laser without a reading: error box, page stays", "laser", 2, "laser/distance", "n/a", "", true},
        {"compass reads the heading", "compass", 4, "compass/heading", "271.25", "Heading: " + number(271.25, 1) + "\u00b0", false},
        {"compass absent says so", "laser camera", 4, nullptr, nullptr, Res(IDS_NO_COMPASS), false},
        {"camera captures into the chosen file", "camera", 3, "camera/still", "JPEGDATA", basekit::ustring::Format(LoadResString(IDS_IMAGE_SAVED).c_str(), basekit::ustring::FromUtf8(image)).ToUtf8(), false},
        {"camera absent says so", "laser", 3, nullptr, nullptr, Res(IDS_NO_CAMERA), false},
        {"camera with nothing to deliver: error box", "camera", 3, nullptr, nullptr, "", true},
    };
    for (const auto& c : cases) {
        Make({"Zed2", true, true, c.devices});
        if (c.file) Put(c.file, c.content);
        QFile::remove(QString::fromStdString(image));
        const uikit::CMessageBoxResponder boxes;
        const uikit::CFileDialogResponder files([&](const uikit::FileDialogRequest&) { return basekit::ustring::FromUtf8(image); });
        CZedToolsPS sheet(nullptr);
        auto* page = static_cast<CDevicePP*>(sheet.GetPage(c.page));
        ControllerTestRun(sheet, [&] {
            sheet.SetActivePage(c.page);
            SaveShot(sheet, ("ZedToolsPS-" + sheet.GetPage(c.page)->GetTitle().ToUtf8()).c_str());
            const bool present = page->Controls().Item(CDevicePP::IDC_ACTION)->isEnabled();
            EXPECT_EQ(present, c.file != nullptr || c.errorBox) << c.legend;
            if (present) {
                page->Controls().Get<QPushButton>(CDevicePP::IDC_ACTION)->click();
                ASSERT_TRUE(fenktest::WaitIdle(&sheet)) << c.legend;   // the action runs as a job of the page
            }
            EXPECT_EQ(Text(page->Controls(), CDevicePP::IDC_STATE), c.state) << c.legend;
            EXPECT_TRUE(page->Controls().Item(CDevicePP::IDC_ACTION)->isEnabled() == present) << c.legend << ": still usable";
            sheet.GetButton(uikit::IDCANCEL)->click();
        });
        EXPECT_EQ(boxes.Requests().size(), c.errorBox ? 1u : 0u) << c.legend;
        if (c.page == 3 && !c.errorBox && c.file) {
            QFile saved(QString::fromStdString(image));
            ASSERT_TRUE(saved.open(QIODevice::ReadOnly)) << c.legend;
            EXPECT_EQ(saved.readAll().trimmed().toStdString(), "JPEGDATA") << c.legend;
        }
        SetUp();
    }
}

}  // namespace
