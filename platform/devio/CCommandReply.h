#pragma once
#include <atomic>
#include <cstdint>
#include <mutex>
#include <string>

#include "platform/basekit/CSmartPtr.h"
#include "platform/basekit/ustring.h"

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
        m_result = std::move(result);
        m_done.store(true, std::memory_order_release);
    }
    bool IsDone() const { return m_done.load(std::memory_order_acquire); }
    Result Take() {
        const std::lock_guard lock(m_mutex);
        return std::move(m_result);
    }

private:
    mutable std::mutex m_mutex;
    std::atomic<bool> m_done{false};
    Result m_result;
};

}  // namespace devio
