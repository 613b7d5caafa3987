#pragma once
#include <QWidget>
#include <functional>
#include <type_traits>
#include <utility>
#include <vector>

#include "fenklib/frame/CJobContext.h"
#include "fenklib/frame/LibraryHelpers.h"
#include "fenklib/resources/StringIds.h"
#include "platform/basekit/CCriticalSection.h"
#include "platform/basekit/CEvent.h"
#include "platform/basekit/CLocker.h"
#include "platform/basekit/CStdException.h"
#include "platform/basekit/CThread.h"
#include "platform/basekit/CWinException.h"
#include "platform/devio/IReceiver.h"
#include "platform/uikit/CBusyCursor.h"
#include "platform/uikit/CMessageBoxService.h"
#include "platform/uikit/CResizablePropertyPage.h"
#include "platform/uikit/CResizablePropertySheet.h"

// Window messages of the receiver windows.
enum FenkWindowMessage : unsigned {
    WM_FENK_NOTIFY = basekit::WM_USER + 2,            // 1026: a window's own notice (rows waiting ...)
    WM_FENK_RECEIVER_EVENT7 = basekit::WM_USER + 3,   // 1027: receiver event 7
    WM_FENK_RECEIVER_EVENT8 = basekit::WM_USER + 4,   // 1028: receiver event 8
};
// The first parameter of message 1026 when the frame delivers a job's results; windows keep
// every other value of it (the status sheet's notices carry theirs in the second parameter).
inline constexpr std::uintptr_t kFenkJobNotice = 0x4A4F42;

// Marks the top-level window idle when no receiver window inside it is busy; a host's headless
// tour and the tests wait on its "fenkIdle" property.
void PublishFenkIdle(QWidget* window, bool busy);

// What every receiver window adds to its resizable base: it holds the open receiver, turns
// receiver events 7 and 8 into window messages for its lifetime, and owns one worker thread
// with a stop event for slow receiver work.
template <typename Base>
class CFenkBaseWnd : public Base {
public:
    template <typename... BaseArgs>
    explicit CFenkBaseWnd(basekit::CSmartPtr<devio::IReceiver> receiver, BaseArgs&&... baseArgs)
        : Base(std::forward<BaseArgs>(baseArgs)...), m_receiver(std::move(receiver)) {}

    virtual void OnReceiverNotice(std::uintptr_t, std::intptr_t) {}
    virtual void OnReceiverError(std::uintptr_t, std::intptr_t) {}

    virtual void StartWorker() {
        try {
            StopWorker();
            m_stopEvent.Reset();
            m_worker.Start([this] { return WorkerProc(); });
        } catch (const basekit::CStdException& e) {
            uikit::CMessageBoxService::ReportError(this, e);
            EndWindow(2);
        }
    }

    // Blocks until the worker has returned; WorkerProc must watch the stop event.
    virtual void StopWorker() {
        try {
            const uikit::CBusyCursor busy;
            m_stopEvent.Set();
            m_worker.Close();
        } catch (const basekit::CStdException& e) {
            uikit::CMessageBoxService::ReportError(this, e);
            EndWindow(2);
        }
    }

    // Runs the job the window handed over with RunJob(); without one it returns at once.
    virtual unsigned WorkerProc() {
        if (m_job) m_job();
        return 0;
    }

    // Hands receiver work to the window's one worker (stopping the job before it). work(ctx)
    // runs on the worker; onEnd(JOB_RESULT<T>) runs on this thread when it has ended, after the
    // frame has shown the error of a failed job; onProgress gets the latest JOB_PROGRESS.
    template <typename Work, typename OnEnd>
    void RunJob(Work work, OnEnd onEnd, std::function<void(const JOB_PROGRESS&)> onProgress = {}) {
        using T = std::invoke_result_t<Work&, CJobContext&>;
        StopWorker();
        const unsigned serial = ++m_jobSerial;
        {
            const basekit::CLocker lock(m_lock);
            m_uiQueue.clear();
            m_pendingProgress.reset();
        }
        m_onProgress = std::move(onProgress);
        m_job = [this, serial, work = std::move(work), onEnd = std::move(onEnd)]() mutable {
            CJobContext ctx(
                m_receiver, m_stopEvent, [this, serial](std::function<void()> f) { PostToUi(serial, std::move(f)); },
                [this, serial](JOB_PROGRESS p) { PostProgress(serial, std::move(p)); });
            auto result = std::make_shared<JOB_RESULT<T>>();
            try {
                if constexpr (std::is_void_v<T>) work(ctx);
                else result->value.emplace(work(ctx));
                result->outcome = ctx.IsStopping() ? JobOutcome::Stopped : JobOutcome::Done;
            } catch (...) {
                // Whatever the job threw ends it as failed with a box: a job that died silently
                // would leave its window busy for ever.
                result->outcome = ctx.IsStopping() ? JobOutcome::Stopped : JobOutcome::Failed;
                result->error.Capture();   // the library's own keep their type for the box
            }
            PostToUi(serial, [this, result, onEnd]() mutable {
                EndJob(result->outcome == JobOutcome::Failed ? &result->error : nullptr);
                onEnd(*result);
                UpdateControls();
            });
        };
        SetBusy(true);
        StartWorker();
        UpdateControls();
    }

    // OK or Apply of a page whose write runs as a job: the sheet waits for the job's end and goes
    // on only when it succeeded (onApplied runs first, the page taking the written values as its
    // own); a failure leaves the sheet open on the page with what the user entered.
    template <typename Work, typename OnApplied>
    void ApplyAsJob(Work work, OnApplied onApplied) {
        static_assert(std::is_base_of_v<uikit::CResizablePropertyPage, Base>, "only a sheet's page applies");
        this->ApplyLater();
        RunJob(std::move(work), [this, onApplied = std::move(onApplied)](const auto& r) mutable {
            if (r.Ok()) onApplied();
            this->ApplyEnded(r.Ok());
        });
    }

    // OK of a dialog whose write runs as a job: the dialog ends with OK once the write succeeded;
    // a failure leaves it open with what the user entered.
    template <typename Work>
    void AcceptAsJob(Work work) {
        RunJob(std::move(work), [this](const auto& r) {
            if (r.Ok()) Base::accept();
        });
    }

    // Asks the running job to finish; its end arrives as JobOutcome::Stopped. Never blocks.
    void CancelJob() { m_stopEvent.Set(); }
    bool IsBusy() const { return m_busy; }

    // Every control's enabled state, decided in one place from the window's state; the frame
    // calls it after a job starts or ends and after a receiver notice.
    virtual void UpdateControls() {}

    // The form being retired: receiver work done on this thread, which waits for every reply.
    // New work runs as a job (RunJob); the windows still calling this move over one by one. A
    // failure is shown in an error box with the exception's text and gives false.
    template <typename Work>
    bool WithReceiver(Work&& work) {
        try {
            const uikit::CBusyCursor busy;
            devio::CVokReceiverMate mate(m_receiver);
            work(mate);
            return true;
        } catch (...) {
            uikit::CMessageBoxService::ReportCurrentError(this);
            return false;
        }
    }

    bool OnInitDialog() override {
        Base::OnInitDialog();
        this->update();
        if (!m_receiver && !NeedsReceiver()) {
            SetBusy(false);
            return true;
        }
        try {
            m_notice7 = devio::INotice::CreateInstance(this->GetSafeHwnd(), WM_FENK_RECEIVER_EVENT7, devio::kEventStateChanged);
            m_notice8 = devio::INotice::CreateInstance(this->GetSafeHwnd(), WM_FENK_RECEIVER_EVENT8, devio::kEventPending);
            if (!m_receiver)
                throw basekit::CWinException("FenkBaseWnd", __LINE__, L"devio::IReceiver", basekit::kErrorInternal);
            m_receiver->Subscribe(m_notice7, devio::kEventStateChanged);
            m_receiver->Subscribe(m_notice8, devio::kEventPending);
        } catch (const basekit::CStdException& e) {
            uikit::CMessageBoxService::ReportError(this, e);
            EndWindow(3);
        }
        SetBusy(false);
        return true;
    }

    const basekit::CSmartPtr<devio::IReceiver>& GetReceiver() const { return m_receiver; }
    // The controller's own tools work on its hardware, not on a receiver: made without one,
    // they subscribe nothing and their jobs reach the hardware themselves.
    virtual bool NeedsReceiver() const { return true; }
    bool IsWorkerRunning() const { return m_worker.IsRunning(); }

protected:
    std::intptr_t OnWindowMessage(unsigned message, std::uintptr_t wParam, std::intptr_t lParam) override {
        if (message == WM_FENK_RECEIVER_EVENT7) {
            try {
                OnReceiverNotice(wParam, lParam);
            } catch (const basekit::CStdException&) {
                OnReceiverError(wParam, lParam);
            }
            ShowLinkState();
            UpdateControls();
            return 0;
        }
        if (message == WM_FENK_NOTIFY && wParam == kFenkJobNotice) {
            RunDelivered();
            return 0;
        }
        if (message == WM_FENK_RECEIVER_EVENT8) {
            if (m_receiver) m_receiver->DeliverEvents(0, 0);
            return 0;
        }
        return Base::OnWindowMessage(message, wParam, lParam);
    }

    // The worker is stopped before the notices go, and both before the base's own clean-up.
    void OnDestroy() override {
        StopWorker();
        if (m_receiver) {
            if (m_notice7) m_receiver->Unsubscribe(m_notice7);
            if (m_notice8) m_receiver->Unsubscribe(m_notice8);
        }
        Base::OnDestroy();
    }

    bool IsReceiverReady() const { return m_receiver && m_receiver->IsReady(); }

    // Greyed values alone do not tell a surveyor why: the window's title says the link is lost
    // until the receiver is ready again.
    void ShowLinkState() {
        QWidget* top = this->window();
        const QVariant plain = top->property("fenkPlainTitle");
        if (IsReceiverReady()) {
            if (plain.isValid()) top->setWindowTitle(plain.toString());
            top->setProperty("fenkPlainTitle", QVariant());
            return;
        }
        if (plain.isValid()) return;
        top->setProperty("fenkPlainTitle", top->windowTitle());
        top->setWindowTitle(
            basekit::ustring::Format(LoadResString(IDS_TITLE_LINK_LOST).c_str(), basekit::ustring::FromQString(top->windowTitle()))
                .ToQString());
    }

    // Readings that failed, counted on the top-level window ("fenkFailed") so that a host's
    // headless tour can tell a window that showed errors from one that worked.
    void MarkFailed() {
        QWidget* top = this->window();
        top->setProperty("fenkFailed", top->property("fenkFailed").toInt() + 1);
    }
    void ClearFailed() { this->window()->setProperty("fenkFailed", 0); }

    // A dialog or sheet ends itself; a page ends the sheet it is on.
    void EndWindow(int result) {
        if constexpr (std::is_base_of_v<uikit::CResizablePropertyPage, Base>) {
            if (this->GetSheet()) this->GetSheet()->EndDialog(result);
        } else {
            this->EndDialog(result);
        }
    }

    basekit::CCriticalSection m_lock;   // declared first: the job members below are guarded by it
    basekit::CSmartPtr<devio::IReceiver> m_receiver;
    basekit::CEvent m_stopEvent{basekit::CEvent::Mode::Manual};
    basekit::CThread m_worker;
    basekit::CStdException::CExInfo m_error;
    basekit::CSmartPtr<devio::INotice> m_notice7;
    basekit::CSmartPtr<devio::INotice> m_notice8;

private:
    using Delivery = std::pair<unsigned, std::function<void()>>;

    // Working in the background, not frozen: the arrow with the busy sign, over this window only,
    // so the rest of the program stays as usable as the window itself.
    void SetBusy(bool busy) {
        m_busy = busy;
        if (busy) this->setCursor(Qt::BusyCursor);
        else this->unsetCursor();
        PublishFenkIdle(this, busy);
    }

    // Worker side: results wait under the lock; one posted message carries any number of them.
    void PostToUi(unsigned serial, std::function<void()> f) {
        const basekit::CLocker lock(m_lock);
        m_uiQueue.emplace_back(serial, std::move(f));
        NoticeLocked();
    }
    void PostProgress(unsigned serial, JOB_PROGRESS p) {
        const basekit::CLocker lock(m_lock);
        m_pendingProgress.emplace(serial, std::move(p));
        NoticeLocked();
    }
    void NoticeLocked() {
        if (m_noticePosted) return;
        m_noticePosted = true;
        basekit::PostWindowMessage(this->GetSafeHwnd(), WM_FENK_NOTIFY, kFenkJobNotice, 0);
    }

    // User-interface side: what a replaced job delivered late is dropped by its serial.
    void RunDelivered() {
        std::vector<Delivery> queue;
        std::optional<std::pair<unsigned, JOB_PROGRESS>> progress;
        {
            const basekit::CLocker lock(m_lock);
            queue.swap(m_uiQueue);
            progress.swap(m_pendingProgress);
            m_noticePosted = false;
        }
        if (progress && progress->first == m_jobSerial && m_onProgress) Guarded(m_onProgress, progress->second);
        for (auto& [serial, f] : queue)
            if (serial == m_jobSerial) Guarded(f);
    }

    // A delivery that throws is shown and does not keep the ones behind it (a job's end among
    // them) from running.
    template <typename F, typename... Args>
    void Guarded(F& f, const Args&... args) {
        try {
            f(args...);
        } catch (...) {
            uikit::CMessageBoxService::ReportCurrentError(this);
        }
    }

    void EndJob(const basekit::CStdException::CExInfo* failure) {
        StopWorker();   // the worker has delivered its end and is returning
        SetBusy(false);
        UpdateControls();
        if (!failure) return;
        MarkFailed();
        try {
            failure->Rethrow();
        } catch (...) {
            uikit::CMessageBoxService::ReportCurrentError(this);
        }
    }

    std::function<void()> m_job;                 // set on this thread before the worker starts
    std::function<void(const JOB_PROGRESS&)> m_onProgress;
    unsigned m_jobSerial = 0;
    bool m_busy = false;
    std::vector<Delivery> m_uiQueue;             // under m_lock
    std::optional<std::pair<unsigned, JOB_PROGRESS>> m_pendingProgress;   // under m_lock
    bool m_noticePosted = false;                 // under m_lock
};
