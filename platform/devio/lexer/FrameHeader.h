#pragma once
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace devio {

// The part of a frame between '@' and ':' ("R12,0,7"), parsed.
struct FRAME_HEADER {
    char kind = 0;
    std::string_view id;
    std::int32_t status = 0;
    std::size_t length = 0;
};

inline constexpr std::size_t kMaxFramePayload = 67108864;
// '@' + kind + 16-character id + ',' + 11-character status + ',' + 8-digit length + ':'.
inline constexpr std::size_t kMaxFrameHeader = 40;

// True for the bytes a header may hold; lets the lexer give up on a false '@' at once.
constexpr bool IsFrameHeaderByte(char c)
{
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == ','
        || c == '-';
}

// Parses "<kind><id>,<status>,<length>" (without '@' and ':'). Reply and cut-mark ids are 0-9 digits,
// message ids 1-16 letters or digits, event ids 1-9 digits; the length is at most
// kMaxFramePayload.
bool ParseFrameHeader(std::string_view text, FRAME_HEADER& header);

}  // namespace devio
