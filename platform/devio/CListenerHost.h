#pragma once
#include <mutex>
#include <vector>

#include "platform/devio/IListener.h"

namespace devio {

// What the reader thread hands on; a listener takes the kinds it collects.
class ILiveRecordSink {
public:
    virtual void Offer(const POSITION_RECORD&) {}
    virtual void Offer(const SATLIST_RECORD&) {}
    virtual void Offer(const DATALINK_RECORD&) {}
    virtual void Offer(const DATETIME_RECORD&) {}

protected:
    ~ILiveRecordSink() = default;
};

// Fans the receiver's live records out to the listeners added to it.
class CListenerHost final : public basekit::CRefCounted<IListenerHost>, public ILiveRecordSink {
public:
    void AddListener(const CSmartPtr<IListener>& listener) override;
    void RemoveListener(const CSmartPtr<IListener>& listener) override;
    size_t Count() const;

    void Offer(const POSITION_RECORD& r) override { Publish(r); }
    void Offer(const SATLIST_RECORD& r) override { Publish(r); }
    void Offer(const DATALINK_RECORD& r) override { Publish(r); }
    void Offer(const DATETIME_RECORD& r) override { Publish(r); }

private:
    template <typename Record>
    void Publish(const Record& record) {
        const std::lock_guard lock(m_mutex);
        for (const auto& entry : m_listeners) entry.sink->Offer(record);
    }
    struct Entry {
        CSmartPtr<IListener> listener;
        ILiveRecordSink* sink;
    };
    mutable std::mutex m_mutex;
    std::vector<Entry> m_listeners;
};

}  // namespace devio
