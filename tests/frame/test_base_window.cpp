// The receiver window bases: notices for the window's lifetime, one worker with a stop event,
// results 3 and 2 on failure, and the order of teardown.
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QTimer>
#include <atomic>
#include <mutex>

#include "fenklib/frame/CFenkDialog.h"
#include "platform/uikit/CMessageBoxResponder.h"
#include "support/ScriptedReceiver.h"

using fenktest::CScriptedReceiver;
using basekit::CSmartPtr;

namespace {

// Records what happens, in order, from both threads.
struct Journal {
    std::mutex mutex;
    std::vector<std::string> lines;
    void Add(std::string line) {
        const std::lock_guard lock(mutex);
        lines.push_back(std::move(line));
    }
};

class CProbeDlg : public CFenkDialog {
public:
    CProbeDlg(CSmartPtr<CScriptedReceiver> rx, Journal& journal)
        : CFenkDialog(CSmartPtr<devio::IReceiver>(rx.Get()), 0, nullptr, L"CProbeDlg"), m_rx(rx), m_journal(journal) {}
    ~CProbeDlg() override { DestroyWindow(); }
    unsigned WorkerProc() override {
        const int n = ++m_started;
        m_journal.Add("worker " + std::to_string(n) + " started");
        m_stopEvent.Wait(basekit::kInfinite);
        m_journal.Add("worker " + std::to_string(n) + " ended with " + std::to_string(m_rx->subscriptions.size()) + " subscriptions");
        return 0;
    }
    void OnReceiverNotice(std::uintptr_t, std::intptr_t lParam) override {
        m_journal.Add("notice " + std::to_string(lParam));
        if (throwFromNotice) throw basekit::CStdException(L"bad notice");
    }
    void OnReceiverError(std::uintptr_t, std::intptr_t) override { m_journal.Add("error handler"); }
    using CFenkDialog::m_stopEvent;
    bool throwFromNotice = false;

private:
    CSmartPtr<CScriptedReceiver> m_rx;
    Journal& m_journal;
    std::atomic<int> m_started{0};
};

CSmartPtr<CScriptedReceiver> NewReceiver() { return CSmartPtr<CScriptedReceiver>(new CScriptedReceiver()); }

// Runs `during` once the dialog's modal loop runs, then closes it with OK.
int RunWith(CProbeDlg& dlg, const std::function<void()>& during) {
    QTimer::singleShot(0, &dlg, [&] {
        during();
        dlg.EndDialog(1);
    });
    return dlg.DoModal();
}

TEST(BaseWindow, SubscribesForItsLifetimeAndStopsTheWorkerFirst) {
    const auto rx = NewReceiver();
    Journal journal;
    {
        CProbeDlg dlg(rx, journal);
        const int result = RunWith(dlg, [&] {
            ASSERT_EQ(rx->subscriptions.size(), 2u);
            EXPECT_EQ(rx->subscriptions[0].second, 7u);
            EXPECT_EQ(rx->subscriptions[1].second, 8u);
            dlg.StartWorker();
        });
        EXPECT_EQ(result, 1);
    }
    EXPECT_TRUE(rx->subscriptions.empty());
    ASSERT_EQ(journal.lines.size(), 2u);
    EXPECT_EQ(journal.lines[1], "worker 1 ended with 2 subscriptions") << "closing waits for the worker before unsubscribing";
}

TEST(BaseWindow, StartingAgainStopsTheFirstWorkerBeforeTheSecond) {
    const auto rx = NewReceiver();
    Journal journal;
    CProbeDlg dlg(rx, journal);
    RunWith(dlg, [&] {
        dlg.StartWorker();
        dlg.StartWorker();
        EXPECT_TRUE(dlg.IsWorkerRunning());
        dlg.StopWorker();
        EXPECT_FALSE(dlg.IsWorkerRunning());
        dlg.m_stopEvent.Reset();
        dlg.StopWorker();
        EXPECT_TRUE(dlg.m_stopEvent.IsSet()) << "stopping without a worker only sets the event";
    });
    EXPECT_EQ(journal.lines, (std::vector<std::string>{"worker 1 started", "worker 1 ended with 2 subscriptions",
                                                       "worker 2 started", "worker 2 ended with 2 subscriptions"}));
}

TEST(BaseWindow, RefusedSubscriptionEndsWithThreeAfterTheErrorBox) {
    const auto rx = NewReceiver();
    rx->refuseSubscriptions = true;
    Journal journal;
    CProbeDlg dlg(rx, journal);
    const uikit::CMessageBoxResponder boxes;
    EXPECT_EQ(dlg.DoModal(), 3);
    ASSERT_EQ(boxes.Requests().size(), 1u);
    EXPECT_NE(boxes.Requests()[0].details.find(L"Subscribe"), std::wstring::npos) << "the technical text is under Details";
    EXPECT_TRUE(boxes.Requests()[0].flags & uikit::MB_ICONERROR);
}

TEST(BaseWindow, ReceiverEventsArriveAsMessagesOnTheWindowThread) {
    const auto rx = NewReceiver();
    Journal journal;
    CProbeDlg dlg(rx, journal);
    dlg.throwFromNotice = true;
    QTimer::singleShot(0, &dlg, [&] {
        std::thread([&] {
            rx->RaiseEvent(7);
            rx->RaiseEvent(8);
        }).join();
        QTimer::singleShot(50, &dlg, [&] { dlg.EndDialog(1); });
    });
    dlg.DoModal();
    EXPECT_EQ(journal.lines, (std::vector<std::string>{"notice 7", "error handler"}))
        << "event 7 goes to the hook; its exception to the error handler";
    EXPECT_EQ(rx->deliveries, 1) << "event 8 asks the receiver to deliver";
}

}  // namespace
