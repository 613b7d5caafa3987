#pragma once
#include <cstdint>

namespace devio {

// Every sentence handed to CNmeaDecoder lands in exactly one of the first six counters.
struct NMEA_COUNTERS {
    std::uint64_t decoded = 0;            // a table type that parsed
    std::uint64_t ignored = 0;            // a good sentence of a type the table lacks
    std::uint64_t badChecksum = 0;        // "*hh" present, does not match
    std::uint64_t noChecksum = 0;         // no "*hh" at all
    std::uint64_t malformed = 0;          // a table type with a field that does not parse
    std::uint64_t notSentence = 0;        // does not start with '$' or '!', or is empty
    std::uint64_t brokenGroups = 0;       // GSV groups abandoned with parts missing
};

}  // namespace devio
