#pragma once
#include "fenklib/msglist/MessageList.h"
#include "fenklib/msglist/MessageRegistry.h"

namespace fenkmsg {

// The share of a port's line rate that a message list takes: bytes per output from the
// registry, outputs per second from each period, ten bits on the line per byte (start, eight
// data, stop). 1.0 is a full line. Messages without a known size or with period 0 (the port
// page's period, not known here) add nothing; unknown tells how many such there were.
struct PORT_LOAD {
    double share = 0;
    double bytesPerSecond = 0;
    int unknown = 0;
};
PORT_LOAD ComputePortLoad(const MessageList& list, const CMessageRegistry& registry, int lineRate);

}  // namespace fenkmsg
