#pragma once
#include "platform/devio/lexer/ILexerSink.h"
#include "platform/devio/nmea/IDataLinkSink.h"
#include "platform/devio/nmea/INmeaSink.h"

namespace devio {

// Everything CLiveDataDecoder delivers: NMEA records, data-link states, and the frames it
// does not decode itself (replies, events, other messages).
class ILiveDataSink : public INmeaSink, public IDataLinkSink {
public:
    virtual void OnOtherFrame(const FRAME_VIEW& /*frame*/) {}
};

}  // namespace devio
