#include "platform/devio/lexer/CStreamLexer.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstring>

#include "platform/devio/lexer/Fletcher16.h"

namespace devio {

namespace {

constexpr std::size_t kTrailerSize = 7;  // "*hhhh\r\n"
// A buffer grown by a big frame is given back once the frame is gone.
constexpr std::size_t kKeepCapacity = 1 << 20;

enum ByteClass : unsigned char { kPlain = 0, kLineFeed, kCarriageReturn, kUnitStart };

constexpr std::array<unsigned char, 256> MakeByteClasses()
{
    std::array<unsigned char, 256> classes{};
    classes['\n'] = kLineFeed;
    classes['\r'] = kCarriageReturn;
    classes['$'] = kUnitStart;
    classes['!'] = kUnitStart;
    classes['@'] = kUnitStart;
    return classes;
}

constexpr std::array<unsigned char, 256> kByteClass = MakeByteClasses();

unsigned char ClassOf(char c) { return kByteClass[static_cast<unsigned char>(c)]; }

int UpperHexValue(char c)
{
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'A' && c <= 'F')
        return c - 'A' + 10;
    return -1;
}

// "*hhhh\r\n" with upper-case digits; returns the check or -1.
int ParseTrailer(const char* t)
{
    if (t[0] != '*' || t[5] != '\r' || t[6] != '\n')
        return -1;
    int check = 0;
    for (int i = 1; i <= 4; ++i) {
        const int digit = UpperHexValue(t[i]);
        if (digit < 0)
            return -1;
        check = check * 16 + digit;
    }
    return check;
}

}  // namespace

CStreamLexer::CStreamLexer(ILexerSink& sink) : m_sink(sink) {}

void CStreamLexer::Feed(const char* data, std::size_t size)
{
    if (size == 0)
        return;
    if (m_buffer.empty()) {
        KeepTail(data, size, Scan(data, size));
        return;
    }
    ReserveForFrame();
    m_buffer.append(data, size);
    Forget(Scan(m_buffer.data(), m_buffer.size()));
}

void CStreamLexer::Finish()
{
    // Every round drops one unit and moves m_unit forward, so this ends.
    while (m_state != State::Idle && m_state != State::Comment) {
        if (m_state == State::FrameHeader || m_state == State::FrameBody)
            DropFrame();
        else
            DropSentence();
        Forget(Scan(m_buffer.data(), m_buffer.size()));
    }
    Forget(m_buffer.size());
    m_state = State::Idle;
    m_atLineStart = true;
}

std::size_t CStreamLexer::Scan(const char* base, std::size_t size)
{
    while (m_pos < size) {
        switch (m_state) {
        case State::Idle: ScanIdle(base, size); break;
        case State::Comment: ScanComment(base, size); break;
        case State::Sentence: ScanSentence(base, size); break;
        case State::SentenceLineEnd: ScanSentenceLineEnd(base, size); break;
        case State::FrameHeader: ScanFrameHeader(base, size); break;
        case State::FrameBody: ScanFrameBody(base, size); break;
        }
    }
    // A comment holds nothing worth keeping, so it never pins the buffer.
    return m_state == State::Idle || m_state == State::Comment ? size : m_unit;
}

void CStreamLexer::ScanIdle(const char* base, std::size_t size)
{
    for (std::size_t i = m_pos; i < size; ++i) {
        const unsigned char cls = ClassOf(base[i]);
        if (cls == kUnitStart) {
            StartUnit(base[i], i);
            return;
        }
        if (cls == kLineFeed) {
            m_atLineStart = true;
            continue;
        }
        // Blank lines between sentences are line ends, not noise worth reporting.
        if (cls == kCarriageReturn)
            continue;
        ++m_counters.garbageBytes;
        if (base[i] == '#' && m_atLineStart && m_commentLines) {
            m_state = State::Comment;
            m_pos = i + 1;
            return;
        }
        m_atLineStart = false;
    }
    m_pos = size;
}

void CStreamLexer::ScanComment(const char* base, std::size_t size)
{
    const void* lineFeed = std::memchr(base + m_pos, '\n', size - m_pos);
    const std::size_t end = lineFeed == nullptr ? size : static_cast<const char*>(lineFeed) - base;
    m_counters.garbageBytes += end - m_pos;
    m_pos = end;
    if (lineFeed != nullptr)
        m_state = State::Idle;  // the line feed itself is seen in Idle and starts a new line
}

void CStreamLexer::StartUnit(char c, std::size_t at)
{
    m_atLineStart = false;
    m_unit = at;
    m_pos = at + 1;
    m_state = c == '@' ? State::FrameHeader : State::Sentence;
}

void CStreamLexer::ScanSentence(const char* base, std::size_t size)
{
    const std::size_t limit = m_unit + kMaxSentence;  // first index past the longest body
    for (std::size_t i = m_pos; i < size; ++i) {
        const unsigned char cls = ClassOf(base[i]);
        // The address letter is in by then: the longer limit is only looked up past the short one.
        if (cls == kPlain && (i < limit || (i < m_unit + kMaxProprietarySentence && base[m_unit + 1] == 'P')))
            continue;
        if (cls == kLineFeed) {
            EmitSentence(base, i);
            m_pos = i + 1;
            return;
        }
        if (cls == kCarriageReturn) {
            m_bodyEnd = i;
            m_state = State::SentenceLineEnd;
            m_pos = i + 1;
            return;
        }
        // "$$GPGGA,...": a doubled start is one sentence, not a dropped one and a new one.
        if (base[i] == '$' && i == m_unit + 1 && base[m_unit] == '$') {
            m_unit = i;
            m_pos = i + 1;
            return;  // the length limit counts from the new start
        }
        // Another unit starts inside this one (a receiver injecting a sentence into a
        // sentence), or no line end came within the limit.
        DropSentence();
        return;
    }
    m_pos = size;
}

void CStreamLexer::ScanSentenceLineEnd(const char* base, std::size_t size)
{
    for (std::size_t i = m_pos; i < size; ++i) {
        if (base[i] == '\n') {
            EmitSentence(base, m_bodyEnd);
            m_pos = i + 1;
            return;
        }
        if (base[i] != '\r' || i - m_bodyEnd >= kMaxLineEndCr) {
            DropSentence();
            return;
        }
    }
    m_pos = size;
}

void CStreamLexer::EmitSentence(const char* base, std::size_t end)
{
    m_state = State::Idle;
    m_atLineStart = true;
    ++m_counters.sentences;
    m_sink.OnSentence(std::string_view(base + m_unit, end - m_unit));
}

void CStreamLexer::DropSentence()
{
    ++m_counters.droppedSentences;
    m_state = State::Idle;
    m_pos = m_unit + 1;
}

void CStreamLexer::ScanFrameHeader(const char* base, std::size_t size)
{
    const std::size_t limit = m_unit + kMaxFrameHeader;  // first index past the longest header
    for (std::size_t i = m_pos; i < size; ++i) {
        const char c = base[i];
        if (c == ':') {
            const std::string_view text(base + m_unit + 1, i - m_unit - 1);
            if (!ParseFrameHeader(text, m_header)) {
                DropFrame();
                return;
            }
            m_headerSize = i + 1 - m_unit;
            m_state = State::FrameBody;
            m_bodyCancelled = m_header.kind == 'R' &&
                std::find(m_cancelled.begin(), m_cancelled.end(), m_header.id) != m_cancelled.end();
            if (m_bodyCancelled)
                m_cutMark = EncodeFrame('C', m_header.id, 0, {});
            m_pos = i + 1;
            return;
        }
        if (!IsFrameHeaderByte(c) || i + 1 >= limit) {
            DropFrame();
            return;
        }
    }
    m_pos = size;
}

void CStreamLexer::ScanFrameBody(const char* base, std::size_t size)
{
    if (m_bodyCancelled && SkipCancelledBody(base, size))
        return;
    const std::size_t total = m_headerSize + m_header.length + kTrailerSize;
    if (size - m_unit < total) {
        m_pos = size;
        return;
    }
    const char* frame = base + m_unit;
    const std::string_view payload(frame + m_headerSize, m_header.length);
    const int check = ParseTrailer(frame + m_headerSize + m_header.length);
    if (check < 0 || check != Fletcher16(payload)) {
        DropFrame();
        return;
    }
    m_state = State::Idle;
    m_atLineStart = true;
    m_pos = m_unit + total;
    // The id sits right after the kind letter; the header's own view may point into a buffer
    // that has moved since.
    const std::string_view id(frame + 2, m_header.id.size());
    if (m_bodyCancelled) {
        // A receiver that does not know the abort sent all of it: skipped all the same.
        m_bodyCancelled = false;
        ++m_counters.cancelledReplies;
        ForgetCancelled(id);
        return;
    }
    ++m_counters.frames;
    if (m_header.kind == 'C')
        ForgetCancelled(id);
    m_sink.OnFrame(FRAME_VIEW{m_header.kind, id, m_header.status, payload});
}

bool CStreamLexer::SkipCancelledBody(const char* base, std::size_t size)
{
    // The receiver cuts the reply anywhere in its payload and sends the mark; the mark may
    // itself arrive split, so the search starts far enough back to see it whole.
    const std::size_t bodyStart = m_unit + m_headerSize;
    const std::size_t frameEnd = bodyStart + m_header.length + kTrailerSize;
    const std::size_t end = std::min(size, frameEnd);
    const std::size_t back = m_cutMark.size() - 1;
    const std::size_t from = std::max(bodyStart, m_pos > back ? m_pos - back : 0);
    const std::string_view window(base + from, end > from ? end - from : 0);
    const std::size_t at = window.find(m_cutMark);
    if (at == std::string_view::npos)
        return false;   // not cut (yet): wait for more, or for the declared end
    m_bodyCancelled = false;
    ++m_counters.cancelledReplies;
    ForgetCancelled(std::string_view(base + m_unit + 2, m_header.id.size()));
    m_state = State::Idle;
    m_atLineStart = true;
    m_pos = from + at + m_cutMark.size();
    return true;
}

void CStreamLexer::CancelReply(std::string_view tag)
{
    if (std::find(m_cancelled.begin(), m_cancelled.end(), tag) == m_cancelled.end()) {
        if (m_cancelled.size() >= kMaxCancelled)
            m_cancelled.erase(m_cancelled.begin());
        m_cancelled.emplace_back(tag);
    }
    if (m_state == State::FrameBody && m_header.kind == 'R' && TagInProgress() == tag && !m_bodyCancelled) {
        m_bodyCancelled = true;
        m_cutMark = EncodeFrame('C', tag, 0, {});
        m_pos = m_unit + m_headerSize;   // the mark may already be in the buffer
        Forget(Scan(m_buffer.data(), m_buffer.size()));
    }
}

bool CStreamLexer::AbandonReply(std::string_view tag)
{
    ForgetCancelled(tag);
    const bool inProgress = (m_state == State::FrameBody && m_header.kind == 'R' && TagInProgress() == tag);
    if (!inProgress)
        return false;
    ++m_counters.abandonedFrames;
    m_bodyCancelled = false;
    DropFrame();
    Forget(Scan(m_buffer.data(), m_buffer.size()));
    return true;
}

bool CStreamLexer::ReplyInProgress(REPLY_PROGRESS& progress) const
{
    if (m_state != State::FrameBody || m_header.kind != 'R')
        return false;
    const std::size_t have = m_buffer.size() - m_unit - m_headerSize;
    progress = REPLY_PROGRESS{TagInProgress(), std::min(have, m_header.length), m_header.length};
    return true;
}

std::string_view CStreamLexer::TagInProgress() const
{
    // Between calls to Feed an unfinished frame always sits in the buffer from its '@'.
    if (m_buffer.size() < m_unit + 2 + m_header.id.size())
        return {};
    return std::string_view(m_buffer).substr(m_unit + 2, m_header.id.size());
}

void CStreamLexer::ForgetCancelled(std::string_view tag)
{
    const auto it = std::find(m_cancelled.begin(), m_cancelled.end(), tag);
    if (it != m_cancelled.end())
        m_cancelled.erase(it);
}

void CStreamLexer::DropFrame()
{
    m_bodyCancelled = false;
    ++m_counters.droppedFrames;
    m_state = State::Idle;
    m_pos = m_unit + 1;
}

void CStreamLexer::ReserveForFrame()
{
    if (m_state == State::FrameBody)
        m_buffer.reserve(m_unit + m_headerSize + m_header.length + kTrailerSize);
}

void CStreamLexer::KeepTail(const char* base, std::size_t size, std::size_t keep)
{
    m_pos -= keep;
    if (keep == size)
        return;
    m_unit -= keep;
    m_bodyEnd -= keep;
    ReserveForFrame();
    m_buffer.assign(base + keep, size - keep);
}

void CStreamLexer::Forget(std::size_t keep)
{
    m_pos -= keep;
    if (keep == m_buffer.size()) {
        m_buffer.clear();
        if (m_buffer.capacity() > kKeepCapacity)
            std::string().swap(m_buffer);
        return;
    }
    m_unit -= keep;
    m_bodyEnd -= keep;
    m_buffer.erase(0, keep);
}

std::string CStreamLexer::EncodeFrame(char kind, std::string_view id, std::int32_t status,
                                      std::string_view payload)
{
    std::array<char, 32> number{};
    std::string frame;
    frame.reserve(kMaxFrameHeader + payload.size() + kTrailerSize);
    frame += '@';
    frame += kind;
    frame += id;
    frame += ',';
    frame.append(number.data(), std::to_chars(number.begin(), number.end(), status).ptr);
    frame += ',';
    frame.append(number.data(), std::to_chars(number.begin(), number.end(), payload.size()).ptr);
    frame += ':';
    frame += payload;
    static constexpr char kHex[] = "0123456789ABCDEF";
    const std::uint16_t check = Fletcher16(payload);
    frame += '*';
    for (int shift = 12; shift >= 0; shift -= 4)
        frame += kHex[(check >> shift) & 0xF];
    frame += "\r\n";
    return frame;
}

}  // namespace devio
