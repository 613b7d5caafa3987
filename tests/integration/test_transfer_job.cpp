// The frame's transfer job against the simulator: a window's job copies receiver files with its
// progress in bytes (all files together) and rate reaching the window as they come, and the
// window's Cancel stops it, leaving nothing behind and showing nothing.
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <optional>

#include "SimLink.h"
#include "fenklib/frame/CFenkDialog.h"
#include "fenklib/frame/TransferJob.h"
#include "fenklib/receiver/CVokReceiverMate.h"
#include "platform/uikit/CMessageBoxResponder.h"
#include "support/EventTrigger.h"

using basekit::ustring;
using fenktest::SimLink;

namespace {

class CTransferDlg : public CFenkDialog {
public:
    explicit CTransferDlg(basekit::CSmartPtr<devio::IReceiver> rx) : CFenkDialog(std::move(rx), 0, nullptr, L"CTransferDlg") {}
    ~CTransferDlg() override { DestroyWindow(); }
};

rcvsim::SimOptions WithLogs(std::vector<std::size_t> sizes) {
    rcvsim::SimOptions options;
    options.seededLogs = std::move(sizes);
    return options;
}

std::vector<devio::vok::LOG_FILE> Logs(const SimLink& link) {
    devio::CVokReceiverMate mate(link.Receiver());
    return mate.ListLogFiles(10000);
}

// Runs work as the dialog's one job and ends the dialog when the job has ended.
struct RUN {
    std::vector<JOB_PROGRESS> progress;
    std::optional<JobOutcome> outcome;
};
RUN RunTransferJob(CTransferDlg& dlg, std::function<void(CJobContext&)> work,
                   std::function<void(CTransferDlg&, const JOB_PROGRESS&)> onProgress = {}) {
    RUN run;
    QTimer::singleShot(0, &dlg, [&] {
        dlg.RunJob(std::move(work),
                   [&](const JOB_RESULT<void>& r) {
                       run.outcome = r.outcome;
                       dlg.EndDialog(1);
                   },
                   [&](const JOB_PROGRESS& p) {
                       run.progress.push_back(p);
                       if (onProgress) onProgress(dlg, p);
                   });
    });
    fenktest::EndAfterMinute(&dlg, [&] { dlg.EndDialog(2); });
    dlg.DoModal();
    return run;
}

TEST(TransferJob, ProgressCountsTheBytesOfEveryFileWithItsRate) {
    SimLink link(SimLink::Over::Tcp, WithLogs({200000, 3000}));
    const auto logs = Logs(link);
    ASSERT_GE(logs.size(), 2u);
    const std::uint64_t total = logs[0].size + logs[1].size;
    QTemporaryDir dir;
    CTransferDlg dlg(link.Receiver());
    const uikit::CMessageBoxResponder boxes;
    const RUN run = RunTransferJob(dlg, [&](CJobContext& job) {
        CTransfer transfer(job, total);
        for (size_t i = 0; i < 2; ++i)
            transfer.Download(L"/log/" + logs[i].name, ustring::FromQString(dir.filePath(logs[i].name.ToQString())));
    });
    ASSERT_EQ(run.outcome, JobOutcome::Done);
    EXPECT_TRUE(boxes.Requests().empty());
    ASSERT_FALSE(run.progress.empty());
    for (size_t i = 1; i < run.progress.size(); ++i) EXPECT_GE(run.progress[i].done, run.progress[i - 1].done) << "report " << i;
    const JOB_PROGRESS& last = run.progress.back();
    EXPECT_EQ(last.done, total);
    EXPECT_EQ(last.total, total);
    EXPECT_GT(last.bytesPerSecond, 0.0);
    EXPECT_EQ(last.step, L"/log/" + logs[1].name) << "the file in hand";
    for (size_t i = 0; i < 2; ++i)
        EXPECT_EQ(static_cast<std::uint64_t>(QFileInfo(dir.filePath(logs[i].name.ToQString())).size()), logs[i].size);
}

TEST(TransferJob, IntoMemoryWithoutAKnownTotal) {
    SimLink link;
    CTransferDlg dlg(link.Receiver());
    std::string bytes;
    const RUN run = RunTransferJob(dlg, [&](CJobContext& job) { bytes = CTransfer(job).Download(L"/com/a/script/version"); });
    ASSERT_EQ(run.outcome, JobOutcome::Done);
    EXPECT_EQ(bytes, "name=FNK UHF;version=2.1.4;description=UHF radio modem driver");
    ASSERT_FALSE(run.progress.empty());
    EXPECT_EQ(run.progress.back().total, bytes.size()) << "the file's own size stands in";
}

// Cancel once the first bytes have come: the job ends as stopped with no box, and neither the
// file nor its part stays.
TEST(TransferJob, CancelStopsBetweenPiecesAndLeavesNothing) {
    rcvsim::SimOptions options = WithLogs({200000});
    options.throttle = true;   // the line's own pace: the copy lasts long enough to be cancelled
    SimLink link(SimLink::Over::Pty, options, 115200);
    const auto logs = Logs(link);
    ASSERT_FALSE(logs.empty());
    QTemporaryDir dir;
    CTransferDlg dlg(link.Receiver());
    const uikit::CMessageBoxResponder boxes;
    const RUN run = RunTransferJob(
        dlg, [&](CJobContext& job) { CTransfer(job).Download(L"/log/" + logs[0].name, ustring::FromQString(dir.filePath("big.fnk"))); },
        [](CTransferDlg& d, const JOB_PROGRESS& p) {
            if (p.done > 0) d.CancelJob();
        });
    EXPECT_EQ(run.outcome, JobOutcome::Stopped);
    EXPECT_TRUE(boxes.Requests().empty()) << "a cancel is not an error";
    ASSERT_FALSE(run.progress.empty());
    EXPECT_LT(run.progress.back().done, logs[0].size) << "the copy ran to its end";
    EXPECT_TRUE(QDir(dir.path()).entryList(QDir::Files).isEmpty()) << "a file or its part was left";
}

TEST(TransferJob, AFailureNamesTheFile) {
    SimLink link;
    CTransferDlg dlg(link.Receiver());
    const uikit::CMessageBoxResponder boxes;
    const RUN run = RunTransferJob(dlg, [](CJobContext& job) { CTransfer(job).Download(L"/log/no-such-file"); });
    EXPECT_EQ(run.outcome, JobOutcome::Failed);
    ASSERT_EQ(boxes.Requests().size(), 1u);
    const uikit::MessageBoxRequest box = boxes.Requests()[0];
    EXPECT_NE((box.text + box.details).find(L"/log/no-such-file"), std::wstring::npos);
}

}  // namespace
