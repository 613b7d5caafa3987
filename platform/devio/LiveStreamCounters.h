#pragma once
#include <cstdint>

#include "platform/devio/lexer/LexerCounters.h"

namespace devio {

// What a receiver's reader has seen since the link opened.
struct LIVE_STREAM_COUNTERS {
    LEXER_COUNTERS lexer;
    std::uint64_t replies = 0;            // replies matched to a pending command
    std::uint64_t orphanReplies = 0;      // replies for a command no longer pending
    std::uint64_t events = 0;
    std::uint64_t sentencesDecoded = 0;   // NMEA sentences that gave a record or state
    std::uint64_t sentencesRejected = 0;  // bad checksum, malformed or missing checksum
    std::uint64_t sentencesIgnored = 0;   // good sentences of a type not decoded (proprietary ones)
    // lexer.sentences == sentencesDecoded + sentencesIgnored + sentencesRejected
    std::uint64_t messagesRejected = 0;   // periodic messages that did not decode
};

}  // namespace devio
