#include "platform/basekit/CThread.h"

#include "platform/basekit/CCLocaleScope.h"

namespace basekit {

void CThread::Start(std::function<unsigned()> body) {
    Close();
    m_done->Reset();
    m_exitCode = 0;
    m_thread = std::thread([this, body = std::move(body)] {
        CCLocaleScope::AdoptForThisThread();   // receiver work formats and parses protocol numbers
        try {
            m_exitCode = body();
        } catch (...) {
            // A worker's job catches its own errors; one that escapes only marks the exit code.
            m_exitCode = 0xFFFFFFFFu;
        }
        m_done->Set();
    });
}

bool CThread::Wait(unsigned timeoutMs) const {
    if (!m_thread.joinable()) return true;
    return m_done->Wait(timeoutMs).kind == WaitResult::Signalled;
}

void CThread::Close() {
    if (m_thread.joinable() && m_thread.get_id() != std::this_thread::get_id()) m_thread.join();
}

}  // namespace basekit
