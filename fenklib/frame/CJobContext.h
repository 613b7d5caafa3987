#pragma once
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

#include "fenklib/receiver/CVokReceiverMate.h"
#include "platform/basekit/CEvent.h"
#include "platform/basekit/CStdException.h"

// How far a job has come; total 0 while unknown.
struct JOB_PROGRESS {
    std::uint64_t done = 0;
    std::uint64_t total = 0;
    basekit::ustring step;        // what is being done now, for the progress text
    double bytesPerSecond = 0;    // a transfer's mean rate so far; 0 for other jobs
};

enum class JobOutcome { Done, Stopped, Failed };

// What a job's end hands to the window: how it ended, its value when it ran to the end, and the
// error when it failed (the frame has shown it already).
template <typename T>
struct JOB_RESULT {
    JobOutcome outcome = JobOutcome::Done;
    std::optional<T> value;
    basekit::CStdException::CExInfo error;
    bool Ok() const { return outcome == JobOutcome::Done; }
};
template <>
struct JOB_RESULT<void> {
    JobOutcome outcome = JobOutcome::Done;
    basekit::CStdException::CExInfo error;
    bool Ok() const { return outcome == JobOutcome::Done; }
};

// What a window's receiver job gets on the worker thread: a command-layer object bound to the
// window's stop event (closing the window aborts the command in flight at once), the stop
// test, a progress reporter, and a way to hand results to the window's user-interface thread.
class CJobContext {
public:
    using UiPost = std::function<void(std::function<void()>)>;
    using ProgressPost = std::function<void(JOB_PROGRESS)>;

    CJobContext(basekit::CSmartPtr<devio::IReceiver> receiver, basekit::CEvent& stop, UiPost toUi, ProgressPost progress)
        : m_receiver(std::move(receiver)), m_stop(stop), m_toUi(std::move(toUi)), m_progress(std::move(progress)) {}

    // Made on first use, so that a job can turn "no command channel" into a result of its own.
    devio::CVokReceiverMate& Mate() {
        if (!m_mate) m_mate = std::make_unique<devio::CVokReceiverMate>(m_receiver, &m_stop);
        return *m_mate;
    }
    bool IsStopping() const { return m_stop.IsSet(); }
    // For work that waits on other events as well (a file transfer): set when the job must end.
    const basekit::CEvent& StopEvent() const { return m_stop; }
    const basekit::CSmartPtr<devio::IReceiver>& Receiver() const { return m_receiver; }
    // Only the latest report reaches the window; reports cost nothing when nobody shows them.
    void Progress(std::uint64_t done, std::uint64_t total, basekit::ustring step = {}) const {
        m_progress(JOB_PROGRESS{done, total, std::move(step)});
    }
    void Progress(JOB_PROGRESS progress) const { m_progress(std::move(progress)); }
    // onUi(value) runs on the user-interface thread, after everything handed over before it.
    template <typename T, typename F>
    void Deliver(T value, F onUi) const {
        m_toUi([value = std::move(value), onUi = std::move(onUi)]() mutable { onUi(std::move(value)); });
    }
    void Deliver(std::function<void()> onUi) const { m_toUi(std::move(onUi)); }

private:
    basekit::CSmartPtr<devio::IReceiver> m_receiver;
    basekit::CEvent& m_stop;
    UiPost m_toUi;
    ProgressPost m_progress;
    std::unique_ptr<devio::CVokReceiverMate> m_mate;
};
