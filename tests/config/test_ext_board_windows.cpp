// The extension board's windows (Bluetooth, channel and master volume) and the power switches,
// offscreen against the simulator over loopback: what they show is
// what the receiver holds, OK writes exactly what the user changed, Cancel nothing, and a
// receiver without the board is told apart from a failure.
#include <gtest/gtest.h>

#include <QPushButton>
#include <memory>

#include "fenklib/config/CBluetoothDlg.h"
#include "fenklib/config/CReceiverPowerDlg.h"
#include "fenklib/config/CTivar_MasterVolumeDlg.h"
#include "fenklib/config/CTivar_VolumeControlDlg.h"
#include "integration/ConfigDialogRun.h"
#include "integration/SimLink.h"
#include "platform/uikit/CMessageBoxResponder.h"

using fenktest::SimLink;
using Values = CParamFields::Values;
using Strings = std::vector<std::string>;

namespace {

enum class Window { Bluetooth, Volume, Master };

std::unique_ptr<CExtBoardDlg> Make(Window w, const SimLink& link) {
    switch (w) {
        case Window::Bluetooth: return std::make_unique<CBluetoothDlg>(link.Receiver(), nullptr);
        case Window::Volume: return std::make_unique<CTivar_VolumeControlDlg>(link.Receiver(), nullptr);
        case Window::Master: return std::make_unique<CTivar_MasterVolumeDlg>(link.Receiver(), nullptr);
    }
    return nullptr;
}

SimLink Link(const char* model, bool extBoard, int switches = 4) {
    rcvsim::SimOptions options;
    options.model = model;
    options.extBoard = extBoard;
    options.powerSwitches = switches;
    return SimLink(SimLink::Over::Tcp, options);
}

struct EXT_CASE {
    const char* legend;
    Window window;
    const char* model;               // "Lyn1" is of the extension family
    bool extBoard;
    Values read;                     // what the window shows on open (empty: the receiver has no board)
    std::function<void(Values&)> edit;
    int end;                         // 1 OK, 2 Cancel
    Strings written;                 // the "set," commands the receiver took
    int escapes;                     // "#OFF#" sent raw
};

const Values kBluetooth = {true, false, QVariant(), QVariant(), QStringLiteral("FNK-600 8Y4K21S0057"), QStringLiteral("1234")};
const Values kVolumes = {70, 70, 70};

const EXT_CASE kCases[] = {
    {"Bluetooth: OK unchanged writes nothing", Window::Bluetooth, "Lyn1", true, kBluetooth, [](Values&) {}, 1, {}, 0},
    {"Bluetooth: name and PIN written quoted", Window::Bluetooth, "FNK-600", true, kBluetooth,
     [](Values& v) { v[CBluetoothDlg::NAME] = QStringLiteral("Base 7, north"); v[CBluetoothDlg::PIN] = QStringLiteral("0042"); }, 1,
     {"set,/ext/bt/name,\"Base 7, north\"", "set,/ext/bt/pincode,\"0042\""}, 0},
    {"Bluetooth: extension family switched off: the escape is sent", Window::Bluetooth, "Lyn1", true, kBluetooth,
     [](Values& v) { v[CBluetoothDlg::POWER] = false; v[CBluetoothDlg::MUX] = true; }, 1, {"set,/ext/bt/power,off", "set,/ext/bt/mux,on"}, 1},
    {"Bluetooth: another model switched off: no escape", Window::Bluetooth, "FNK-600", true, kBluetooth,
     [](Values& v) { v[CBluetoothDlg::POWER] = false; }, 1, {"set,/ext/bt/power,off"}, 0},
    {"Bluetooth: extension family, multiplexer only: no escape", Window::Bluetooth, "Lyn1", true, kBluetooth,
     [](Values& v) { v[CBluetoothDlg::MUX] = true; }, 1, {"set,/ext/bt/mux,on"}, 0},
    {"Bluetooth: Cancel after changes", Window::Bluetooth, "Lyn1", true, kBluetooth,
     [](Values& v) { v[CBluetoothDlg::POWER] = false; v[CBluetoothDlg::NAME] = QStringLiteral("x"); }, 2, {}, 0},
    {"Bluetooth: no board: said, nothing written", Window::Bluetooth, "FNK-600", false, {}, [](Values&) {}, 1, {}, 0},
    {"Volume: one channel changed", Window::Volume, "FNK-600", true, kVolumes, [](Values& v) { v[1] = 35; }, 1, {"set,/ext/audio/vol/2,35"}, 0},
    {"Volume: no audio: said, nothing written", Window::Volume, "FNK-600", false, {}, [](Values&) {}, 1, {}, 0},
    {"Master: overall volume changed", Window::Master, "Lyn1", true, {70}, [](Values& v) { v[0] = 40; }, 1, {"set,/ext/audio/vol,40"}, 0},
    {"Master: no audio: said, nothing written", Window::Master, "Lyn1", false, {}, [](Values&) {}, 1, {}, 0},
};

class ExtBoardWindow : public ::testing::TestWithParam<EXT_CASE> {};

TEST_P(ExtBoardWindow, ReadsOnOpenAndWritesTheChangesOnOk) {
    const EXT_CASE& c = GetParam();
    const SimLink link = Link(c.model, c.extBoard);
    const uikit::CMessageBoxResponder boxes;
    auto dlg = Make(c.window, link);
    Values shown;
    bool absent = false;
    const int result = fenktest::RunSteps(*dlg, [&](int step) {
        if (step > 0) return dlg->reject();   // a write that failed left the window open
        absent = dlg->IsAbsent();
        const char* names[] = {"bluetooth", "volume", "master-volume"};
        const std::string shot = std::string(names[static_cast<int>(c.window)]) + (c.extBoard ? "" : "-absent");
        fenktest::SaveTourShot(*dlg, shot.c_str());
        shown = dlg->Collected().value_or(Values{});
        if (!absent) {
            Values v = shown;
            c.edit(v);
            dlg->Edit(v);
        }
        if (c.end == 1) dlg->accept();
        else dlg->reject();
    });
    EXPECT_EQ(result, c.end);
    EXPECT_EQ(absent, c.read.empty());
    if (!c.read.empty()) {
        EXPECT_EQ(shown, c.read);
    }
    EXPECT_TRUE(boxes.Requests().empty()) << "no error box";
    EXPECT_EQ(link.sim->Core().Writes(), c.written);
    EXPECT_EQ(link.sim->Core().BluetoothEscapes(), c.escapes);
}

INSTANTIATE_TEST_SUITE_P(Cases, ExtBoardWindow, ::testing::ValuesIn(kCases));

struct ORDER_CASE {
    const char* legend;
    Window window;
    const char* model;
    int answer;   // to the question, when one is asked
    Strings written;
    int escapes;
};
const ORDER_CASE kOrders[] = {
    {"Bluetooth reset confirmed, extension family: escape and reset", Window::Bluetooth, "Lyn1", uikit::IDYES, {"set,/ext/bt/reset,yes"}, 1},
    {"Bluetooth reset confirmed, another model", Window::Bluetooth, "FNK-600", uikit::IDYES, {"set,/ext/bt/reset,yes"}, 0},
    {"Bluetooth reset declined", Window::Bluetooth, "Lyn1", uikit::IDNO, {}, 0},
    {"Volume test sound", Window::Volume, "FNK-600", uikit::IDYES, {"set,/ext/audio/play/1,on"}, 0},
    {"Master test sound", Window::Master, "FNK-600", uikit::IDYES, {"set,/ext/audio/play/1,on"}, 0},
};
class ExtBoardOrder : public ::testing::TestWithParam<ORDER_CASE> {};

// The order's button (reset or test sound; the only push button besides OK and Cancel).
TEST_P(ExtBoardOrder, ButtonSendsItsOrderOnly) {
    const ORDER_CASE& c = GetParam();
    const SimLink link = Link(c.model, true);
    const uikit::CMessageBoxResponder boxes([&](const uikit::MessageBoxRequest&) { return c.answer; });
    auto dlg = Make(c.window, link);
    const int result = fenktest::RunSteps(*dlg, [&](int step) {
        if (step > 0) return dlg->reject();   // the order (and its new reading) has ended
        for (QPushButton* b : dlg->findChildren<QPushButton*>())
            if (b->objectName() != QLatin1String("1") && b->objectName() != QLatin1String("2")) b->click();
        if (dlg->property("fenkIdle").toBool()) dlg->reject();   // nothing was started
    });
    EXPECT_EQ(result, 2);
    EXPECT_EQ(link.sim->Core().Writes(), c.written) << "Cancel wrote nothing further";
    EXPECT_EQ(link.sim->Core().BluetoothEscapes(), c.escapes);
}

INSTANTIATE_TEST_SUITE_P(Cases, ExtBoardOrder, ::testing::ValuesIn(kOrders));

// As many switch rows as the receiver has switches; only the edited one is written.
TEST(PowerSwitches, SizedFromTheReceiversList) {
    for (const int switches : {2, 6}) {
        const SimLink link = Link("FNK-600", false, switches);
        CReceiverPowerDlg dlg(link.Receiver(), nullptr);
        int shown = 0;
        const int result = fenktest::RunSteps(dlg, [&](int) {
            shown = dlg.SwitchCount();
            Values v = dlg.Collected().value_or(Values{});
            if (!v.empty()) v.back() = v.back().toInt() == 0 ? 1 : 0;   // the last switch: a word it does not hold
            dlg.Edit(v);
            dlg.accept();
        });
        EXPECT_EQ(result, 1);
        EXPECT_EQ(shown, switches);
        ASSERT_EQ(link.sim->Core().Writes().size(), 1u) << switches;
        EXPECT_EQ(link.sim->Core().Writes()[0].rfind("set,pwr/switch/" + std::to_string(switches) + ",", 0), 0u);
    }
}

}  // namespace
