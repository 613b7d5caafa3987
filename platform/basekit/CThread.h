#pragma once
#include <functional>
#include <memory>
#include <thread>

#include "platform/basekit/CEvent.h"

namespace basekit {

// A joinable worker with an exit code and a bounded wait; the destructor joins.
class CThread {
public:
    CThread() = default;
    ~CThread() { Close(); }
    CThread(const CThread&) = delete;
    CThread& operator=(const CThread&) = delete;

    // Starts body on a new thread; a thread still held is joined first.
    void Start(std::function<unsigned()> body);
    bool IsStarted() const { return m_thread.joinable(); }
    bool IsRunning() const { return m_thread.joinable() && !m_done->IsSet(); }
    // True when the thread has ended within the time-out.
    bool Wait(unsigned timeoutMs) const;
    // Joins the thread, without limit.
    void Close();
    unsigned ExitCode() const { return m_exitCode; }

private:
    std::thread m_thread;
    std::unique_ptr<CEvent> m_done = std::make_unique<CEvent>(CEvent::Mode::Manual);
    unsigned m_exitCode = 0;
};

}  // namespace basekit
