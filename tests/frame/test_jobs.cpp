// Receiver jobs handed to a window's worker: results reach the window's thread in order and
// typed, a replaced job's late results are dropped, a cancel aborts the command in flight, and
// a failure is shown once with its text while the window stays.
#include <gtest/gtest.h>

#include <QTimer>
#include <optional>
#include <stdexcept>

#include "fenklib/frame/CFenkDialog.h"
#include "fenklib/frame/LauncherConvention.h"
#include "platform/uikit/CMessageBoxResponder.h"
#include "support/EventTrigger.h"
#include "support/ScriptedReceiver.h"

using basekit::CSmartPtr;
using fenktest::CScriptedReceiver;

namespace {

class CJobDlg : public CFenkDialog {
public:
    explicit CJobDlg(CSmartPtr<CScriptedReceiver> rx) : CFenkDialog(CSmartPtr<devio::IReceiver>(rx.Get()), 0, nullptr, L"CJobDlg") {}
    ~CJobDlg() override { DestroyWindow(); }
    void UpdateControls() override { ++updates; }
    void OnReceiverNotice(std::uintptr_t, std::intptr_t) override {
        if (noticeThrows) throw std::runtime_error("notice handler broke");
    }
    int updates = 0;
    bool noticeThrows = false;
};

bool AnyBoxSays(const uikit::CMessageBoxResponder& boxes, const std::wstring& part) {
    for (const auto& box : boxes.Requests())
        if (box.text.find(part) != std::wstring::npos || box.details.find(part) != std::wstring::npos) return true;
    return false;
}

CSmartPtr<CScriptedReceiver> NewReceiver() { return CSmartPtr<CScriptedReceiver>(new CScriptedReceiver()); }

// Runs `start` once the dialog is up and idle, and closes it when it is next idle.
int RunJobIn(CJobDlg& dlg, const std::function<void()>& start) {
    bool started = false;
    const fenktest::CIdleTrigger idle(&dlg, [&] {
        if (started) return dlg.EndDialog(1);
        started = true;
        start();
    });
    fenktest::EndAfterMinute(&dlg, [&] { dlg.EndDialog(2); });
    return dlg.DoModal();
}

TEST(Jobs, ResultsArriveInOrderAndTheEndComesLast) {
    const auto rx = NewReceiver();
    rx->Otherwise(CScriptedReceiver::Reply(L"FNK-600"));
    CJobDlg dlg(rx);
    std::vector<int> seen;
    std::optional<JOB_RESULT<std::wstring>> end;
    RunJobIn(dlg, [&] {
        dlg.RunJob(
            [&seen](CJobContext& job) {
                for (int i = 0; i < 500; ++i) job.Deliver(i, [&seen](int v) { seen.push_back(v); });
                return std::wstring(job.Mate().Get(devio::par::RcvModel));
            },
            [&](const JOB_RESULT<std::wstring>& r) {
                EXPECT_EQ(seen.size(), 500u) << "every result before the end";
                end = r;
            });
    });
    ASSERT_TRUE(end);
    for (int i = 0; i < 500; ++i) ASSERT_EQ(seen[static_cast<size_t>(i)], i) << "in order";
    EXPECT_TRUE(end->Ok());
    EXPECT_EQ(*end->value, L"FNK-600");
    EXPECT_FALSE(dlg.IsBusy());
    EXPECT_GE(dlg.updates, 2) << "controls updated when the job started and ended";
}

TEST(Jobs, AReplacedJobsLateResultsAreDropped) {
    const auto rx = NewReceiver();
    CJobDlg dlg(rx);
    int fromFirst = 0;
    bool secondEnded = false;
    RunJobIn(dlg, [&] {
        dlg.RunJob([&fromFirst](CJobContext& job) {
                       while (!job.IsStopping()) job.Deliver(1, [&fromFirst](int) { ++fromFirst; });
                   },
                   [](const JOB_RESULT<void>&) { ADD_FAILURE() << "the first job's end belongs to no one"; });
        dlg.RunJob([](CJobContext&) {}, [&](const JOB_RESULT<void>& r) { secondEnded = r.Ok(); });
    });
    EXPECT_TRUE(secondEnded);
    EXPECT_EQ(fromFirst, 0) << "results queued by the stopped job never ran";
}

TEST(Jobs, CancelAbortsTheCommandInFlight) {
    const auto rx = NewReceiver();
    rx->On(L"print,rcv/model", CScriptedReceiver::Silence());   // would wait its whole time-out
    CJobDlg dlg(rx);
    std::optional<JobOutcome> outcome;
    const uikit::CMessageBoxResponder boxes;
    RunJobIn(dlg, [&] {
        dlg.RunJob([](CJobContext& job) { job.Mate().Get(devio::par::RcvModel); },
                   [&](const JOB_RESULT<void>& r) { outcome = r.outcome; });
        dlg.CancelJob();
    });
    EXPECT_EQ(outcome, JobOutcome::Stopped);
    EXPECT_EQ(rx->Cancels(), 1u) << "the command was given up on the channel";
    EXPECT_TRUE(boxes.Requests().empty()) << "a cancel is not an error";
}

TEST(Jobs, FailuresAreShownWithTheirTextAndTheWindowStays) {
    const auto rx = NewReceiver();
    rx->On(L"print,rcv/model", CScriptedReceiver::Error(L"{2,,wrong 1st parameter}"));
    CJobDlg dlg(rx);
    const uikit::CMessageBoxResponder boxes;
    std::optional<JobOutcome> outcome;
    bool applied = true;
    RunJobIn(dlg, [&] {
        dlg.RunJob([](CJobContext& job) { job.Mate().Get(devio::par::RcvModel); },
                   [&](const JOB_RESULT<void>& r) {
                       outcome = r.outcome;
                       applied = dlg.WithReceiver([](devio::CVokReceiverMate& m) { m.Get(devio::par::RcvModel); });
                   });
    });
    EXPECT_EQ(outcome, JobOutcome::Failed);
    EXPECT_FALSE(applied) << "the UI-thread boundary reports failure";
    ASSERT_EQ(boxes.Requests().size(), 2u) << "one box from the job, one from the boundary";
    for (const auto& box : boxes.Requests()) EXPECT_NE(box.details.find(L"wrong 1st parameter"), std::wstring::npos);
    EXPECT_TRUE(dlg.property("fenkIdle").toBool());
}

// Nothing a job or a handler throws escapes: whatever it is, the window shows it and goes on.
TEST(Jobs, AnyExceptionEndsTheJobAsFailedWithItsBox) {
    struct ROW {
        const char* legend;
        std::function<void()> raise;
        const wchar_t* shown;   // part of the box's text or details
    };
    const ROW rows[] = {
        {"a standard exception keeps its text", [] { throw std::runtime_error("disk on fire"); }, L"disk on fire"},
        {"anything else is an internal error", [] { throw 7; }, L"Internal error"},
    };
    for (const ROW& row : rows) {
        CJobDlg dlg(NewReceiver());
        const uikit::CMessageBoxResponder boxes;
        std::optional<JobOutcome> outcome;
        RunJobIn(dlg, [&] {
            dlg.RunJob([&row](CJobContext&) { row.raise(); }, [&](const JOB_RESULT<void>& r) { outcome = r.outcome; });
        });
        EXPECT_EQ(outcome, JobOutcome::Failed) << row.legend;
        EXPECT_EQ(boxes.Requests().size(), 1u) << row.legend;
        EXPECT_TRUE(AnyBoxSays(boxes, row.shown)) << row.legend;
        EXPECT_FALSE(dlg.IsBusy()) << row.legend;
        EXPECT_TRUE(dlg.property("fenkIdle").toBool()) << row.legend;
    }
}

TEST(Jobs, AThrowingHandlerIsShownAndTheWindowRunsOn) {
    CJobDlg dlg(NewReceiver());
    dlg.noticeThrows = true;
    const uikit::CMessageBoxResponder boxes;
    bool ended = false;
    const int result = RunJobIn(dlg, [&] {
        basekit::PostWindowMessage(dlg.GetSafeHwnd(), WM_FENK_RECEIVER_EVENT7);
        dlg.RunJob(
            [](CJobContext& job) { job.Deliver([] { throw std::logic_error("delivery broke"); }); },
            [&](const JOB_RESULT<void>& r) { ended = r.Ok(); });
    });
    EXPECT_EQ(result, 1) << "the run went on to its own end";
    EXPECT_TRUE(AnyBoxSays(boxes, L"notice handler broke"));
    EXPECT_TRUE(AnyBoxSays(boxes, L"delivery broke"));
    EXPECT_TRUE(ended) << "a throwing delivery does not swallow the job's end";
    EXPECT_FALSE(dlg.IsBusy());
}

// A host cannot handle what a launcher throws: the launcher shows it and returns its failure.
class CUnbuildableDlg {
public:
    explicit CUnbuildableDlg(int) { throw std::runtime_error("no such layout"); }
    int DoModal() { return 1; }
};

TEST(Launchers, AWindowThatCannotBeBuiltGivesTheFailureResult) {
    const uikit::CMessageBoxResponder boxes;
    EXPECT_EQ(RunLauncher<CUnbuildableDlg>(0), kLauncherFailed);
    EXPECT_EQ(kLauncherFailed, 3);
    ASSERT_EQ(boxes.Requests().size(), 1u);
    EXPECT_TRUE(AnyBoxSays(boxes, L"no such layout"));
}

}  // namespace
