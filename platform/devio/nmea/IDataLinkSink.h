#pragma once
#include "platform/devio/DataLinkRecord.h"

namespace devio {

// Receives the links of each "DL" message, one call per link, in payload order.
class IDataLinkSink {
public:
    virtual ~IDataLinkSink() = default;
    virtual void OnDataLink(const DATALINK_RECORD& /*link*/) {}
};

}  // namespace devio
