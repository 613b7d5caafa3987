// The host program's pieces: binding the built library by name, and reconnecting when a
// launcher answers 4.
#include <gtest/gtest.h>

#include <QSettings>
#include <QTemporaryDir>
#include <algorithm>
#include <iterator>
#include <string_view>

#include "support/ModalDriver.h"
#include "tools/lyn-utility/CConnection.h"
#include "platform/basekit/CWinException.h"
#include "platform/devio/INotice.h"
#include "tools/lyn-utility/CBackoff.h"
#include "tools/lyn-utility/CConnectDlg.h"
#include "tools/lyn-utility/CMainWindow.h"
#include <QLineEdit>
#include <QRadioButton>
#include <QComboBox>
#include <QApplication>
#include <QTabWidget>
#include <QTimer>
#include <QTreeWidget>
#include "tools/rcvsim/RcvSim.h"
#include "platform/uikit/CMessageBoxResponder.h"
#include "support/SettingsSandbox.h"

namespace {

bool Has(const std::vector<std::string>& names, const char* name) {
    return std::find(names.begin(), names.end(), name) != names.end();
}

// The host offers every launcher of the library's table, each under the caption the library
// gives it and in the menu its arguments call for; a library that lacks them is reported, not fatal.
TEST(Host, OffersEveryLauncherOfTheTableAndReportsTheMissing) {
    CFenkBinding binding;
    ASSERT_TRUE(binding.Load(QStringLiteral(FENK_LIBRARY_PATH))) << binding.ErrorText().toStdString();
    EXPECT_TRUE(Has(binding.Bound(), "PreOpenPort"));
    EXPECT_TRUE(Has(binding.Bound(), "OnExitApp"));
    EXPECT_TRUE(binding.Missing().empty()) << binding.Missing().front();
    using Menu = CFenkBinding::Menu;
    struct ROW {
        const char* legend;
        const char* name;
        const wchar_t* caption;
        Menu menu;
        const char* shortcut;
        bool takesReceiver;
    };
    const ROW rows[] = {
        {"a window on the receiver, with its key", "run_ReceiverInfoDlg", L"Receiver Info", Menu::Device, "Ctrl+I", true},
        {"a window on the receiver", "run_PositioningPS", L"Positioning", Menu::Device, "", true},
        {"a window that holds no receiver", "run_SetupPS", L"Setup", Menu::Tools, "", false},
        {"a picker that holds no receiver", "run_ChannelsListDlg", L"Channels", Menu::Tools, "", false},
        {"an editor of a value", "run_GeoCoordEditDlg", L"Geodetic Coordinates", Menu::Edit, "", true},
        {"the multi-message picker, apart from the single one", "run_RcvMessageMulListDlg", L"Receiver Messages", Menu::Edit, "", true},
        {"a window the host only tours", "run_CopyFileDlg", L"Copy File", Menu::None, "", true},
    };
    const auto& launchers = binding.Launchers();
    for (const ROW& row : rows) {
        const auto launcher = std::find_if(launchers.begin(), launchers.end(), [&](const auto& l) { return l.name == row.name; });
        ASSERT_NE(launcher, launchers.end()) << row.legend;
        EXPECT_EQ(launcher->caption, row.caption) << row.legend;
        EXPECT_EQ(launcher->menu, row.menu) << row.legend;
        EXPECT_STREQ(launcher->shortcut, row.shortcut) << row.legend;
        EXPECT_EQ(launcher->takesReceiver, row.takesReceiver) << row.legend;
    }
    const char* table[] = {
#define FENK_LAUNCHER(name, window, shape, caption) #name,
#include "fenklib/FenkLauncherTable.h"
#undef FENK_LAUNCHER
    };
    // The modem sheet needs a modem link: the host opens it with --modem, never on a receiver.
    std::vector<std::string> offered;
    for (const char* name : table)
        if (std::string_view(name) != "run_UniversalModemPS") offered.emplace_back(name);
    EXPECT_TRUE(Has(binding.Bound(), "run_UniversalModemPS")) << "bound, though not offered";
    ASSERT_EQ(launchers.size(), offered.size()) << "every launcher offered, once";
    for (std::size_t i = 0; i < launchers.size(); ++i) EXPECT_EQ(launchers[i].name, offered[i]) << "in the table's order";

    // Any other library: loaded, every name reported missing, nothing offered.
    CFenkBinding other;
    ASSERT_TRUE(other.Load(QStringLiteral("libQt6Core.so.6"))) << other.ErrorText().toStdString();
    EXPECT_TRUE(other.Launchers().empty());
    for (const char* name : table) EXPECT_TRUE(Has(other.Missing(), name)) << name;
    EXPECT_TRUE(Has(other.Missing(), "PreOpenPort"));
    CFenkBinding missing;
    EXPECT_FALSE(missing.Load(QStringLiteral("/nonexistent/libfenk.so")));
}

// What the library's probe does, spelled out for the test: model, serial number, firmware.
unsigned TestProbe(const basekit::CSmartPtr<devio::IReceiver>& receiver, unsigned timeoutMs, CFenkBinding::Identity& id) {
    basekit::ustring* fields[] = {&id.model, &id.serial, &id.firmware};
    const wchar_t* commands[] = {L"print,rcv/model", L"print,rcv/sn", L"print,rcv/ver/main"};
    for (int i = 0; i < 3; ++i) {
        devio::COverlapped done;
        const basekit::CSmartPtr<devio::CCommandReply> reply(new devio::CCommandReply());
        const auto channel = receiver->GetCommandChannel();
        const auto cmd = channel->IssueCommand(commands[i], true, reply, devio::INotice::CreateInstance(done), timeoutMs, false);
        if (done.Event().Wait(timeoutMs + 1000).kind != basekit::WaitResult::Signalled) {
            channel->Cancel(cmd);
            return basekit::kErrorTimeout;
        }
        auto r = reply->Take();
        if (r.linkError) return r.linkError;
        *fields[i] = r.text;
    }
    return 0;
}

// Connecting says what answered, or plainly that nothing does; a failed attempt keeps the link
// that was working.
TEST(Host, ConnectSaysWhatAnsweredOrThatNothingDoes) {
    const fenktest::CSettingsSandbox store;
    rcvsim::RcvSim answering;
    const int answeringPort = answering.StartTcp("127.0.0.1", 0);
    rcvsim::SimOptions silentOptions;
    silentOptions.faults.silenceAll = true;
    rcvsim::RcvSim silent(silentOptions);
    const int silentPort = silent.StartTcp("127.0.0.1", 0);
    const CFenkBinding noLibrary;
    CConnection connection(noLibrary);
    connection.SetProbe(&TestProbe);
    CMainWindow window(const_cast<CFenkBinding&>(noLibrary), connection);
    uikit::CMessageBoxResponder boxes;
    const auto tcp = [](int port) { return basekit::ustring::FromUtf8("tcp://127.0.0.1:" + std::to_string(port)); };

    ASSERT_TRUE(window.Connect(tcp(answeringPort)));
    const QString status = window.StatusText();
    EXPECT_TRUE(status.contains(QStringLiteral("FNK-600 s/n 8Y4K21S0057"))) << status.toStdString();
    EXPECT_TRUE(status.contains(QStringLiteral("TCP 127.0.0.1:%1").arg(answeringPort))) << status.toStdString();
    const auto working = connection.Receiver();

    struct ROW {
        const char* legend;
        basekit::ustring url;
        const wchar_t* plain;
    };
    const ROW rows[] = {
        {"a receiver that never answers", tcp(silentPort), L"Nothing answers at TCP 127.0.0.1:"},
        {"nothing listening", L"tcp://127.0.0.1:1", L"Nothing accepts connections at that address and port"},
        {"a malformed link", L"serial:?baud=fast", L"baud=\"fast\" is not a number"},
        {"no such serial port", L"serial:/dev/fenk-no-such-port", L"no such port"},
    };
    for (const ROW& row : rows) {
        const std::size_t shown = boxes.Requests().size();
        EXPECT_FALSE(window.Connect(row.url)) << row.legend;
        ASSERT_EQ(boxes.Requests().size(), shown + 1) << row.legend;
        const auto box = boxes.Requests().back();
        EXPECT_NE(box.text.find(row.plain), std::wstring::npos) << row.legend << ": " << box.text.ToUtf8();
        EXPECT_FALSE(box.details.empty()) << row.legend;
        EXPECT_EQ(connection.Receiver().Get(), working.Get()) << row.legend << ": the working link stays";
        EXPECT_TRUE(window.StatusText().contains(QStringLiteral("FNK-600"))) << row.legend;
    }
}

// A link dropped mid-reading is reported lost and comes back by itself.
TEST(Host, LostLinkIsShownAndReconnectsByItself) {
    const fenktest::CSettingsSandbox store;
    rcvsim::RcvSim sim;
    const int port = sim.StartTcp("127.0.0.1", 0);
    const CFenkBinding noLibrary;
    CConnection connection(noLibrary);
    connection.SetProbe(&TestProbe);
    CMainWindow window(const_cast<CFenkBinding&>(noLibrary), connection);
    ASSERT_TRUE(window.Connect(basekit::ustring::FromUtf8("tcp://127.0.0.1:" + std::to_string(port))));
    const auto before = connection.Receiver();
    devio::COverlapped changed;
    before->Subscribe(devio::INotice::CreateInstance(changed), devio::kEventStateChanged);
    sim.DropLinks();
    ASSERT_EQ(changed.Event().Wait(30000).kind, basekit::WaitResult::Signalled);
    EXPECT_EQ(before->GetLinkHealth().state, devio::LinkState::Lost);
    window.Tick();
    ASSERT_TRUE(connection.IsOpen());
    EXPECT_NE(connection.Receiver().Get(), before.Get()) << "a new link";
    EXPECT_EQ(connection.Receiver()->GetLinkHealth().state, devio::LinkState::Up);
    EXPECT_TRUE(window.StatusText().contains(QStringLiteral("FNK-600"))) << window.StatusText().toStdString();
}

// The connection dialog enables the chosen kind's fields only and remembers each kind's last link.
TEST(Host, ConnectDialogRemembersEachKindAndEnablesOnlyItsFields) {
    const fenktest::CSettingsSandbox store;
    {
        CConnectDlg tcp(nullptr, L"tcp://127.0.0.1:5555");
        EXPECT_EQ(tcp.Url(), L"tcp://127.0.0.1:5555");
        tcp.accept();
        CConnectDlg serial(nullptr, L"serial:/dev/pts/77?baud=9600");
        EXPECT_EQ(serial.Url(), L"serial:/dev/pts/77?baud=9600");
        serial.accept();
    }
    CConnectDlg dialog(nullptr, L"sim:");
    EXPECT_EQ(dialog.Url(), L"sim:");
    const auto radios = dialog.findChildren<QRadioButton*>();
    ASSERT_EQ(radios.size(), 3);
    struct ROW {
        const char* legend;
        int radio;
        const wchar_t* url;
        bool hostEnabled, portEnabled;
    };
    const ROW rows[] = {
        {"serial: the last serial link, its fields only", 1, L"serial:/dev/pts/77?baud=9600", false, true},
        {"tcp: the last tcp link, its fields only", 2, L"tcp://127.0.0.1:5555", true, false},
        {"simulator: nothing to fill in", 0, L"sim:", false, false},
    };
    for (const ROW& row : rows) {
        radios[row.radio]->setChecked(true);
        EXPECT_EQ(dialog.Url(), row.url) << row.legend;
        EXPECT_EQ(dialog.findChild<QLineEdit*>()->isEnabled(), row.hostEnabled) << row.legend;
        EXPECT_EQ(dialog.findChildren<QComboBox*>().at(0)->isEnabled(), row.portEnabled) << row.legend;
    }
}

// The ports dialog answers 4 after changing the controller's own port to 9600 bit/s: the host
// follows the receiver, or, when the receiver's line stayed where it was, goes back, has the
// port's old settings written back and says so.
TEST(Host, FollowsTheReconfiguredPortOrGoesBackSayingWhy) {
    struct ROW {
        const char* legend;
        bool pty, lineStays;
        const char* urlHas;      // the link the host ends on
        const char* rate;        // the receiver's port setting at the end ("": the host's own simulator)
        const wchar_t* box;      // what the host tells the user; empty: nothing
    };
    const ROW rows[] = {
        {"the receiver switches: the host follows", true, false, "baud=9600", "9600", L""},
        {"the line stays: back, old settings written", true, true, "baud=115200", "115200", L"did not answer at the new settings (serial"},
        {"a link without line settings reopens as it was", false, false, "sim:", "", L""},
    };
    const fenktest::CSettingsSandbox store;
    CFenkBinding binding;
    ASSERT_TRUE(binding.Load(QStringLiteral(FENK_LIBRARY_PATH))) << binding.ErrorText().toStdString();
    const auto& launchers = binding.Launchers();
    const auto ports = std::find_if(launchers.begin(), launchers.end(), [](const auto& l) { return l.name == "run_ReceiverPortsDlg"; });
    ASSERT_NE(ports, launchers.end());
    for (const ROW& row : rows) {
        rcvsim::SimOptions options;
        options.faults.lineStays = row.lineStays;
        rcvsim::RcvSim sim(options);
        CConnection connection(binding);
        CMainWindow window(binding, connection);
        const uikit::CMessageBoxResponder boxes;
        ASSERT_TRUE(window.Connect(row.pty ? basekit::ustring::FromUtf8("serial:" + sim.StartPty() + "?baud=115200") : L"sim:"));
        QTimer::singleShot(0, &window, [&] {   // in the ports dialog, once it has listed: Properties of dev/ser/a ...
            QWidget* dialog = QApplication::activeModalWidget();
            ASSERT_TRUE(dialog);
            const auto portA = [dialog] {
                auto* tree = dialog->findChild<QTreeWidget*>();
                return tree ? tree->findItems(QStringLiteral("dev/ser/a"), Qt::MatchExactly | Qt::MatchRecursive).value(0) : nullptr;
            };
            ASSERT_TRUE(fenktest::Await(dialog, [&] { return portA() && dialog->property("fenkIdle").toBool(); }));
            auto* tree = dialog->findChild<QTreeWidget*>();
            tree->setCurrentItem(portA());
            QTimer::singleShot(0, &window, [dialog] {   // ... and in its sheet, once it has read, 9600 on the serial page, OK
                auto* sheet = qobject_cast<QDialog*>(QApplication::activeModalWidget());
                ASSERT_TRUE(sheet && sheet != dialog);
                sheet->findChild<QTabWidget*>()->setCurrentIndex(1);
                auto* rate = sheet->findChild<QComboBox*>(QStringLiteral("3418"));   // the baud rate's control id
                ASSERT_TRUE(rate);
                // The page reads its settings in the background: change the rate once they are shown.
                ASSERT_TRUE(fenktest::Await(sheet, [sheet, rate] {
                    const QVariant idle = sheet->property("fenkIdle");
                    return rate->isEnabled() && rate->currentIndex() >= 0 && (!idle.isValid() || idle.toBool());
                }));
                rate->setCurrentIndex(rate->findText(QStringLiteral("9600")));
                sheet->accept();
            });
            tree->actions().value(0)->trigger();
        });
        EXPECT_EQ(window.RunLauncher(*ports), 4) << row.legend;
        ASSERT_TRUE(connection.IsOpen()) << row.legend;
        EXPECT_TRUE(connection.Url().ToQString().contains(QLatin1String(row.urlHas))) << row.legend << ": " << connection.Url().ToUtf8();
        EXPECT_TRUE(window.StatusText().contains(QStringLiteral("FNK-600"))) << row.legend << ": it answers there";
        // The old settings go out without waiting for an answer: a round trip after them proves them applied.
        CFenkBinding::Identity id;
        EXPECT_EQ(TestProbe(connection.Receiver(), 3000, id), 0u) << row.legend;
        if (*row.rate) {
            EXPECT_EQ(sim.Core().Execute("print,dev/ser/a/rate", "dev/ser/b").text, row.rate) << row.legend;
        }
        if (row.pty && !*row.box) {   // followed: the next connect dialog offers the new link
            CConnectDlg next(nullptr, L"sim:");
            next.findChildren<QRadioButton*>().at(1)->setChecked(true);
            EXPECT_TRUE(next.Url().ToQString().contains(QLatin1String(row.urlHas))) << row.legend;
        }
        ASSERT_EQ(boxes.Requests().size(), *row.box ? 1u : 0u) << row.legend;
        if (*row.box) {
            EXPECT_NE(boxes.Requests()[0].text.find(row.box), std::wstring::npos) << boxes.Requests()[0].text.ToUtf8();
        }
    }
}

TEST(Host, ReconnectAttemptsBackOffUpToHalfAMinute) {
    CBackoff backoff;
    const int expected[] = {1, 2, 4, 8, 16, 30, 30};
    for (const int seconds : expected) EXPECT_EQ(backoff.Next(), seconds);
    backoff.Reset();
    EXPECT_EQ(backoff.Next(), 1) << "after a link that worked";
}

}  // namespace
