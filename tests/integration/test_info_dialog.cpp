// The receiver information dialog offscreen against the simulator over loopback.
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QFile>
#include <QRegularExpression>
#include <QSettings>
#include <QTemporaryDir>
#include <QTimer>
#include <functional>

#include "SimLink.h"
#include "fenklib/config/CReceiverInfoDlg.h"
#include "fenklib/frame/LibraryHelpers.h"
#include "fenklib/receiver/CVokReceiverMate.h"
#include "fenklib/resources/StringIds.h"
#include "platform/uikit/CFileDialogResponder.h"
#include "platform/uikit/CMessageBoxResponder.h"

using fenktest::SimLink;
using basekit::ustring;

namespace {

bool Idle(const CReceiverInfoDlg& dlg) { return dlg.property("fenkIdle").toBool(); }

// Runs the dialog; `step` is called every few milliseconds inside its modal loop until it
// returns true (then the dialog is closed). Bounded: after 60 s the dialog is closed anyway.
int Drive(CReceiverInfoDlg& dlg, const std::function<bool()>& step) {
    QTimer timer;
    int ticks = 0;
    QObject::connect(&timer, &QTimer::timeout, &dlg, [&] {
        if (step() || ++ticks > 6000) {
            timer.stop();
            dlg.EndDialog(1);
        }
    });
    timer.start(10);
    return dlg.DoModal();
}

class InfoDialog : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(m_store.isValid());
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, m_store.path());
    }
    QTemporaryDir m_store;
};

TEST_F(InfoDialog, EveryRowWithItsValue) {
    SimLink link;
    CReceiverInfoDlg dlg(link.Receiver(), nullptr);
    EXPECT_EQ(dlg.DefaultFileName(), L"info.txt") << "before the Id row is read";
    EXPECT_EQ(Drive(dlg, [&] { return Idle(dlg); }), 1);
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
    rcvsim::SimOptions options;
    options.faults.latencyMs = 20;   // the reading lasts long enough to be seen
    SimLink link(SimLink::Over::Tcp, options);
    CReceiverInfoDlg dlg(link.Receiver(), nullptr);
    bool sawBusy = false;
    bool dropped = false;
    Drive(dlg, [&] {
        if (!Idle(dlg)) {
            sawBusy = true;
            EXPECT_FALSE(dlg.IsRefreshEnabled());
            EXPECT_FALSE(dlg.IsSaveEnabled());
            return false;
        }
        if (!dropped) {
            EXPECT_TRUE(dlg.IsRefreshEnabled());
            EXPECT_TRUE(dlg.IsSaveEnabled());
            link.sim->DropLinks();   // the receiver goes away: its event 7 disables Refresh
            dropped = true;
            return false;
        }
        return !dlg.IsRefreshEnabled();
    });
    EXPECT_TRUE(sawBusy);
    EXPECT_FALSE(dlg.IsRefreshEnabled());
    EXPECT_TRUE(dlg.IsSaveEnabled());

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
        Drive(dlg, [&] {
            if (dlg.RowCount() < 2) return false;
            rowsAtClose = dlg.RowCount();
            return true;
        });
        EXPECT_FALSE(dlg.IsWorkerRunning());
        EXPECT_EQ(dlg.RowCount(), rowsAtClose) << "no row after the close";
        QCoreApplication::sendPostedEvents(&dlg);   // messages posted before the close are dropped
        EXPECT_EQ(dlg.RowCount(), rowsAtClose);
    }
    EXPECT_GE(rowsAtClose, 2);
    EXPECT_LT(rowsAtClose, 23);
}

TEST_F(InfoDialog, ASlowRowAndASilentRow) {
    rcvsim::SimOptions options;
    options.faults.latencyMs = 300;
    options.faults.latencyPath = "rcv/sn";
    options.faults.silentPaths = {"rcv/vendor"};
    SimLink link(SimLink::Over::Pty, options, 921600);   // a fast line keeps the time-out near 5 s
    CReceiverInfoDlg dlg(link.Receiver(), nullptr);
    Drive(dlg, [&] { return Idle(dlg); });
    ASSERT_EQ(dlg.RowCount(), 23);
    EXPECT_EQ(dlg.RowValue(2), L"8Y4K21S0057") << "the slow row";
    EXPECT_NE(dlg.RowValue(9).find(L"Not read"), std::wstring::npos) << "the silent row says why";
    EXPECT_NE(dlg.RowValue(9).find(L"timeout"), std::wstring::npos);
    EXPECT_EQ(dlg.RowValue(11), L"396") << "reading went on after it";
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
    Drive(dlg, [&] {
        if (!Idle(dlg)) return false;
        if (!saving) {
            saving = true;
            dlg.OnSaveToFile();
            return false;
        }
        return true;
    });
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray bytes = file.readAll();
    const QRegularExpression header(QStringLiteral(
        "^// Created by Lyn Utility, Version 2\\.3 \\[September 9, 2011\\]\r\n// \\d{1,2}/\\d{1,2}/\\d{2,4} \\d{1,2}:\\d{2}:\\d{2} [AP]M.*\r\n\r\n"));
    EXPECT_TRUE(header.match(QString::fromUtf8(bytes)).hasMatch()) << bytes.left(120).toStdString();
    devio::CVokReceiverMate mate(link.Receiver());
    const ustring body = mate.GetParameterDump(L"/par:on", 60000) + L"\r\n" + mate.GetParameterDump(L"/dev/blk/a&blocks:on", 10000) +
                         L"\r\n" + mate.GetParameterDump(L"/dev/blk/a&block_size:on", 10000);
    EXPECT_TRUE(bytes.endsWith(QByteArray::fromStdString(body.ToUtf8()))) << "the three replies, joined by CR LF";
    EXPECT_TRUE(bytes.contains("Rover \xc2\xb0 S\xc3\xbc" "d")) << "UTF-8";
    const QSettings store(QSettings::NativeFormat, QSettings::UserScope, QCoreApplication::organizationName().isEmpty() ? QStringLiteral("Fenk") : QCoreApplication::organizationName(),
                          QCoreApplication::applicationName().isEmpty() ? QStringLiteral("FenkLib") : QCoreApplication::applicationName());
    EXPECT_EQ(store.value(QStringLiteral("private/CReceiverInfoDlg/InfoPath")).toString(), folder.path()) << "the folder is remembered";
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
    enum { Reading, Saving, Cancelled } phase = Reading;
    Drive(dlg, [&] {
        switch (phase) {
            case Reading:
                if (!Idle(dlg)) return false;
                dlg.OnSaveToFile();
                phase = Saving;
                return false;
            case Saving:
                EXPECT_FALSE(Idle(dlg)) << "saving shows as work in progress";
                dlg.OnCancelWork();
                phase = Cancelled;
                return false;
            case Cancelled:
                return Idle(dlg);
        }
        return true;
    });
    EXPECT_EQ(phase, Cancelled);
    EXPECT_TRUE(Idle(dlg));
    EXPECT_FALSE(QFile::exists(path)) << "nothing is written";
    EXPECT_TRUE(boxes.Requests().empty()) << "a cancel is not an error";
    EXPECT_TRUE(dlg.IsSaveEnabled());
}

}  // namespace
