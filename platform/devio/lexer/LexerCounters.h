#pragma once
#include <cstdint>

namespace devio {

struct LEXER_COUNTERS {
    std::uint64_t sentences = 0;          // sentences handed to the sink
    std::uint64_t frames = 0;             // frames handed to the sink
    std::uint64_t garbageBytes = 0;       // bytes that started no unit (line ends excepted)
    std::uint64_t droppedFrames = 0;      // bad header, length, trailer or check; cut by end of stream
    std::uint64_t droppedSentences = 0;   // too long, cut by another unit start, no line feed
    std::uint64_t cancelledReplies = 0;   // replies of cancelled commands, cut short or whole, skipped
    std::uint64_t abandonedFrames = 0;    // frames given up because the command that owned them failed
};

}  // namespace devio
