// The receiver file explorer offscreen against the simulator over loopback: the sheet as a
// whole, a large download compared byte for byte, and a cancelled copy that leaves nothing.
#include <gtest/gtest.h>

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QSettings>
#include <QTemporaryDir>
#include <QTimer>
#include <QTreeWidget>
#include <functional>

#include "SimLink.h"
#include "fenklib/files/CCopyFileDlg.h"
#include "fenklib/files/CFileSystemInfoDlg.h"
#include "fenklib/files/CProgressDlg.h"
#include "fenklib/files/CReceiverFileExplorerPS.h"
#include "fenklib/frame/CFenkGlobalSettings.h"
#include "fenklib/receiver/CVokReceiverMate.h"
#include "platform/uikit/CFileDialogResponder.h"
#include "platform/uikit/CMessageBoxResponder.h"
#include "support/EventTrigger.h"
#include "support/ModalDriver.h"
#include "support/SettingsSandbox.h"

using basekit::ustring;
using fenktest::WaitIdle;
using fenktest::SimLink;
using P = CExplorerAFRMPP;

namespace {

bool Idle(const QWidget& w) { return w.window()->property("fenkIdle").toBool(); }

void SaveShot(QWidget& w, const char* name) {
    const QByteArray dir = qgetenv("FENK_BUILD_DIR");
    if (!dir.isEmpty()) w.grab().save(QDir(QString::fromUtf8(dir)).filePath(QStringLiteral("tour-%1.png").arg(name)));
}

std::string ReceiverBytes(SimLink& link, const ustring& name) {
    const auto reply = link.sim->Core().Execute("print,\"/log/" + name.ToUtf8() + "\"&content", "dev/tcp/a");
    return reply.text;
}

rcvsim::SimOptions WithLogs(std::vector<std::size_t> sizes) {
    rcvsim::SimOptions options;
    options.seededLogs = std::move(sizes);
    return options;
}

TEST(FileExplorer, FilesAndRotationPagesAgainstTheSimulator) {
    SimLink link(SimLink::Over::Tcp, WithLogs({4096, 70000}));
    CReceiverFileExplorerPS sheet(link.Receiver(), nullptr);
    devio::CVokReceiverMate mate(link.Receiver());
    const ustring current = mate.GetCurrentFile(L'a');
    fenktest::DriveModal(sheet, [&] {
        auto& files = sheet.FilesPage();
        ASSERT_TRUE(fenktest::Await(&sheet, [&] { return Idle(files) && !files.Files().empty(); }));
        EXPECT_EQ(files.Files().size(), 4u) << "two old logs, yesterday's and today's";
        EXPECT_EQ(files.Files()[0].size, 4096u);
        EXPECT_EQ(files.Files()[1].size, 70000u);
        auto* list = files.Controls().Get<QTreeWidget>(CExplorerFilesPP::IDC_LIST);
        int marked = 0;
        for (int i = 0; i < list->topLevelItemCount(); ++i)
            if (list->topLevelItem(i)->font(0).bold()) {
                ++marked;
                EXPECT_TRUE(list->topLevelItem(i)->text(0).startsWith(current.ToQString()));
            }
        EXPECT_EQ(marked, 1) << "the current file of channel A is marked";
        list->sortByColumn(1, Qt::DescendingOrder);
        EXPECT_EQ(list->topLevelItem(0)->data(1, Qt::UserRole).toULongLong(), 70000u) << "sizes sort as numbers";
        SaveShot(sheet, "file-explorer-files");

        ASSERT_TRUE(sheet.SetActivePage(2));
        ASSERT_TRUE(WaitIdle(&sheet));
        auto& afrm = sheet.AfrmPage();
        EXPECT_EQ(sheet.GetActivePage(), &afrm) << sheet.GetActivePage()->GetTitle().ToUtf8();
        EXPECT_TRUE(afrm.HasRead());
        EXPECT_EQ(afrm.Controls().Get<QLineEdit>(P::IDC_PERIOD)->text(), "3600");
        afrm.Controls().Get<QCheckBox>(P::IDC_ENABLE)->click();
        afrm.Controls().Get<QLineEdit>(P::IDC_PERIOD)->setText("900");
        afrm.Controls().Get<QLineEdit>(P::IDC_PHASE)->setText("30");
        afrm.Controls().Get<QLineEdit>(P::IDC_COUNTER)->setText("5");
        EXPECT_TRUE(sheet.ApplyNow());
        ASSERT_TRUE(WaitIdle(&sheet));
        EXPECT_TRUE(sheet.LastApplySucceeded());
        EXPECT_TRUE(mate.Get(devio::par::LogRotMode));
        EXPECT_EQ(mate.Get(devio::par::LogRotScPeriod), 900);
        EXPECT_EQ(mate.Get(devio::par::LogRotScPhase), 30);
        EXPECT_EQ(mate.Get(devio::par::LogRotScCount), 5);
        const int before = mate.Get(devio::par::LogRotCount);
        afrm.OnForceRotation();
        ASSERT_TRUE(WaitIdle(&sheet));
        EXPECT_EQ(mate.Get(devio::par::LogRotCount), before + 1);
        EXPECT_NE(mate.GetCurrentFile(L'a'), current) << "the force started a new file";
        const QString expected = QString::number(before + 1);
        EXPECT_TRUE(fenktest::Await(&sheet, [&] { return afrm.Controls().Get<QLineEdit>(P::IDC_RUNNING_COUNTER)->text() == expected; }));
        SaveShot(sheet, "file-explorer-afrm");

        ASSERT_TRUE(sheet.SetActivePage(1));
        ASSERT_TRUE(WaitIdle(&sheet));
        auto& logs = sheet.LogsPage();
        const ustring logging = mate.GetCurrentFile(L'a');
        EXPECT_TRUE(logs.Controls().Get<QLabel>(CExplorerLogsPP::IDC_FILE_A)->text().startsWith(logging.ToQString()));
        EXPECT_EQ(logs.Controls().Get<QLineEdit>(CExplorerLogsPP::IDC_PERIOD)->text(), "1.00");
        SaveShot(sheet, "file-explorer-logs");
        logs.OnStopLogging();
        ASSERT_TRUE(WaitIdle(&sheet));
        EXPECT_EQ(mate.GetCurrentFile(L'a'), L"");
        EXPECT_TRUE(logs.Controls().Item(CExplorerLogsPP::IDC_START)->isEnabled());
        logs.OnStartLogging();
        ASSERT_TRUE(WaitIdle(&sheet));
        EXPECT_NE(mate.GetCurrentFile(L'a'), L"");
        logs.Controls().Get<QLineEdit>(CExplorerLogsPP::IDC_PERIOD)->setText("0.50");
        logs.Controls().Get<QCheckBox>(CExplorerLogsPP::IDC_IMP_SECOND)->setChecked(true);

        ASSERT_TRUE(sheet.SetActivePage(3));
        ASSERT_TRUE(WaitIdle(&sheet));
        auto& panel = sheet.FrontPanelPage();
        auto* action = panel.Controls().Get<QComboBox>(CExplorerFrontPanelPP::IDC_ACTION);
        EXPECT_EQ(action->currentData().toString(), "log");
        action->setCurrentIndex(action->findData(QStringLiteral("event")));
        SaveShot(sheet, "file-explorer-front-panel");
        EXPECT_TRUE(sheet.ApplyNow());
        ASSERT_TRUE(WaitIdle(&sheet));
        EXPECT_TRUE(sheet.LastApplySucceeded());
        EXPECT_EQ(mate.Get(devio::par::ButtonAction), L"event");
        EXPECT_DOUBLE_EQ(mate.Get(devio::par::LogScPeriod), 0.5);
        bool first = false, second = false;
        mate.GetLogImp(first, second);
        EXPECT_TRUE(first);
        EXPECT_TRUE(second);
        sheet.EndDialog(1);
    });
}

// Several files downloaded through the Files page and the copy dialog, each byte as the
// receiver holds it, nothing left beside them.
TEST(FileExplorer, DownloadThroughTheSheetIsByteForByte) {
    SimLink link(SimLink::Over::Tcp, WithLogs({3u * 1024 * 1024 + 17, 1000}));
    QTemporaryDir target;
    const uikit::CFileDialogResponder save([&](const uikit::FileDialogRequest& r) {
        return ustring::FromQString(QDir(target.path()).filePath(QFileInfo(r.defaultPath.ToQString()).fileName()));
    });
    CReceiverFileExplorerPS sheet(link.Receiver(), nullptr);
    std::vector<ustring> names;
    fenktest::DriveModal(sheet, [&] {
        auto& files = sheet.FilesPage();
        ASSERT_TRUE(fenktest::Await(&sheet, [&] { return Idle(files) && !files.Files().empty(); }));
        names = {files.Files()[0].name, files.Files()[1].name};
        files.SelectFiles(names);
        files.OnDownload();   // runs the copy dialog to its end
        sheet.EndDialog(1);
    });
    ASSERT_EQ(names.size(), 2u);
    for (const ustring& name : names) {
        QFile file(QDir(target.path()).filePath(name.ToQString()));
        ASSERT_TRUE(file.open(QIODevice::ReadOnly)) << name.ToUtf8();
        const QByteArray bytes = file.readAll();
        const std::string expected = ReceiverBytes(link, name);
        ASSERT_EQ(static_cast<size_t>(bytes.size()), expected.size()) << name.ToUtf8();
        EXPECT_TRUE(std::equal(expected.begin(), expected.end(), bytes.begin())) << name.ToUtf8();
    }
    EXPECT_EQ(QDir(target.path()).entryList(QDir::Files).size(), 2) << "a partial file was left";
}

// Cancel in the middle of a copy: the dialog ends with 2 and neither the file nor its part stays.
TEST(FileExplorer, CancelledCopyLeavesNothingBehind) {
    rcvsim::SimOptions options = WithLogs({200000});
    options.throttle = true;   // the line's own pace: the copy lasts long enough to be cancelled
    SimLink link(SimLink::Over::Pty, options, 115200);
    devio::CVokReceiverMate mate(link.Receiver());
    const auto list = mate.ListLogFiles(10000);
    ASSERT_FALSE(list.empty());
    QTemporaryDir target;
    const ustring local = ustring::FromQString(QDir(target.path()).filePath(QStringLiteral("big.fnk")));
    CCopyFileDlg copy(link.Receiver(), nullptr, (L"/log/" + list[0].name).c_str(), local.c_str(), true);
    const int result = fenktest::DriveModal(copy, [&] {
        ASSERT_TRUE(fenktest::Await(&copy, [&] { return !copy.SpeedText().empty(); })) << "no progress came";
        copy.reject();
    });
    EXPECT_EQ(result, 2);
    EXPECT_TRUE(QDir(target.path()).entryList(QDir::Files).isEmpty());
}

// To the receiver: a local file lands whole under its name; a missing local file is an error box.
TEST(FileExplorer, CopyToTheReceiver) {
    SimLink link;
    const QTemporaryDir dir;
    const QString local = dir.filePath(QStringLiteral("up.txt"));
    QFile file(local);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(QByteArray(5000, 'u'));
    file.close();
    const uikit::CMessageBoxResponder boxes;
    CCopyFileDlg up(link.Receiver(), nullptr, ustring::FromQString(local).c_str(), L"/log/up.txt", false);
    EXPECT_EQ(up.DoModal(), 1);
    EXPECT_EQ(devio::CVokReceiverMate(link.Receiver()).GetFileSize(L"/log/up.txt"), 5000u);
    CCopyFileDlg missing(link.Receiver(), nullptr, L"/nonexistent/x", L"/log/x", false);
    EXPECT_EQ(missing.DoModal(), 2);
    EXPECT_EQ(boxes.Requests().size(), 1u);
}

TEST(FileExplorer, FileSystemInformationFollowsTheFiles) {
    SimLink link(SimLink::Over::Tcp, WithLogs({10u * 1024 * 1024}));
    CFileSystemInfoDlg info(link.Receiver(), nullptr);
    fenktest::DriveModal(info, [&] {
        ASSERT_TRUE(fenktest::Await(&info, [&] { return Idle(info) && info.RowCount() == 10; }));
        SaveShot(info, "file-system-info");
        info.EndDialog(1);
    });
    ASSERT_EQ(info.RowCount(), 10);
    EXPECT_GT(info.UsedPerMille(), 0) << "ten megabytes of logs use space";
    EXPECT_EQ(info.RowValue(3), ustring::FromQString(QLocale().toString(262144))) << "blocks";
}

// The Logs page writes the stored site into the current log; a refused event stops the rest and
// shows one error box, the events before it stay in the log.
TEST(FileExplorer, LogsPageWritesTheStoredSite) {
    const fenktest::CSettingsSandbox store;
    struct Row { const char* legend; SiteParameters site; bool written; const char* lastEvent; };
    const Row rows[] = {
        {"all five", SiteParameters{L"HILL", L"tripod", L"FNK-GA3", 1.5f, true, false}, true, "_ANT=FNK-GA3"},
        {"a line break in the description is refused before any event is written",
         SiteParameters{L"P1", L"two\nlines", L"X", 0, false, false}, false, nullptr},
    };
    for (const Row& row : rows) {
        SimLink link;
        CFenkGlobalSettings::Ref().SetSiteParameters(row.site);
        const uikit::CMessageBoxResponder boxes;
        CReceiverFileExplorerPS sheet(link.Receiver(), nullptr);
        fenktest::DriveModal(sheet, [&] {
            ASSERT_TRUE(sheet.SetActivePage(1));
            ASSERT_TRUE(WaitIdle(&sheet));
            sheet.LogsPage().OnWriteSiteEvents();
            ASSERT_TRUE(WaitIdle(&sheet));
            sheet.EndDialog(1);
        });
        EXPECT_EQ(boxes.Requests().size(), row.written ? 0u : 1u) << row.legend;
        devio::CVokReceiverMate mate(link.Receiver());
        const std::string log = ReceiverBytes(link, mate.GetCurrentFile(L'a'));
        const size_t last = log.rfind("EVT ");
        if (!row.lastEvent) {
            EXPECT_EQ(last, std::string::npos) << row.legend << ": no partial set";
            continue;
        }
        ASSERT_NE(last, std::string::npos) << row.legend;
        EXPECT_NE(log.find(std::string(" ") + row.lastEvent + "\n", last), std::string::npos) << row.legend;
    }
}

TEST(FileExplorer, ProgressRunEndsWithItsWork) {
    SimLink link;
    struct Row {
        const char* legend;
        bool cancel;
        int result;
    };
    for (const Row row : {Row{"runs to its end", false, 1}, Row{"cancelled", true, 2}}) {
        basekit::CEvent release(basekit::CEvent::Mode::Manual);
        PROGRESS_INFO run{L"caption", L"text", 0, 10, true, [&](CJobContext& job) {
                              job.Progress(5, 10, L"half");
                              while (!job.IsStopping() && !release.IsSet()) release.Wait(50);
                          }};
        CProgressDlg dlg(link.Receiver(), nullptr, run);
        const int result = fenktest::DriveModal(dlg, [&] {
            EXPECT_TRUE(fenktest::Await(&dlg, [&] { return dlg.BarValue() == 500; })) << row.legend;
            EXPECT_EQ(dlg.Text(), L"half") << row.legend;
            SaveShot(dlg, "progress");
            if (row.cancel) dlg.reject();
            else release.Set();
        });
        EXPECT_EQ(result, row.result) << row.legend;
    }
}

}  // namespace
