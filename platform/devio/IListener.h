#pragma once
#include "platform/devio/DataLinkRecord.h"
#include "platform/devio/DateTimeRecord.h"
#include "platform/devio/INotice.h"
#include "platform/devio/PositionRecord.h"
#include "platform/devio/SatelliteRecord.h"

namespace devio {

// A listener collects one kind of live record from the receiver and signals its notice when
// new ones are waiting; the window fetches them on its own thread.
struct IListener : basekit::IRefCounted {
    // flag 1: signal on every arrival, so a window that takes one record per notice keeps up.
    virtual void AttachNotice(const CSmartPtr<INotice>& notice, unsigned flag) = 0;

protected:
    ~IListener() = default;
};

struct IPositionListener : IListener {
    static CSmartPtr<IPositionListener> CreateInstance(unsigned mode);
    virtual bool Fetch(POSITION_RECORD& record, unsigned reserved) = 0;
};

struct ISatListListener : IListener {
    static CSmartPtr<ISatListListener> CreateInstance(unsigned mode);
    virtual bool Fetch(SATLIST_RECORD& record) = 0;
};

struct IDataLinkListener : IListener {
    static CSmartPtr<IDataLinkListener> CreateInstance(unsigned mode);
    virtual bool Fetch(DATALINK_RECORD& record, unsigned reserved) = 0;
};

struct IDateTimeListener : IListener {
    static CSmartPtr<IDateTimeListener> CreateInstance(unsigned mode);
    virtual bool Fetch(DATETIME_RECORD& record, unsigned reserved) = 0;
};

// Feeds added listeners with what the receiver outputs.
struct IListenerHost : basekit::IRefCounted {
    virtual void AddListener(const CSmartPtr<IListener>& listener) = 0;
    virtual void RemoveListener(const CSmartPtr<IListener>& listener) = 0;

protected:
    ~IListenerHost() = default;
};

}  // namespace devio
