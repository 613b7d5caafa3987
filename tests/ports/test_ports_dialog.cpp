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

// Runs a serial sheet; body runs inside its modal loop with the serial page active, then OK.
int RunSerialSheet(CSerialPortPS& sheet, const std::function<void(CSerialPortPS&)>& body) {
    QTimer::singleShot(0, &sheet, [&] {
        sheet.SetActivePage(1);
        body(sheet);
        sheet.accept();
    });
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
    };
    for (const Row& row : rows) {
        basekit::CSmartPtr<CScriptedReceiver> rcv(new CScriptedReceiver());
        for (const auto& [command, step] : row.replies) rcv->On(command, step);
        CReceiverPortsDlg dlg(basekit::CSmartPtr<devio::IReceiver>(rcv.Get()), nullptr);
        QTimer::singleShot(0, &dlg, [&] {
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
        EXPECT_EQ(dlg.DoModal(), 2) << row.legend;
    }
}

TEST(PortsTree, AFailedFillEndsWithCancel) {
    basekit::CSmartPtr<CScriptedReceiver> lost(new CScriptedReceiver());
    lost->Otherwise(CScriptedReceiver::TimedOut());
    const uikit::CMessageBoxResponder boxes;
    CReceiverPortsDlg failing(basekit::CSmartPtr<devio::IReceiver>(lost.Get()), nullptr);
    EXPECT_EQ(failing.DoModal(), 2);
    EXPECT_EQ(boxes.Requests().size(), 1u);
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
        QTimer::singleShot(0, &sheet, [&] {
            const CDialogControls& c = sheet.GeneralPage().Controls();
            EXPECT_EQ(c.Item(CReceiverPortGeneralPP::IDC_IMODE)->isEnabled(), row.imodeEnabled) << row.legend;
            EXPECT_EQ(c.Get<QComboBox>(CReceiverPortGeneralPP::IDC_IMODE)->currentText(), "cmd") << row.legend;
            EXPECT_EQ(c.Get<QComboBox>(CReceiverPortGeneralPP::IDC_OUTPUT_MODE)->currentIndex(), 1) << "user defined";
            EXPECT_FALSE(c.Item(CReceiverPortGeneralPP::IDC_PERIOD)->isEnabled()) << row.legend;
            c.Get<QComboBox>(CReceiverPortGeneralPP::IDC_OUTPUT_MODE)->setCurrentIndex(0);
            sheet.grab().save("tour-port-general.png");
            sheet.accept();
        });
        EXPECT_EQ(sheet.DoModal(), 1) << row.legend;
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
        {"Enter on a port: the sheet re-lists, then reads", 1, Qt::Key_Return, {L"list,/par/dev/ser", L"print,dev/ser/b/imode"}},
        {"Enter on a group: nothing", -1, Qt::Key_Enter, {}},
        {"F5: every group listed again", 1, Qt::Key_F5, {L"list,/par/dev/ser", L"list,/par/dev/usb"}},
    };
    for (const Row& row : rows) {
        basekit::CSmartPtr<CScriptedReceiver> rcv = SerialReceiver();
        CReceiverPortsDlg dlg(basekit::CSmartPtr<devio::IReceiver>(rcv.Get()), nullptr);
        QTimer::singleShot(0, &dlg, [&] {
            QTreeWidgetItem* group = dlg.PortList()->topLevelItem(0);
            dlg.PortList()->setCurrentItem(row.port < 0 ? group : group->child(row.port));
            rcv->ClearLog();
            QTimer::singleShot(0, &dlg, [&dlg] {   // a sheet that opened is closed at once
                if (auto* sheet = qobject_cast<QDialog*>(QApplication::activeModalWidget()); sheet != &dlg) sheet->reject();
            });
            QKeyEvent press(QEvent::KeyPress, row.key, Qt::NoModifier);
            QApplication::sendEvent(dlg.PortList(), &press);
            std::vector<ustring> first = rcv->Sent();
            if (!row.sent.empty()) first.resize(std::min(first.size(), row.sent.size()));
            EXPECT_EQ(first, row.sent) << row.legend;
            EXPECT_EQ(dlg.PortList()->currentItem()->text(0), row.port < 0 ? "Serial" : "dev/ser/b") << row.legend;
            dlg.EndDialog(2);
        });
        dlg.DoModal();
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
        QTimer::singleShot(0, &sheet, [&, load = load] {
            const CDialogControls& c = sheet.GeneralPage().Controls();
            auto* mode = c.Get<QComboBox>(CReceiverPortGeneralPP::IDC_OUTPUT_MODE);
            mode->setCurrentIndex(mode->findText(QStringLiteral("NMEA at the port's period")));
            emit mode->activated(mode->currentIndex());
            c.Get<QLineEdit>(CReceiverPortGeneralPP::IDC_PERIOD)->setText(QLocale().toString(0.5));
            emit c.Get<QLineEdit>(CReceiverPortGeneralPP::IDC_PERIOD)->textEdited({});
            EXPECT_TRUE(c.Get<QLabel>(CReceiverPortGeneralPP::IDC_LOAD)->text().contains(load)) << load.toStdString();
            sheet.accept();
        });
        EXPECT_EQ(sheet.DoModal(), 1);
        EXPECT_EQ(Writes(rcv->Sent()), (std::vector<ustring>{L"set,dev/ser/b/imode,cmd", L"dm,/dev/ser/b",
                                                             L"em,/dev/ser/b,nmea/GGA:{0.500000,0.000000,0,0x0}",
                                                             L"em,/dev/ser/b,nmea/RMC:{0.500000,0.000000,0,0x0}"}));
    }
}
