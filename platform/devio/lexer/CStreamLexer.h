#pragma once
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

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
    // Proprietary sentences ("$P...") run longer: chipsets put whole lists in one line.
    static constexpr std::size_t kMaxProprietarySentence = 132;
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

    // The reply with this tag belongs to a cancelled command: its bytes are skipped up to the
    // receiver's cut mark ("@C<tag>,0,0:*0000") or the frame's declared end, whichever comes
    // first, and it is never handed to the sink. Applies to a reply in progress too.
    void CancelReply(std::string_view tag);
    // The command owning this reply failed (timed out): a frame of it still in progress is
    // dropped and the stream is scanned again from the byte after its '@', so a header that
    // announced more than ever came cannot swallow the replies behind it. True when dropped.
    bool AbandonReply(std::string_view tag);
    // The reply frame in progress, if any: its tag, payload bytes so far and declared length.
    struct REPLY_PROGRESS {
        std::string_view tag;
        std::size_t received = 0;
        std::size_t length = 0;
    };
    bool ReplyInProgress(REPLY_PROGRESS& progress) const;

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
    bool SkipCancelledBody(const char* base, std::size_t size);
    void ForgetCancelled(std::string_view tag);
    std::string_view TagInProgress() const;

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
    static constexpr std::size_t kMaxCancelled = 16;  // tags a cut mark may still come for
    std::vector<std::string> m_cancelled;
    bool m_bodyCancelled = false;         // the frame in progress is a cancelled reply
    std::string m_cutMark;                // its cut mark, searched for in its body
};

}  // namespace devio
