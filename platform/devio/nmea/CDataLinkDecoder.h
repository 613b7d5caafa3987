#pragma once
#include <cstdint>
#include <string_view>
#include <vector>

#include "platform/devio/DataLinkRecord.h"
#include "platform/devio/nmea/IDataLinkSink.h"

namespace devio {

// Decodes the payload of the receiver's "DL" message (docs/wire-protocol.md):
// "<count>;<link>;<link>..." with "<port>,<format>,<station>,<age>,<received>,<errors>,<rate>".
// A payload is all or nothing: one bad link drops the whole message.
class CDataLinkDecoder {
public:
    static constexpr std::size_t kMaxLinks = 64;

    explicit CDataLinkDecoder(IDataLinkSink& sink);

    // False (and counted) when the payload is malformed; nothing is emitted then.
    bool Decode(std::string_view payload);

    std::uint64_t Decoded() const { return m_decoded; }
    std::uint64_t Malformed() const { return m_malformed; }

    // The parse alone, for callers that want the list rather than a sink.
    static bool Parse(std::string_view payload, std::vector<DATALINK_RECORD>& links);

private:
    IDataLinkSink& m_sink;
    std::vector<DATALINK_RECORD> m_links;  // reused between messages
    std::uint64_t m_decoded = 0;
    std::uint64_t m_malformed = 0;
};

}  // namespace devio
