#pragma once
#include <cstdint>
#include <string_view>

namespace devio {

// One frame as the lexer found it; the views point into the lexer's buffer and are valid only
// during the callback.
struct FRAME_VIEW {
    char kind = 0;                        // 'R' reply, 'M' message, 'E' event, 'C' cut mark
    std::string_view id;
    std::int32_t status = 0;
    std::string_view payload;
};

// Receives the units CStreamLexer cuts out of the byte stream. Views are valid only during
// the call; a sink that needs the bytes later copies them.
class ILexerSink {
public:
    virtual ~ILexerSink() = default;
    // An NMEA sentence from '$' or '!' up to, not including, its line end.
    virtual void OnSentence(std::string_view /*sentence*/) {}
    // A frame whose trailer and Fletcher-16 check matched.
    virtual void OnFrame(const FRAME_VIEW& /*frame*/) {}
};

}  // namespace devio
