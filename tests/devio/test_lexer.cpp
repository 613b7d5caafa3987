// CStreamLexer: units, resynchronisation, chunking, big frames, the documented examples.
#include <gtest/gtest.h>

#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include "platform/devio/lexer/CStreamLexer.h"
#include "platform/devio/lexer/Fletcher16.h"
#include "devio/NmeaTestSupport.h"

namespace devio {
namespace {

using namespace std::string_literals;

// Everything the lexer emits, as text: "S <sentence>" or "F <kind><id>,<status>:<payload>".
struct Transcript : ILexerSink {
    std::vector<std::string> units;
    void OnSentence(std::string_view s) override { units.push_back("S " + std::string(s)); }
    void OnFrame(const FRAME_VIEW& f) override
    {
        units.push_back("F "s + f.kind + std::string(f.id) + "," + std::to_string(f.status) + ":" + std::string(f.payload));
    }
};

struct LEXED {
    std::vector<std::string> units;
    LEXER_COUNTERS counters;
};

LEXED Lex(const std::string& stream, std::size_t chunk = 0, bool comments = false)
{
    Transcript sink;
    CStreamLexer lexer(sink);
    lexer.SetCommentLines(comments);
    if (chunk == 0)
        chunk = stream.size();
    for (std::size_t at = 0; at < stream.size(); at += chunk)
        lexer.Feed(stream.data() + at, std::min(chunk, stream.size() - at));
    lexer.Finish();
    return {sink.units, lexer.Counters()};
}

std::string Frame(char kind, std::string_view id, int status, std::string_view payload)
{
    return CStreamLexer::EncodeFrame(kind, id, status, payload);
}

const std::string kGga = "$GPGGA,131519.00,4153.85990,N,08738.63638,W,2,12,0.95,218.1,M,-33.8,M,,0000*61";

// ---------------------------------------------------------------- Fletcher-16 and encoding

TEST(Fletcher16, KnownValues)
{
    struct ROW { const char* legend; std::string bytes; std::uint16_t check; };
    const ROW rows[] = {
        {"empty payload", "", 0x0000},
        {"published test vector", "abcde", 0xC8F0},
        {"published test vector", "abcdef", 0x2057},
        {"published test vector", "abcdefgh", 0x0627},
        {"the documented model reply", "FNK-600", 0x22A3},
        {"sums reach exactly 255 and wrap to 0", "\xFF", 0x0000},
    };
    for (const ROW& row : rows)
        EXPECT_EQ(Fletcher16(row.bytes), row.check) << row.legend;
}

TEST(Fletcher16, LongPayloadsMatchByteWiseReduction)
{
    // Blocked reduction must agree with reducing after every byte, across many blocks of
    // worst-case bytes.
    for (const std::size_t size : {4095u, 4096u, 4097u, 100000u}) {
        for (const char fill : {'\xFF', '\x80', '\x01'}) {
            const std::string bytes(size, fill);
            unsigned s1 = 0, s2 = 0;
            for (const char c : bytes) {
                s1 = (s1 + static_cast<unsigned char>(c)) % 255;
                s2 = (s2 + s1) % 255;
            }
            EXPECT_EQ(Fletcher16(bytes), (s2 << 8) | s1) << size << " bytes of " << int(static_cast<unsigned char>(fill));
        }
    }
}

TEST(EncodeFrame, RoundTripsThroughTheLexer)
{
    struct ROW { const char* legend; char kind; std::string id; int status; std::string payload; };
    const ROW rows[] = {
        {"reply without tag", 'R', "", 0, "x"},
        {"error reply", 'R', "123456789", -2, "{2,,wrong command}"},
        {"message", 'M', "DL", 0, "2;A,R,12,1.0,3476,2,120;E,T,401,0.6,812,0,480"},
        {"binary payload with line ends, unit starts and zero bytes", 'R', "5", 3, "a\r\n$GPGGA*00\r\n@R1,0,0:*0000\r\n\0z"s},
        {"event", 'E', "8", 0, ""},
    };
    for (const ROW& row : rows) {
        const LEXED out = Lex(Frame(row.kind, row.id, row.status, row.payload));
        const std::string expected = "F "s + row.kind + row.id + "," + std::to_string(row.status) + ":" + row.payload;
        EXPECT_EQ(out.units, std::vector<std::string>{expected}) << row.legend;
        EXPECT_EQ(out.counters.droppedFrames, 0u) << row.legend;
    }
}

// ---------------------------------------------------------------- the documented examples

TEST(WireProtocolDoc, EveryFrameExampleDecodes)
{
    const std::string doc = test::ReadFile("docs/wire-protocol.md");
    ASSERT_FALSE(doc.empty()) << "run from the repository root";
    int examples = 0;
    std::size_t start = 0;
    while (start < doc.size()) {
        std::size_t end = doc.find('\n', start);
        if (end == std::string::npos)
            end = doc.size();
        std::string line = doc.substr(start, end - start);
        start = end + 1;
        if (line.empty() || line[0] != '@' || line.rfind("@<", 0) == 0)  // "@<kind>..." is the grammar
            continue;
        const std::size_t crlf = line.rfind("\\r\\n");
        ASSERT_NE(crlf, std::string::npos) << line;
        line.replace(crlf, 4, "\r\n");
        ++examples;
        const LEXED out = Lex(line);
        ASSERT_EQ(out.units.size(), 1u) << line;
        // The payload between ':' and '*' comes back, with the status and check as written.
        const std::size_t colon = line.find(':');
        const std::size_t star = line.rfind('*');
        const std::string header = line.substr(1, colon - 1);
        EXPECT_EQ(out.units[0], "F " + header.substr(0, header.rfind(',')) + ":" + line.substr(colon + 1, star - colon - 1));
        EXPECT_EQ(Frame(line[1], header.substr(1, header.find(',') - 1),
                        std::stoi(header.substr(header.find(',') + 1)), line.substr(colon + 1, star - colon - 1)),
                  line);
    }
    EXPECT_GE(examples, 4) << "the document's frame examples were not found";
}

// ---------------------------------------------------------------- units and what is dropped

TEST(StreamLexer, CutsUnitsAndCountsWhatItDrops)
{
    struct ROW {
        const char* legend;
        std::string stream;
        std::vector<std::string> units;
        std::uint64_t garbage, droppedSentences, droppedFrames;
    };
    const std::string s120 = "$" + std::string(119, 'A');
    const std::string p132 = "$P" + std::string(130, 'A');
    const ROW rows[] = {
        {"sentence with bare LF", "$GPZDA,1*00\n", {"S $GPZDA,1*00"}, 0, 0, 0},
        {"sentence with CR LF", "$GPZDA,1*00\r\n", {"S $GPZDA,1*00"}, 0, 0, 0},
        {"sentence with CR CR LF", "$GPZDA,1*00\r\r\n", {"S $GPZDA,1*00"}, 0, 0, 0},
        {"three CRs are not a line end", "$GPZDA,1*00\r\r\r\n", {}, 10, 1, 0},
        {"CR then text is not a line end", "$GPZDA\rX\n", {}, 6, 1, 0},
        {"'!' starts a sentence too", "!AIVDM,1*00\r\n", {"S !AIVDM,1*00"}, 0, 0, 0},
        {"120 characters is the limit", s120 + "\r\n", {"S " + s120}, 0, 0, 0},
        {"121 characters is too long", s120 + "B\r\n", {}, 120, 1, 0},
        {"a proprietary line may run to 132", p132 + "\r\n", {"S " + p132}, 0, 0, 0},
        {"133 is too long even for one", p132 + "B\r\n", {}, 132, 1, 0},
        {"blank lines are not garbage", "\r\n\n$A*00\n\r\n", {"S $A*00"}, 0, 0, 0},
        {"text between units is garbage", "xy$A*00\nz\n", {"S $A*00"}, 3, 0, 0},
        {"a sentence injected into a sentence wins", "$GPGSV,4,1,0$PX,1*00\r\n5,3*71\r\n", {"S $PX,1*00"}, 17, 1, 0},
        {"a frame cuts a sentence", "$GPGGA,1" + Frame('R', "1", 0, "ok"), {"F R1,0:ok"}, 7, 1, 0},
        {"sentence unfinished at end of stream", "$GPGGA,1", {}, 7, 1, 0},
        {"frame", Frame('M', "DL", 0, "0"), {"F MDL,0:0"}, 0, 0, 0},
        {"frame then sentence, no gap", Frame('E', "7", 0, "") + "$A*00\n", {"F E7,0:", "S $A*00"}, 0, 0, 0},
        {"wrong check", "@R1,0,2:ok*0000\r\n", {}, 14, 0, 1},
        {"lower-case check", "@R1,0,7:FNK-600*22a3\r\n", {}, 19, 0, 1},
        {"trailer without CR", "@R1,0,7:FNK-600*22A3\n", {}, 19, 0, 1},
        {"length one short", "@R1,0,6:FNK-600*22A3\r\n", {}, 19, 0, 1},
        {"length over the limit", "@R1,0,67108865:x", {}, 15, 0, 1},
        {"status on a message", "@MDL,1,0:*0000\r\n", {}, 13, 0, 1},
        {"letters in a reply tag", "@Rx,0,0:*0000\r\n", {}, 12, 0, 1},
        {"empty event number", "@E,0,0:*0000\r\n", {}, 11, 0, 1},
        {"unknown kind", "@Q1,0,0:*0000\r\n", {}, 12, 0, 1},
        {"header longer than any valid one", "@M" + std::string(50, 'A'), {}, 51, 0, 1},
        {"lone '@' in text", "a@b\n", {}, 2, 0, 1},
        {"a lying length swallows the next units, which are found again",
         "@R1,0,60:x*0000\r\n" + kGga + "\r\n" + Frame('R', "2", 0, "y"),
         {"S " + kGga, "F R2,0:y"}, 14, 0, 1},
    };
    for (const ROW& row : rows) {
        const LEXED out = Lex(row.stream);
        EXPECT_EQ(out.units, row.units) << row.legend;
        EXPECT_EQ(out.counters.garbageBytes, row.garbage) << row.legend;
        EXPECT_EQ(out.counters.droppedSentences, row.droppedSentences) << row.legend;
        EXPECT_EQ(out.counters.droppedFrames, row.droppedFrames) << row.legend;
        EXPECT_EQ(out.counters.sentences + out.counters.frames, row.units.size()) << row.legend;
    }
}

TEST(StreamLexer, CommentLinesOfCapturesAreGarbageOnlyWhenAskedFor)
{
    const std::string stream = "# quoted: $GPGSV,1,1,00*79\r\n#\n$A*00\r\nx# $B*00\n";
    struct ROW { const char* legend; bool comments; std::vector<std::string> units; };
    const ROW rows[] = {
        {"live link: every '$' starts a sentence", false, {"S $GPGSV,1,1,00*79", "S $A*00", "S $B*00"}},
        {"capture: '#' at a line start hides the line", true, {"S $A*00", "S $B*00"}},
    };
    for (const ROW& row : rows)
        EXPECT_EQ(Lex(stream, 0, row.comments).units, row.units) << row.legend;
}

// ---------------------------------------------------------------- chunking and resynchronisation

const std::string& MixedStream()
{
    static const std::string stream = "#\r\n" + kGga + "\r\n" + Frame('R', "12", 0, "line 1\r\nline 2\r\n")
        + "junk" + Frame('E', "7", 0, "") + "$GPZDA,131519.00,03,02,2016,00,00*6C\r\r\n"
        + Frame('M', "DL", 0, "1;A,R,12,1.0,3476,2,120") + "!AIVDM,x*00\n";
    return stream;
}

TEST(StreamLexer, SplitAtEveryChunkBoundaryGivesTheSameUnits)
{
    const std::string& stream = MixedStream();
    const LEXED whole = Lex(stream);
    ASSERT_EQ(whole.units.size(), 6u);
    for (std::size_t split = 1; split < stream.size(); ++split) {
        Transcript sink;
        CStreamLexer lexer(sink);
        lexer.Feed(stream.data(), split);
        lexer.Feed(stream.data() + split, stream.size() - split);
        lexer.Finish();
        ASSERT_EQ(sink.units, whole.units) << "split at " << split;
        ASSERT_EQ(lexer.Counters().garbageBytes, whole.counters.garbageBytes) << "split at " << split;
    }
    for (const std::size_t chunk : {1u, 2u, 3u, 7u, 64u})
        EXPECT_EQ(Lex(stream, chunk).units, whole.units) << "chunks of " << chunk;
}

TEST(StreamLexer, ByteInsertedAnywhereInAFrameNeverPassesADamagedFrame)
{
    const std::string frame = Frame('R', "42", -3, "{2,,wrong command}");
    const std::string intact = "F R42,-3:{2,,wrong command}";
    const std::string after = kGga + "\r\n" + Frame('E', "8", 0, "");
    // Not a digit: one more digit in the tag or status makes another valid frame, as the
    // check covers the payload only.
    for (const char noise : {'x', '@', '$', '\n', ':', '*', ','}) {
        for (std::size_t at = 1; at < frame.size(); ++at) {
            const std::string stream = frame.substr(0, at) + noise + frame.substr(at) + after;
            const LEXED out = Lex(stream);
            const std::string where = std::string("noise ") + noise + " at " + std::to_string(at);
            ASSERT_GE(out.units.size(), 2u) << where;
            EXPECT_EQ(out.units[out.units.size() - 2], "S " + kGga) << where;
            EXPECT_EQ(out.units.back(), "F E8,0:") << where;
            // "@@R42..." still holds the intact frame after the first '@', and "\r\n\n" is the
            // intact frame and a blank line.
            const bool stillIntact = (noise == '@' && at == 1) || (noise == '\n' && at + 1 == frame.size());
            EXPECT_EQ(out.counters.droppedFrames == 0, noise == '\n' && at + 1 == frame.size()) << where;
            // Sentences cut out of the damaged frame ("$R42,...*CAB4") are the NMEA decoder's
            // to reject.
            for (std::size_t i = 0; i + 2 < out.units.size(); ++i) {
                if (out.units[i][0] == 'F') {
                    EXPECT_TRUE(stillIntact && out.units[i] == intact) << where << ": " << out.units[i];
                }
            }
        }
    }
}

TEST(StreamLexer, FrameCutAtEveryByteDoesNotHideWhatFollows)
{
    const std::string frame = Frame('R', "9", 0, "payload with $GPTXT inside");
    const std::string next = Frame('R', "10", 0, "next") + kGga + "\r\n";
    for (std::size_t cut = 1; cut < frame.size(); ++cut) {
        const LEXED out = Lex(frame.substr(0, cut) + next);
        const std::vector<std::string> expected{"F R10,0:next", "S " + kGga};
        ASSERT_EQ(out.units, expected) << "cut at " << cut;
    }
}

TEST(StreamLexer, BigFramesSplitInSmallChunks)
{
    struct ROW { const char* legend; std::size_t size; std::size_t chunk; };
    const ROW rows[] = {
        {"1 MB in 1 kB chunks", 1 << 20, 1024},
        {"60 MB in 4 kB chunks", 60u << 20, 4096},
        {"the longest allowed payload in 64 kB chunks", kMaxFramePayload, 65536},
    };
    std::mt19937 random(7);
    for (const ROW& row : rows) {
        std::string payload(row.size, '\0');
        for (char& c : payload)
            c = static_cast<char>(random() & 0xFF);
        const std::string stream = kGga + "\n" + Frame('R', "1", 0, payload) + kGga + "\n";
        struct Sink : ILexerSink {
            std::string payload;
            int frames = 0, sentences = 0;
            void OnSentence(std::string_view) override { ++sentences; }
            void OnFrame(const FRAME_VIEW& f) override { ++frames; payload.assign(f.payload); }
        } sink;
        CStreamLexer lexer(sink);
        for (std::size_t at = 0; at < stream.size(); at += row.chunk)
            lexer.Feed(stream.data() + at, std::min(row.chunk, stream.size() - at));
        EXPECT_EQ(sink.frames, 1) << row.legend;
        EXPECT_EQ(sink.sentences, 2) << row.legend;
        EXPECT_TRUE(sink.payload == payload) << row.legend;
        EXPECT_EQ(lexer.Counters().droppedFrames, 0u) << row.legend;
    }
}

TEST(StreamLexer, RandomNoiseNeverStallsTheStream)
{
    // Whatever comes before, a line feed followed by a good sentence is always found.
    std::mt19937 random(11);
    for (int round = 0; round < 300; ++round) {
        std::string noise(random() % 300, '\0');
        for (char& c : noise)
            c = "@$!\r\n,*0123456789RME:-x"[random() % 23];
        const LEXED out = Lex(noise + "\n" + kGga + "\r\n");
        ASSERT_FALSE(out.units.empty()) << round;
        EXPECT_EQ(out.units.back(), "S " + kGga) << "round " << round;
    }
}

// ---------------------------------------------------------------- cancelled and failed replies

// The stream after the host cancelled (or gave up on) reply 5; fed in chunks of every size so
// that the cut mark and the frame header are split everywhere.
TEST(StreamLexer, CancelledReplyIsSkippedUpToItsCutMarkWhereverTheChunksSplit)
{
    const std::string payload(600, 'x');
    const std::string full = Frame('R', "5", 0, payload);
    const std::string cutMark = Frame('C', "5", 0, "");
    const std::string next = Frame('R', "6", 0, "FNK-600");
    struct ROW {
        const char* legend;
        bool cancelFirst;          // cancelled before any byte of the reply (else after `before` bytes)
        std::size_t before;
        std::string stream;
        std::vector<std::string> units;
        std::uint64_t cancelled;
    };
    const ROW rows[] = {
        {"cut mid-payload, the next reply follows the mark", false, 200, full.substr(0, 300) + cutMark + next,
         {"F R6,0:FNK-600"}, 1},
        {"cancelled before the reply began, then cut", true, 0, full.substr(0, 300) + cutMark + next,
         {"F R6,0:FNK-600"}, 1},
        {"a receiver that knows no abort sends it whole", false, 200, full + kGga + "\r\n" + next,
         {"S " + kGga, "F R6,0:FNK-600"}, 1},
        {"the reply never started: the mark stands alone", true, 0, cutMark + next, {"F C5,0:", "F R6,0:FNK-600"}, 0},
        {"a mark of another reply inside the payload is payload", false, 200,
         Frame('R', "5", 0, std::string(250, 'x') + Frame('C', "55", 0, "") + std::string(300, 'x')) + next,
         {"F R6,0:FNK-600"}, 1},
    };
    for (const ROW& row : rows) {
        for (std::size_t chunk : {std::size_t{1}, std::size_t{7}, std::size_t{19}, row.stream.size()}) {
            Transcript sink;
            CStreamLexer lexer(sink);
            std::size_t at = 0;
            if (row.cancelFirst)
                lexer.CancelReply("5");
            for (; at < row.before; at += std::min(chunk, row.before - at))
                lexer.Feed(row.stream.data() + at, std::min(chunk, row.before - at));
            if (!row.cancelFirst)
                lexer.CancelReply("5");
            for (; at < row.stream.size(); at += chunk)
                lexer.Feed(row.stream.data() + at, std::min(chunk, row.stream.size() - at));
            EXPECT_EQ(sink.units, row.units) << row.legend << ", chunks of " << chunk;
            EXPECT_EQ(lexer.Counters().cancelledReplies, row.cancelled) << row.legend << ", chunks of " << chunk;
        }
    }
}

TEST(StreamLexer, AbandonedReplyIsDroppedAndWhatFollowedItsHeaderIsFound)
{
    const std::string next = Frame('R', "78", 0, "FNK-600");
    struct ROW {
        const char* legend;
        std::string stream;
        const char* abandon;
        bool dropped;
        std::vector<std::string> units;
    };
    const ROW rows[] = {
        {"a header announcing 64 MB, then a little and a good reply", "@R77,0,67108864:" + std::string(1000, 'z') + next,
         "77", true, {"F R78,0:FNK-600"}},
        {"a short reply cut off: what came after it is scanned again", "@R77,0,50:abc" + next, "77", true,
         {"F R78,0:FNK-600"}},
        {"another reply's failure leaves the frame in progress alone", "@R77,0,50:abc" + next, "76", false, {}},
    };
    for (const ROW& row : rows) {
        Transcript sink;
        CStreamLexer lexer(sink);
        lexer.Feed(row.stream);
        EXPECT_TRUE(sink.units.empty()) << row.legend << ": nothing before the failure";
        EXPECT_EQ(lexer.AbandonReply(row.abandon), row.dropped) << row.legend;
        EXPECT_EQ(sink.units, row.units) << row.legend;
    }
}

TEST(StreamLexer, ReplyInProgressReportsItsBytes)
{
    Transcript sink;
    CStreamLexer lexer(sink);
    const std::string reply = Frame('R', "9", 0, std::string(1000, 'p'));
    CStreamLexer::REPLY_PROGRESS progress;
    EXPECT_FALSE(lexer.ReplyInProgress(progress)) << "idle";
    lexer.Feed(reply.substr(0, 5));
    EXPECT_FALSE(lexer.ReplyInProgress(progress)) << "header not complete";
    lexer.Feed(reply.substr(5, 400));
    ASSERT_TRUE(lexer.ReplyInProgress(progress));
    EXPECT_EQ(progress.tag, "9");
    EXPECT_EQ(progress.received, 405 - std::string("@R9,0,1000:").size());
    EXPECT_EQ(progress.length, 1000u);
    lexer.Feed(reply.substr(405));
    EXPECT_FALSE(lexer.ReplyInProgress(progress)) << "complete";
}

}  // namespace
}  // namespace devio
