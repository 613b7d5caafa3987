#pragma once
#include <cstdint>

namespace devio {

// What the link to a receiver is doing, as its reader sees it.
enum class LinkState {
    Up,       // open; the receiver answered, or nothing was asked yet
    Silent,   // open, but a command went unanswered and nothing has arrived since it was sent
    Lost,     // closed by the peer, or a read or write failed
};

// The link's health for a status bar: rates over the last second or so, totals since it opened.
struct LINK_HEALTH {
    LinkState state = LinkState::Up;
    std::uint64_t bytesIn = 0;
    std::uint64_t bytesOut = 0;
    double bytesInPerSecond = 0;
    double bytesOutPerSecond = 0;
    double sentencesPerSecond = 0;      // NMEA sentences cut out of the stream
    std::int64_t msSinceLastByte = -1;  // -1: nothing arrived yet
    std::uint64_t droppedFrames = 0;    // frames with a bad header, length, trailer or check
    // Every sentence line is one of these three: decoded, a good one of a type not decoded
    // (proprietary), or bad (dropped by the lexer or rejected by the decoder).
    std::uint64_t decodedSentences = 0;
    std::uint64_t ignoredSentences = 0;
    std::uint64_t badSentences = 0;
    std::uint64_t cancelledReplies = 0; // replies of cancelled commands skipped
    std::uint64_t unanswered = 0;       // commands that timed out without a reply
};

}  // namespace devio
