#pragma once
#include <deque>
#include <mutex>

#include "platform/devio/CListenerHost.h"

namespace devio {

// One kind of live record waiting for its window. Mode 1 queues every record (up to a bound,
// dropping the oldest); mode 0 keeps only the latest.
template <typename Interface, typename Record>
class CListener : public basekit::CRefCounted<Interface>, public ILiveRecordSink {
public:
    static constexpr size_t kMaxQueued = 4096;
    explicit CListener(unsigned mode) : m_keepAll(mode != 0) {}

    void AttachNotice(const CSmartPtr<INotice>& notice, unsigned flag) override {
        const std::lock_guard lock(m_mutex);
        m_notice = flag ? notice : CSmartPtr<INotice>();
    }

    void Offer(const Record& record) override {
        CSmartPtr<INotice> notice;
        {
            const std::lock_guard lock(m_mutex);
            if (!m_keepAll) m_queue.clear();
            if (m_queue.size() >= kMaxQueued) m_queue.pop_front();
            m_queue.push_back(record);
            // Every record is told: a window that takes one record per notice must never be left
            // with records waiting and no notice to come. A window that drains finds the later
            // notices of a burst empty, which costs nothing.
            notice = m_notice;
        }
        if (notice) notice->Signal();
    }

    bool TakeNext(Record& out) {
        const std::lock_guard lock(m_mutex);
        if (m_queue.empty()) return false;
        out = std::move(m_queue.front());
        m_queue.pop_front();
        return true;
    }

private:
    using ILiveRecordSink::Offer;
    std::mutex m_mutex;
    bool m_keepAll;
    std::deque<Record> m_queue;
    CSmartPtr<INotice> m_notice;
};

}  // namespace devio
