// The receiver information dialog offscreen against the simulator over loopback.
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QFile>
#include <QPushButton>
#include <QRegularExpression>
#include <QSettings>
#include <QTemporaryDir>
#include <QTreeWidget>
#include <functional>
#include <memory>

#include "SimLink.h"
#include "fenklib/config/CReceiverInfoDlg.h"
#include "fenklib/frame/LibraryHelpers.h"
#include "fenklib/receiver/CVokReceiverMate.h"
#include "fenklib/resources/StringIds.h"
#include "platform/basekit/Registry.h"
#include "platform/uikit/CFileDialogResponder.h"
#include "platform/uikit/CMessageBoxResponder.h"
#include "support/EventTrigger.h"
#include "support/SettingsSandbox.h"

using fenktest::SimLink;
using basekit::ustring;

namespace {

bool Idle(const CReceiverInfoDlg& dlg) { return dlg.property("fenkIdle").toBool(); }

// Runs the dialog; onIdle is called each time it becomes idle until it returns true, then the
// dialog is closed with OK.
int RunWhenIdle(CReceiverInfoDlg& dlg, const std::function<bool()>& onIdle) {
    const fenktest::CIdleTrigger idle(&dlg, [&] {
        if (onIdle()) dlg.EndDialog(1);
    });
    fenktest::EndAfterMinute(&dlg, [&] { dlg.EndDialog(2); });
    return dlg.DoModal();
}

class InfoDialog : public fenktest::CSettingsSandboxTest {};

TEST_F(InfoDialog, EveryRowWithItsValue) {
    SimLink link;
    CReceiverInfoDlg dlg(link.Receiver(), nullptr);
    EXPECT_EQ(dlg.DefaultFileName(), L"info.txt") << "before the Id row is read";
    EXPECT_EQ(RunWhenIdle(dlg, [] { return true; }), 1);
    struct Row { unsigned label; const wchar_t* value; };
    const Row rows[] = {
        {IDS_ROW_MODEL, L"FNK-600"}, {IDS_ROW_ID, L"FN6K2M7Q4T"}, {IDS_ROW_SERIAL_NUMBER, L"8Y4K21S0057"},
        {IDS_ROW_BOARD_VERSION, L"2.3"}, {IDS_ROW_FIRMWARE_VERSION, L"4.2.1 Jun,12,2024 p3"},
        {IDS_ROW_HARDWARE_VERSION, L"FNK-600 rev.C"}, {IDS_ROW_AUX_FIRMWARE_VERSION, L"1.6.0 May,02,2024"},
        {IDS_ROW_AUX_HARDWARE_VERSION, L"2"}, {IDS_ROW_POWER_BOARD_VERSION, L"hw=3, fw=1.14"}, {IDS_ROW_VENDOR, L"FENK"},
        {0, L""}, {IDS_ROW_CPU_FREQ, L"396"}, {IDS_ROW_RAM_SIZE, L"131072"}, {0, L""},
        {IDS_ROW_FLASH_TOTAL, L"1048576"}, {IDS_ROW_FLASH_AVAILABLE, L"1044480"}, {IDS_ROW_FLASH_FREE, nullptr},
        {0, L""}, {IDS_ROW_BATTERY_A, L"7.82"}, {IDS_ROW_BATTERY_B, L"7.79"}, {IDS_ROW_CHARGER, L"0.00"},
        {IDS_ROW_POWER_SUPPLY, L"12.34"}, {IDS_ROW_POWER_BOARD, L"7.91"},
    };
    ASSERT_EQ(dlg.RowCount(), 23);
    for (int i = 0; i < 23; ++i) {
        EXPECT_EQ(dlg.RowLabel(i), rows[i].label ? LoadResString(rows[i].label) : ustring()) << "row " << i + 1;
        if (rows[i].value) {
            EXPECT_EQ(dlg.RowValue(i), rows[i].value) << "row " << i + 1;
        }
        EXPECT_EQ(dlg.RowHasIcon(i), rows[i].label != 0) << "row " << i + 1;
    }
    EXPECT_EQ(dlg.DefaultFileName(), L"FN6K2M7Q4T.txt");
}

TEST_F(InfoDialog, ButtonsFollowTheReadingAndTheLink) {
    SimLink link(SimLink::Over::Tcp);
    CReceiverInfoDlg dlg(link.Receiver(), nullptr);
    auto* list = dlg.findChild<QTreeWidget*>();
    int rowsSeenBusy = 0;
    QObject::connect(list->model(), &QAbstractItemModel::rowsInserted, &dlg, [&] {
        if (Idle(dlg)) return;
        ++rowsSeenBusy;
        EXPECT_FALSE(dlg.IsRefreshEnabled());
        EXPECT_FALSE(dlg.IsSaveEnabled());
    });
    // Refresh turns off when the receiver goes away (its event 7); the dialog then closes.
    std::vector<std::unique_ptr<fenktest::CEventTrigger>> disabled;
    for (QPushButton* button : dlg.findChildren<QPushButton*>())
        disabled.push_back(std::make_unique<fenktest::CEventTrigger>(button, QEvent::EnabledChange, [&] {
            if (!dlg.IsRefreshEnabled() && Idle(dlg)) dlg.EndDialog(1);
        }));
    RunWhenIdle(dlg, [&] {
        EXPECT_TRUE(dlg.IsRefreshEnabled());
        EXPECT_TRUE(dlg.IsSaveEnabled());
        link.sim->DropLinks();
        return false;
    });
    EXPECT_GT(rowsSeenBusy, 0);
    EXPECT_FALSE(dlg.IsRefreshEnabled());
    EXPECT_TRUE(dlg.IsSaveEnabled());
    EXPECT_NE(dlg.RowValue(0).find(L"last read"), std::wstring::npos) << "values read before the loss are marked stale";
    EXPECT_TRUE(dlg.windowTitle().contains(QStringLiteral("link to the receiver lost"))) << "the window says why in words";

    // A window opened on the dead link cannot subscribe: error box, then result 3.
    const uikit::CMessageBoxResponder boxes;
    CReceiverInfoDlg again(link.Receiver(), nullptr);
    EXPECT_EQ(again.DoModal(), 3);
    ASSERT_EQ(boxes.Requests().size(), 1u);
    EXPECT_NE(boxes.Requests()[0].details.find(L"Subscribe"), std::wstring::npos) << "the technical text is under Details";
}

TEST_F(InfoDialog, ClosingDuringTheReadingStopsIt) {
    rcvsim::SimOptions options;
    options.faults.latencyMs = 200;
    SimLink link(SimLink::Over::Tcp, options);
    int rowsAtClose = -1;
    {
        CReceiverInfoDlg dlg(link.Receiver(), nullptr);
        auto* list = dlg.findChild<QTreeWidget*>();
        QObject::connect(list->model(), &QAbstractItemModel::rowsInserted, &dlg, [&] {
            if (dlg.RowCount() == 2 && rowsAtClose < 0) {
                rowsAtClose = 2;
                dlg.EndDialog(1);
            }
        });
        fenktest::EndAfterMinute(&dlg, [&] { dlg.EndDialog(2); });
        dlg.DoModal();
        EXPECT_FALSE(dlg.IsWorkerRunning());
        QCoreApplication::sendPostedEvents(&dlg);   // messages posted before the close are dropped
        EXPECT_EQ(dlg.RowCount(), rowsAtClose) << "no row after the close";
    }
    EXPECT_EQ(rowsAtClose, 2);
}

TEST_F(InfoDialog, FailedRowsSayWhyAndTheReadingGoesOn) {
    rcvsim::SimOptions options;
    options.faults.latencyMs = 300;
    options.faults.latencyPath = "rcv/sn";
    options.faults.silentPaths = {"rcv/id"};
    SimLink link(SimLink::Over::Pty, options, 921600);   // a fast line keeps the time-out near 5 s
    CReceiverInfoDlg dlg(link.Receiver(), nullptr);
    RunWhenIdle(dlg, [] { return true; });
    ASSERT_EQ(dlg.RowCount(), 23);
    EXPECT_EQ(dlg.RowValue(2), L"8Y4K21S0057") << "the slow row";
    EXPECT_NE(dlg.RowValue(1).find(L"Not read"), std::wstring::npos) << "the silent row says why";
    EXPECT_NE(dlg.RowValue(1).find(L"timed out"), std::wstring::npos);
    EXPECT_EQ(dlg.RowValue(11), L"396") << "reading went on after it";
    EXPECT_EQ(dlg.DefaultFileName(), L"info.txt") << "an Id that was not read names no file";
}

TEST_F(InfoDialog, SaveToFileWritesTheHeaderAndTheListingsAsUtf8) {
    SimLink link;
    {
        devio::CVokReceiverMate mate(link.Receiver());
        mate.Set(devio::par::ExtBtName, L"Rover \u00b0 S\u00fcd");
    }
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("saved.txt"));
    uikit::CFileDialogResponder files([&](const uikit::FileDialogRequest& r) {
        EXPECT_TRUE(r.defaultPath.ToQString().endsWith(QStringLiteral("FN6K2M7Q4T.txt")));
        EXPECT_EQ(r.defaultExtension, L".txt");
        return ustring::FromQString(path);
    });
    CReceiverInfoDlg dlg(link.Receiver(), nullptr);
    bool saving = false;
    RunWhenIdle(dlg, [&] {
        if (saving) return true;
        saving = true;
        dlg.OnSaveToFile();
        return false;
    });
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray bytes = file.readAll();
    // Locale 1033's short date and time, then nothing else on the line.
    const QRegularExpression header(QStringLiteral(
        "^// Created by Lyn Utility, Version 2\\.3 \\[September 9, 2011\\]\r\n// \\d{1,2}/\\d{1,2}/\\d{4} \\d{1,2}:\\d{2}:\\d{2} [AP]M\r\n\r\n"));
    const QRegularExpressionMatch match = header.match(QString::fromUtf8(bytes));
    ASSERT_TRUE(match.hasMatch()) << bytes.left(120).toStdString();
    devio::CVokReceiverMate mate(link.Receiver());
    const ustring body = mate.ExecuteCommand(L"print,/par:on", false, 60000) + L"\r\n" +
                         mate.ExecuteCommand(L"print,/dev/blk/a&blocks:on") + L"\r\n" + mate.ExecuteCommand(L"print,/dev/blk/a&block_size:on");
    EXPECT_EQ(bytes.mid(match.captured(0).toUtf8().size()), QByteArray::fromStdString(body.ToUtf8()))
        << "the three replies joined by CR LF, nothing else";
    EXPECT_TRUE(bytes.contains("Rover \xc2\xb0 S\xc3\xbc" "d")) << "UTF-8";
    EXPECT_NE(dlg.StatusText().find(L"saved.txt"), std::wstring::npos) << "the dialog says where it saved";
    ustring remembered;
    basekit::RegGetValue(basekit::HKEY_CURRENT_USER, basekit::RegGetDefaultKeyName(L"private\\CReceiverInfoDlg"), L"InfoPath", remembered);
    EXPECT_EQ(remembered.ToQString(), folder.path()) << "the folder is remembered";
}

// The save's progress counts the bytes of the reply still streaming in, not finished replies.
TEST_F(InfoDialog, ListingProgressCountsBytesWithinAReply) {
    rcvsim::SimOptions options;
    options.throttle = true;   // 115200 bit/s: the first reply takes over a second
    options.dumpBytes = 16 * 1024;
    SimLink link(SimLink::Over::Tcp, options);
    devio::CVokReceiverMate mate(link.Receiver());
    std::vector<std::uint64_t> withinFirst;
    std::uint64_t last = 0;
    bool monotonic = true;
    mate.ReadSettingsListing([&](std::uint64_t bytes, int done, int) {
        monotonic = monotonic && bytes >= last;
        last = bytes;
        if (done == 0 && bytes > 0) withinFirst.push_back(bytes);
    });
    EXPECT_FALSE(withinFirst.empty()) << "bytes reported before the first reply was complete";
    EXPECT_TRUE(monotonic);
}

TEST_F(InfoDialog, ALongSaveCanBeCancelled) {
    rcvsim::SimOptions options;
    options.throttle = true;                  // 115200 bit/s: a 4 MB listing would take minutes
    options.dumpBytes = 4 * 1024 * 1024;
    SimLink link(SimLink::Over::Tcp, options);
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("never.txt"));
    uikit::CFileDialogResponder files([&](const uikit::FileDialogRequest&) { return ustring::FromQString(path); });
    const uikit::CMessageBoxResponder boxes;
    CReceiverInfoDlg dlg(link.Receiver(), nullptr);
    bool cancelled = false;
    RunWhenIdle(dlg, [&] {
        if (cancelled) return true;
        dlg.OnSaveToFile();
        EXPECT_FALSE(Idle(dlg)) << "saving shows as work in progress";
        dlg.OnCancelWork();
        cancelled = true;
        return false;
    });
    EXPECT_TRUE(cancelled);
    EXPECT_FALSE(QFile::exists(path)) << "nothing is written";
    EXPECT_TRUE(boxes.Requests().empty()) << "a cancel is not an error";
    EXPECT_TRUE(dlg.IsSaveEnabled());
}

}  // namespace
