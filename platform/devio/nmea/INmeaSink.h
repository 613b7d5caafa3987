#pragma once
#include "platform/devio/DateTimeRecord.h"
#include "platform/devio/PositionRecord.h"
#include "platform/devio/SatelliteRecord.h"

namespace devio {

// Receives the records CNmeaDecoder builds. Records are valid only during the call.
class INmeaSink {
public:
    virtual ~INmeaSink() = default;
    virtual void OnPosition(const POSITION_RECORD& /*position*/) {}
    virtual void OnSatList(const SATLIST_RECORD& /*satellites*/) {}
    virtual void OnDateTime(const DATETIME_RECORD& /*dateTime*/) {}
};

}  // namespace devio
