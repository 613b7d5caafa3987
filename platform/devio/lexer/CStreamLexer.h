#pragma once
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "platform/devio/lexer/FrameHeader.h"
#include "platform/devio/lexer/ILexerSink.h"
#include "platform/devio/lexer/LexerCounters.h"

namespace devio {

// Cuts the receiver's byte stream into NMEA sentences and frames (docs/wire-protocol.md).
// Chunks may split units anywhere. Only the unit in progress is buffered; a chunk that
// holds whole units is scanned in place without copying.
class CStreamLexer {
public:
    static constexpr std::size_t kMaxSentence = 120;  // characters from '$' to the line end
    static constexpr std::size_t kMaxLineEndCr = 2;   // "\r\r\n" is the worst seen

    explicit CStreamLexer(ILexerSink& sink);

    // Capture files annotate the stream with lines starting with '#'. With this on, such a
    // line is garbage up to its line feed, even a '$' or '@' quoted in it. Receivers never
    // send these lines, so a live link leaves it off and scans every byte.
    void SetCommentLines(bool on) { m_commentLines = on; }
    CStreamLexer(const CStreamLexer&) = delete;
    CStreamLexer& operator=(const CStreamLexer&) = delete;

    // The sink is called from inside Feed; it must not feed this lexer again.
    void Feed(const char* data, std::size_t size);
    void Feed(std::string_view data) { Feed(data.data(), data.size()); }
    // End of stream: the unit in progress can never complete, so it is dropped and the bytes
    // after its start are scanned once more.
    void Finish();

    const LEXER_COUNTERS& Counters() const { return m_counters; }

    static std::string EncodeFrame(char kind, std::string_view id, std::int32_t status,
                                   std::string_view payload);

private:
    enum class State { Idle, Comment, Sentence, SentenceLineEnd, FrameHeader, FrameBody };

    std::size_t Scan(const char* base, std::size_t size);
    void ScanIdle(const char* base, std::size_t size);
    void ScanComment(const char* base, std::size_t size);
    void ScanSentence(const char* base, std::size_t size);
    void ScanSentenceLineEnd(const char* base, std::size_t size);
    void ScanFrameHeader(const char* base, std::size_t size);
    void ScanFrameBody(const char* base, std::size_t size);
    void StartUnit(char c, std::size_t at);
    void EmitSentence(const char* base, std::size_t end);
    void DropSentence();
    void DropFrame();
    void KeepTail(const char* base, std::size_t size, std::size_t keep);
    void Forget(std::size_t keep);
    void ReserveForFrame();

    ILexerSink& m_sink;
    LEXER_COUNTERS m_counters;
    std::string m_buffer;                 // the unit in progress, from its first byte
    State m_state = State::Idle;
    bool m_commentLines = false;
    bool m_atLineStart = true;            // in Idle: nothing but line ends since the last unit
    std::size_t m_pos = 0;                // next byte to look at, relative to the scanned base
    std::size_t m_unit = 0;               // first byte of the unit in progress
    std::size_t m_bodyEnd = 0;            // sentence: where its line end began
    FRAME_HEADER m_header;                // frame, in State::FrameBody; its id view is stale
    std::size_t m_headerSize = 0;         // frame: bytes from '@' through ':'
};

}  // namespace devio
