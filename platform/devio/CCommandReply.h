#pragma once
#include <atomic>
#include <cstdint>
#include <mutex>
#include <string>

#include "platform/basekit/CSmartPtr.h"
#include "platform/basekit/ustring.h"
#include "platform/devio/INotice.h"

namespace devio {

// The reply buffer of one command, filled by the reader thread before the completion notice.
class CCommandReply : public basekit::CRefCounted<basekit::IRefCounted> {
public:
    struct Result {
        int status = 0;             // 0 or more: answered; negative: the receiver's error reply
        unsigned linkError = 0;     // non-zero: no answer (link lost, not written); a system code
        std::string payload;        // the reply bytes as received
        basekit::ustring text;      // the reply as text (UTF-8, or Latin-1 for binary replies)
    };

    void Complete(Result result) {
        const std::lock_guard lock(m_mutex);
        if (result.linkError == 0) m_received.store(result.payload.size(), std::memory_order_relaxed);
        m_result = std::move(result);
        m_done.store(true, std::memory_order_release);
    }
    bool IsDone() const { return m_done.load(std::memory_order_acquire); }
    Result Take() {
        const std::lock_guard lock(m_mutex);
        return std::move(m_result);
    }

    // Byte progress of a long reply while it streams in, readable from any thread: payload
    // bytes received so far and the length the reply's frame announced (0 until its header came).
    struct Progress {
        std::uint64_t received = 0;
        std::uint64_t expected = 0;
    };
    Progress GetProgress() const {
        return Progress{m_received.load(std::memory_order_relaxed), m_expected.load(std::memory_order_relaxed)};
    }
    // Signalled by the reader thread whenever more of the reply arrived; set before issuing.
    void SetProgressNotice(CSmartPtr<INotice> notice) {
        const std::lock_guard lock(m_mutex);
        m_progressNotice = std::move(notice);
    }
    // Called by the reader thread.
    void UpdateProgress(std::uint64_t received, std::uint64_t expected) {
        const bool sameReceived = m_received.exchange(received, std::memory_order_relaxed) == received;
        const bool sameExpected = m_expected.exchange(expected, std::memory_order_relaxed) == expected;
        if (sameReceived && sameExpected) return;
        CSmartPtr<INotice> notice;
        {
            const std::lock_guard lock(m_mutex);
            notice = m_progressNotice;
        }
        if (notice) notice->Signal();
    }

private:
    std::atomic<std::uint64_t> m_received{0};
    std::atomic<std::uint64_t> m_expected{0};
    CSmartPtr<INotice> m_progressNotice;
    mutable std::mutex m_mutex;
    std::atomic<bool> m_done{false};
    Result m_result;
};

}  // namespace devio
