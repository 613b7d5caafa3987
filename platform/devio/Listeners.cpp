#include "platform/devio/CListener.h"

namespace devio {

namespace {

class CPositionListener final : public CListener<IPositionListener, POSITION_RECORD> {
public:
    using CListener::CListener;
    bool Fetch(POSITION_RECORD& r, unsigned) override { return TakeNext(r); }
};

// Only the latest satellite list matters to a window, whatever the mode.
class CSatListListener final : public CListener<ISatListListener, SATLIST_RECORD> {
public:
    CSatListListener() : CListener(0) {}
    bool Fetch(SATLIST_RECORD& r) override { return TakeNext(r); }
};

class CDataLinkListener final : public CListener<IDataLinkListener, DATALINK_RECORD> {
public:
    using CListener::CListener;
    bool Fetch(DATALINK_RECORD& r, unsigned) override { return TakeNext(r); }
};

class CDateTimeListener final : public CListener<IDateTimeListener, DATETIME_RECORD> {
public:
    using CListener::CListener;
    bool Fetch(DATETIME_RECORD& r, unsigned) override { return TakeNext(r); }
};

}  // namespace

CSmartPtr<IPositionListener> IPositionListener::CreateInstance(unsigned mode) {
    return CSmartPtr<IPositionListener>(new CPositionListener(mode));
}
CSmartPtr<ISatListListener> ISatListListener::CreateInstance(unsigned) {
    return CSmartPtr<ISatListListener>(new CSatListListener());
}
CSmartPtr<IDataLinkListener> IDataLinkListener::CreateInstance(unsigned mode) {
    return CSmartPtr<IDataLinkListener>(new CDataLinkListener(mode));
}
CSmartPtr<IDateTimeListener> IDateTimeListener::CreateInstance(unsigned mode) {
    return CSmartPtr<IDateTimeListener>(new CDateTimeListener(mode));
}

}  // namespace devio
