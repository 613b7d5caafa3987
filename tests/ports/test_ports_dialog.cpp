// The ports tree and the port sheets against a scripted receiver.
#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QTimer>
#include <QTreeWidget>
#include <functional>

#include "fenklib/ports/CPortList.h"
#include "fenklib/ports/CReceiverPortsDlg.h"
#include "fenklib/ports/CSerialPortPS.h"
#include "fenklib/ports/CUniversalPortPS.h"
#include "fenklib/msglist/MessageViews.h"
#include "platform/uikit/CMessageBoxResponder.h"
#include "support/EventTrigger.h"
#include "support/ScriptedReceiver.h"

using basekit::ustring;
using fenktest::CScriptedReceiver;
namespace vok = devio::vok;

namespace {

// The named sets come from the data folder of the build.
[[maybe_unused]] const bool kDataFolder = [] { return qputenv("XDG_DATA_DIRS", qgetenv("FENK_BUILD_DIR") + "/share"); }();

const ustring kSetA = L"set,dev/ser/a/rate,%s;set,dev/ser/a/rtscts,%s;set,dev/ser/a/stops,%s;set,dev/ser/a/parity,%s;set,dev/ser/a/bits,%s";

ustring CombinedSet(const wchar_t* rate, const wchar_t* rts, const wchar_t* stops, const wchar_t* parity, const wchar_t* bits) {
    return ustring::Format(kSetA.c_str(), rate, rts, stops, parity, bits);
}

std::vector<ustring> Writes(const std::vector<ustring>& sent) {
    std::vector<ustring> writes;
    for (const ustring& c : sent)
        if (c.rfind(L"set,", 0) == 0 || c.rfind(L"dm,", 0) == 0 || c.rfind(L"em,", 0) == 0) writes.push_back(c);
    return writes;
}

// A receiver with serial ports a and b, the controller on a at 115200 8N1 without flow control.
basekit::CSmartPtr<CScriptedReceiver> SerialReceiver(const wchar_t* terminal = L"dev/ser/a") {
    basekit::CSmartPtr<CScriptedReceiver> rcv(new CScriptedReceiver());
    rcv->On(L"list,/par/dev/ser", CScriptedReceiver::Reply(L"{a=on,b=on}"));
    rcv->On(L"print,/cur/term", CScriptedReceiver::Reply(terminal));
    rcv->Otherwise(CScriptedReceiver::Reply(L""));   // writes succeed
    for (const wchar_t* port : {L"dev/ser/a", L"dev/ser/b"}) {
        const ustring p = port;
        rcv->On(L"print," + p + L"/rate", CScriptedReceiver::Reply(L"115200"));
        rcv->On(L"print," + p + L"/rtscts", CScriptedReceiver::Reply(L"off"));
        rcv->On(L"print," + p + L"/stops", CScriptedReceiver::Reply(L"1"));
        rcv->On(L"print," + p + L"/parity", CScriptedReceiver::Reply(L"N"));
        rcv->On(L"print," + p + L"/bits", CScriptedReceiver::Reply(L"8"));
        rcv->On(L"print," + p + L"/imode", CScriptedReceiver::Reply(L"cmd"));
        rcv->On(L"print,out/" + p + L":on", CScriptedReceiver::Reply(L"{}"));
    }
    return rcv;
}

// Runs a sheet; body runs once inside its modal loop when the pages have read what they read
// on opening.
template <typename Sheet>
int RunWhenRead(Sheet& sheet, const std::function<void()>& body) {
    bool ran = false;
    const fenktest::CIdleTrigger idle(&sheet, [&] {
        if (ran) return;
        ran = true;
        body();
    });
    fenktest::EndAfterMinute(&sheet, [&] { sheet.EndDialog(99); });
    return sheet.DoModal();
}

// Runs a serial sheet; body runs inside its modal loop with the serial page active, then OK.
int RunSerialSheet(CSerialPortPS& sheet, const std::function<void(CSerialPortPS&)>& body) {
    int idle = 0;
    const fenktest::CIdleTrigger trigger(&sheet, [&] {
        if (++idle == 1) {
            sheet.SetActivePage(1);   // the serial page reads when it is first shown
            return;
        }
        if (idle != 2) return;
        body(sheet);
        sheet.accept();
    });
    fenktest::EndAfterMinute(&sheet, [&] { sheet.EndDialog(99); });
    return sheet.DoModal();
}

QComboBox* Combo(CSerialPortPS& sheet, unsigned id) { return sheet.SerialPage().Controls().Get<QComboBox>(id); }

}  // namespace

// Groups appear in table order, only when they list a port; each port once, whatever the reply's form.
TEST(PortsTree, GroupsAndPortsAsTheReceiverListsThem) {
    struct Row {
        const char* legend;
        std::vector<std::pair<ustring, CScriptedReceiver::Step>> replies;
        std::vector<std::pair<QString, QStringList>> tree;
    };
    const Row rows[] = {
        {"serial-only receiver: the other groups fail and are left out",
         {{L"list,/par/dev/ser", CScriptedReceiver::Reply(L"{a=on,b=on}")}},
         {{"Serial", {"dev/ser/a", "dev/ser/b"}}}},
        {"a port listed twice is shown once",
         {{L"list,/par/dev/ser", CScriptedReceiver::Reply(L"{a=on, a =on,c=on}")}},
         {{"Serial", {"dev/ser/a", "dev/ser/c"}}}},
        {"the echoed path wraps the list in one more pair of braces",
         {{L"list,/par/dev/usb", CScriptedReceiver::Reply(L"{/par/dev/usb={a=on}}")}},
         {{"USB", {"dev/usb/a"}}}},
        {"an empty group is left out, script ports use their own table",
         {{L"list,/par/dev/tcp", CScriptedReceiver::Reply(L"{}")}, {L"list,/par/com", CScriptedReceiver::Reply(L"{a=x,b=y}")}},
         {{"COM", {"com/a", "com/b"}}}},
        {"a group whose listing times out is left out, the others shown",
         {{L"list,/par/dev/ser", CScriptedReceiver::Reply(L"{a=on}")}, {L"list,/par/dev/usb", CScriptedReceiver::TimedOut()},
          {L"list,/par/dev/tcp", CScriptedReceiver::Reply(L"{a=on}")}},
         {{"Serial", {"dev/ser/a"}}, {"TCP", {"dev/tcp/a"}}}},
        {"a group refused with another error is left out too",
         {{L"list,/par/dev/ser", CScriptedReceiver::Error(L"{2,,busy}")}, {L"list,/par/dev/usb", CScriptedReceiver::Reply(L"{a=on}")}},
         {{"USB", {"dev/usb/a"}}}},
    };
    for (const Row& row : rows) {
        basekit::CSmartPtr<CScriptedReceiver> rcv(new CScriptedReceiver());
        for (const auto& [command, step] : row.replies) rcv->On(command, step);
        const uikit::CMessageBoxResponder boxes;
        CReceiverPortsDlg dlg(basekit::CSmartPtr<devio::IReceiver>(rcv.Get()), nullptr);
        const int result = RunWhenRead(dlg, [&] {
            QTreeWidget* tree = dlg.PortList();
            ASSERT_EQ(tree->topLevelItemCount(), static_cast<int>(row.tree.size())) << row.legend;
            for (int g = 0; g < tree->topLevelItemCount(); ++g) {
                QTreeWidgetItem* group = tree->topLevelItem(g);
                EXPECT_EQ(group->text(0), row.tree[g].first) << row.legend;
                QStringList ports;
                for (int p = 0; p < group->childCount(); ++p) ports << group->child(p)->text(0);
                EXPECT_EQ(ports, row.tree[g].second) << row.legend;
            }
            tree->grab().save("tour-ports.png");
            dlg.EndDialog(2);
        });
        EXPECT_EQ(result, 2) << row.legend;
        EXPECT_TRUE(boxes.Requests().empty()) << row.legend;
    }
}

// Only when no group at all can be listed is there nothing to show: the first failure's text,
// then the dialog ends with cancel.
TEST(PortsTree, AFailedFillEndsWithCancel) {
    basekit::CSmartPtr<CScriptedReceiver> lost(new CScriptedReceiver());
    lost->Otherwise(CScriptedReceiver::TimedOut());
    const uikit::CMessageBoxResponder boxes;
    CReceiverPortsDlg failing(basekit::CSmartPtr<devio::IReceiver>(lost.Get()), nullptr);
    fenktest::EndAfterMinute(&failing, [&] { failing.EndDialog(99); });
    EXPECT_EQ(failing.DoModal(), 2);
    ASSERT_EQ(boxes.Requests().size(), 1u);
    EXPECT_TRUE(boxes.Requests()[0].flags & uikit::MB_ICONERROR);
}

// What OK on the serial page sends, and whether the sheet asks the host to reconnect.
TEST(SerialSheet, CombinedSetOnEveryOkAndReconnectOnlyForTheOwnChangedPort) {
    struct Row {
        const char* legend;
        vok::EDev port;
        const wchar_t* terminal;
        int rateIndex;   // -1: left as read
        int result;
    };
    const Row rows[] = {
        {"own port, nothing changed: sent, no reconnect", vok::DEV_SER_A, L"dev/ser/a", -1, 1},
        {"own port at 9600: reconnect", vok::DEV_SER_A, L"dev/ser/a", vok::BAUD_9600, 4},
        {"another port at 9600: no reconnect", vok::DEV_SER_A, L"dev/ser/b", vok::BAUD_9600, 1},
    };
    for (const Row& row : rows) {
        basekit::CSmartPtr<CScriptedReceiver> rcv = SerialReceiver(row.terminal);
        CSerialPortPS sheet(basekit::CSmartPtr<devio::IReceiver>(rcv.Get()), row.port, nullptr);
        const int result = RunSerialSheet(sheet, [&](CSerialPortPS& s) {
            if (row.rateIndex >= 0) Combo(s, CReceiverPortSerialPP::IDC_BAUD_RATE)->setCurrentIndex(row.rateIndex);
        });
        EXPECT_EQ(result, row.result) << row.legend;
        const std::vector<ustring> writes = Writes(rcv->Sent());
        const ustring expected = CombinedSet(row.rateIndex >= 0 ? L"9600" : L"115200", L"off", L"1", L"N", L"8");
        EXPECT_NE(std::find(writes.begin(), writes.end(), expected), writes.end()) << row.legend;
    }
}

TEST(SerialSheet, UnknownValuesLeaveNoSelectionAndSendTheDefaults) {
    basekit::CSmartPtr<CScriptedReceiver> rcv = SerialReceiver(L"dev/ser/b");
    for (const wchar_t* setting : {L"rate", L"stops", L"parity", L"bits"})
        rcv->On(ustring(L"print,dev/ser/a/") + setting, CScriptedReceiver::Reply(L"weird"));
    CSerialPortPS sheet(basekit::CSmartPtr<devio::IReceiver>(rcv.Get()), vok::DEV_SER_A, nullptr);
    RunSerialSheet(sheet, [&](CSerialPortPS& s) {
        for (const unsigned id : {CReceiverPortSerialPP::IDC_BAUD_RATE, CReceiverPortSerialPP::IDC_STOP_BITS,
                                  CReceiverPortSerialPP::IDC_PARITY, CReceiverPortSerialPP::IDC_BYTE_SIZE})
            EXPECT_EQ(Combo(s, id)->currentIndex(), -1) << id;
    });
    const std::vector<ustring> writes = Writes(rcv->Sent());
    EXPECT_NE(std::find(writes.begin(), writes.end(), CombinedSet(L"115200", L"off", L"1", L"N", L"8")), writes.end());
}

TEST(SerialSheet, AVanishedPortGivesThreeWithoutShowing) {
    basekit::CSmartPtr<CScriptedReceiver> rcv = SerialReceiver();
    CSerialPortPS sheet(basekit::CSmartPtr<devio::IReceiver>(rcv.Get()), vok::DEV_SER_C, nullptr);
    EXPECT_EQ(sheet.DoModal(), 3);
    EXPECT_EQ(rcv->Sent(), std::vector<ustring>{L"list,/par/dev/ser"});
}

// The general page: the own port's input mode is locked; "None" writes only the stop of all output.
TEST(GeneralPage, OwnPortInputModeLockedAndNoneSendsOnlyDm) {
    struct Row {
        const char* legend;
        const wchar_t* terminal;
        bool imodeEnabled;
    };
    const Row rows[] = {{"own port", L"dev/ser/a", false}, {"another port", L"dev/ser/b", true}};
    for (const Row& row : rows) {
        basekit::CSmartPtr<CScriptedReceiver> rcv = SerialReceiver(row.terminal);
        rcv->On(L"print,out/dev/ser/a:on", CScriptedReceiver::Reply(L"{/msg/nmea/GGA={1.00,0.00,0,0x0}}"));
        CUniversalPortPS sheet(basekit::CSmartPtr<devio::IReceiver>(rcv.Get()), vok::DEV_SER_A, nullptr);
        const int result = RunWhenRead(sheet, [&] {
            const CDialogControls& c = sheet.GeneralPage().Controls();
            EXPECT_EQ(c.Item(CReceiverPortGeneralPP::IDC_IMODE)->isEnabled(), row.imodeEnabled) << row.legend;
            EXPECT_EQ(c.Get<QComboBox>(CReceiverPortGeneralPP::IDC_IMODE)->currentText(), "cmd") << row.legend;
            EXPECT_EQ(c.Get<QComboBox>(CReceiverPortGeneralPP::IDC_OUTPUT_MODE)->currentIndex(), 1) << "user defined";
            EXPECT_FALSE(c.Item(CReceiverPortGeneralPP::IDC_PERIOD)->isEnabled()) << row.legend;
            c.Get<QComboBox>(CReceiverPortGeneralPP::IDC_OUTPUT_MODE)->setCurrentIndex(0);
            sheet.grab().save("tour-port-general.png");
            sheet.accept();
        });
        EXPECT_EQ(result, 1) << row.legend;
        EXPECT_EQ(Writes(rcv->Sent()), (std::vector<ustring>{L"set,dev/ser/a/imode,cmd", L"dm,/dev/ser/a"})) << row.legend;
    }
}

// The tree's keys: Enter opens a port's sheet and a group's nothing; F5 lists the ports again and
// keeps the chosen one.
TEST(PortsTree, EnterOpensThePortAndF5ListsAgain) {
    struct Row {
        const char* legend;
        int port;   // -1: the group node
        Qt::Key key;
        std::vector<ustring> sent;   // the first commands
    };
    const Row rows[] = {
        {"Enter on a port: the sheet re-lists before it shows", 1, Qt::Key_Return, {L"list,/par/dev/ser"}},
        {"Enter on a group: nothing", -1, Qt::Key_Enter, {}},
        {"F5: every group listed again", 1, Qt::Key_F5, {L"list,/par/dev/ser", L"list,/par/dev/usb"}},
    };
    for (const Row& row : rows) {
        basekit::CSmartPtr<CScriptedReceiver> rcv = SerialReceiver();
        CReceiverPortsDlg dlg(basekit::CSmartPtr<devio::IReceiver>(rcv.Get()), nullptr);
        int idle = 0;
        const auto check = [&] {
            std::vector<ustring> first = rcv->Sent();
            if (!row.sent.empty()) first.resize(std::min(first.size(), row.sent.size()));
            EXPECT_EQ(first, row.sent) << row.legend;
            EXPECT_EQ(dlg.PortList()->currentItem()->text(0), row.port < 0 ? "Serial" : "dev/ser/b") << row.legend;
            dlg.EndDialog(2);
        };
        const fenktest::CIdleTrigger trigger(&dlg, [&] {
            if (++idle == 2) check();   // F5's listing has ended
            if (idle != 1) return;
            QTreeWidgetItem* group = dlg.PortList()->topLevelItem(0);
            dlg.PortList()->setCurrentItem(row.port < 0 ? group : group->child(row.port));
            rcv->ClearLog();
            QTimer::singleShot(0, &dlg, [&dlg] {   // a sheet that opened is closed at once
                if (auto* sheet = qobject_cast<QDialog*>(QApplication::activeModalWidget()); sheet != &dlg) sheet->reject();
            });
            QKeyEvent press(QEvent::KeyPress, row.key, Qt::NoModifier);
            QApplication::sendEvent(dlg.PortList(), &press);
            if (row.key != Qt::Key_F5) check();
        });
        fenktest::EndAfterMinute(&dlg, [&] { dlg.EndDialog(99); });
        EXPECT_EQ(dlg.DoModal(), 2) << row.legend;
    }
}

// A named set whose messages have period 0 is written at the page's period; the load shown is
// on the port's own line, in bytes per second for a port without a rate.
TEST(GeneralPage, NamedSetTakesThePagePeriodAndTheLoadIsOnThePortsOwnRate) {
    // GGA (74 bytes) and RMC (70 bytes) twice a second: 288 bytes/s, 30% of 9600 bit/s.
    const std::pair<CScriptedReceiver::Step, QString> rows[] = {
        {CScriptedReceiver::Reply(L"9600"), fenkmsg::LoadPercent(0.30).ToQString()},
        {CScriptedReceiver::Error(L"{2,,wrong 1st parameter}"), QStringLiteral("288")},
    };
    for (const auto& [rate, load] : rows) {
        basekit::CSmartPtr<CScriptedReceiver> rcv = SerialReceiver();
        rcv->On(L"print,dev/ser/b/rate", rate);
        CUniversalPortPS sheet(basekit::CSmartPtr<devio::IReceiver>(rcv.Get()), vok::DEV_SER_B, nullptr);
        const int result = RunWhenRead(sheet, [&, load = load] {
            const CDialogControls& c = sheet.GeneralPage().Controls();
            auto* mode = c.Get<QComboBox>(CReceiverPortGeneralPP::IDC_OUTPUT_MODE);
            mode->setCurrentIndex(mode->findText(QStringLiteral("NMEA at the port's period")));
            emit mode->activated(mode->currentIndex());
            c.Get<QLineEdit>(CReceiverPortGeneralPP::IDC_PERIOD)->setText(QLocale().toString(0.5));
            emit c.Get<QLineEdit>(CReceiverPortGeneralPP::IDC_PERIOD)->textEdited({});
            EXPECT_TRUE(c.Get<QLabel>(CReceiverPortGeneralPP::IDC_LOAD)->text().contains(load)) << load.toStdString();
            sheet.accept();
        });
        EXPECT_EQ(result, 1);
        EXPECT_EQ(Writes(rcv->Sent()), (std::vector<ustring>{L"set,dev/ser/b/imode,cmd", L"dm,/dev/ser/b",
                                                             L"em,/dev/ser/b,nmea/GGA:{0.500000,0.000000,0,0x0}",
                                                             L"em,/dev/ser/b,nmea/RMC:{0.500000,0.000000,0,0x0}"}));
    }
}

// Each reading of the General page stands alone: one that failed is never written back, and
// the controller's own port keeps its input mode locked whatever else failed. Before, a failed
// output-list read unlocked the mode and preselected "None", so OK wiped the port's output.
TEST(GeneralPage, AFailedReadingIsNeverWrittenBack) {
    const ustring gga = L"{nmea/GGA={1.00,0.00,0,0x0}}";
    const ustring ggaEm = L"em,/dev/ser/a,nmea/GGA:{1.000000,0.000000,0,0x0}";
    struct Row {
        const char* legend;
        const wchar_t* failing;   // the reading that fails
        CScriptedReceiver::Step failure;
        bool imodeEnabled;
        int outputMode;           // selected index, -1: none
        std::vector<ustring> writes;
    };
    const Row rows[] = {
        {"output list times out on the own port", L"print,out/dev/ser/a:on", CScriptedReceiver::TimedOut(), false, -1,
         {L"set,dev/ser/a/imode,cmd"}},
        {"output list refused on the own port", L"print,out/dev/ser/a:on", CScriptedReceiver::Error(L"{2,,wrong command}"),
         false, -1, {L"set,dev/ser/a/imode,cmd"}},
        {"input mode unanswered", L"print,dev/ser/a/imode", CScriptedReceiver::TimedOut(), false, 1,
         {L"dm,/dev/ser/a", ggaEm}},
        {"current terminal unknown: the mode stays locked", L"print,/cur/term", CScriptedReceiver::TimedOut(), false, 1,
         {L"set,dev/ser/a/imode,cmd", L"dm,/dev/ser/a", ggaEm}},
    };
    for (const Row& row : rows) {
        basekit::CSmartPtr<CScriptedReceiver> rcv = SerialReceiver(L"dev/ser/a");
        rcv->On(L"print,out/dev/ser/a:on", CScriptedReceiver::Reply(gga));
        rcv->On(row.failing, row.failure);
        const uikit::CMessageBoxResponder boxes;
        CUniversalPortPS sheet(basekit::CSmartPtr<devio::IReceiver>(rcv.Get()), vok::DEV_SER_A, nullptr);
        bool imodeEnabled = true;
        int outputMode = -2;
        const int result = RunWhenRead(sheet, [&] {
            const CDialogControls& c = sheet.GeneralPage().Controls();
            imodeEnabled = c.Item(CReceiverPortGeneralPP::IDC_IMODE)->isEnabled();
            outputMode = c.Get<QComboBox>(CReceiverPortGeneralPP::IDC_OUTPUT_MODE)->currentIndex();
            rcv->ClearLog();
            sheet.accept();
        });
        EXPECT_EQ(result, 1) << row.legend;
        EXPECT_EQ(imodeEnabled, row.imodeEnabled) << row.legend;
        EXPECT_EQ(outputMode, row.outputMode) << row.legend;
        EXPECT_EQ(Writes(rcv->Sent()), row.writes) << row.legend;
        EXPECT_EQ(boxes.Requests().size(), 1u) << row.legend << ": the failure is shown once";
    }
}

// Values the user did not touch go back exactly as read, not as the edit shows them rounded.
TEST(GeneralPage, AnUntouchedPeriodIsWrittenBackExactly) {
    struct Row {
        const char* legend;
        const wchar_t* period;   // as the receiver gives it
        const wchar_t* written;  // as "em" must carry it
    };
    const Row rows[] = {
        {"more digits than the edit shows", L"1234.5678", L"1234.567800"},
        {"just under a day: not rounded up to the limit", L"86399.99", L"86399.990000"},
    };
    for (const Row& row : rows) {
        basekit::CSmartPtr<CScriptedReceiver> rcv = SerialReceiver(L"dev/ser/a");
        const ustring list = ustring::Format(L"{nmea/GGA={%s,0,0,0x0},nmea/RMC={%s,0,0,0x0}}", row.period, row.period);
        rcv->On(L"print,out/dev/ser/b:on", CScriptedReceiver::Reply(list));
        CUniversalPortPS sheet(basekit::CSmartPtr<devio::IReceiver>(rcv.Get()), vok::DEV_SER_B, nullptr);
        QString mode;
        const int result = RunWhenRead(sheet, [&] {
            mode = sheet.GeneralPage().Controls().Get<QComboBox>(CReceiverPortGeneralPP::IDC_OUTPUT_MODE)->currentText();
            sheet.GeneralPage().SetModified();
            sheet.accept();
        });
        EXPECT_EQ(result, 1) << row.legend;
        EXPECT_EQ(mode, QStringLiteral("NMEA at the port's period")) << row.legend;
        const ustring em = ustring::Format(L"em,/dev/ser/b,nmea/GGA:{%s,0.000000,0,0x0}", row.written);
        const auto writes = Writes(rcv->Sent());
        EXPECT_NE(std::find(writes.begin(), writes.end(), em), writes.end()) << row.legend;
    }
}

// A setting the page could not read is not compared: only a value that was read and then
// changed on the controller's own port asks the host to reconnect. The combined set goes first,
// then "print,/cur/term".
TEST(SerialSheet, OnlyAReadSettingThatChangedReconnects) {
    struct Row {
        const char* legend;
        const wchar_t* unread;   // the setting whose reading times out, nullptr: none
        int rateIndex;           // -1: left as shown
        int result;
    };
    const Row rows[] = {
        {"flow control unread, nothing changed", L"rtscts", -1, 1},
        {"baud rate unread, nothing chosen: its default is no change", L"rate", -1, 1},
        {"parity unread, baud rate changed", L"parity", vok::BAUD_9600, 4},
    };
    for (const Row& row : rows) {
        basekit::CSmartPtr<CScriptedReceiver> rcv = SerialReceiver(L"dev/ser/a");
        rcv->On(ustring(L"print,dev/ser/a/") + row.unread, CScriptedReceiver::TimedOut());
        const uikit::CMessageBoxResponder boxes;
        CSerialPortPS sheet(basekit::CSmartPtr<devio::IReceiver>(rcv.Get()), vok::DEV_SER_A, nullptr);
        std::vector<ustring> afterRead;
        const int result = RunSerialSheet(sheet, [&](CSerialPortPS& s) {
            if (row.rateIndex >= 0) Combo(s, CReceiverPortSerialPP::IDC_BAUD_RATE)->setCurrentIndex(row.rateIndex);
            s.SerialPage().SetModified();
            rcv->ClearLog();
        });
        EXPECT_EQ(result, row.result) << row.legend;
        EXPECT_EQ(boxes.Requests().size(), 1u) << row.legend << ": the failed reading is shown";
        const std::vector<ustring> sent = rcv->Sent();
        const auto set = std::find_if(sent.begin(), sent.end(), [](const ustring& c) { return c.starts_with(L"set,dev/ser/a/rate,"); });
        ASSERT_NE(set, sent.end()) << row.legend;
        ASSERT_NE(set + 1, sent.end()) << row.legend;
        EXPECT_EQ(*(set + 1), L"print,/cur/term") << row.legend << ": whose port it is is asked after the set";
    }
}
