// Fuzz target: CStreamLexer. The same bytes fed whole and in fuzzer-chosen chunks must give
// the same units, and every unit must keep the lexer's promises.
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "fuzz/FuzzChecks.h"
#include "platform/devio/lexer/CStreamLexer.h"
#include "platform/devio/lexer/Fletcher16.h"

namespace {

struct OneFrame : devio::ILexerSink {
    int frames = 0;
    void OnFrame(const devio::FRAME_VIEW&) override { ++frames; }
};

struct Units : devio::ILexerSink {
    std::vector<std::string> all;
    void OnSentence(std::string_view s) override
    {
        FUZZ_CHECK(!s.empty() && (s[0] == '$' || s[0] == '!'));
        FUZZ_CHECK(s.size() <= (s.size() > 1 && s[1] == 'P' ? devio::CStreamLexer::kMaxProprietarySentence
                                                             : devio::CStreamLexer::kMaxSentence));
        FUZZ_CHECK(s.find_first_of("\r\n") == std::string_view::npos);
        all.emplace_back(s);
    }
    void OnFrame(const devio::FRAME_VIEW& f) override
    {
        FUZZ_CHECK(f.kind == 'R' || f.kind == 'M' || f.kind == 'E');
        FUZZ_CHECK(f.payload.size() <= devio::kMaxFramePayload);
        // What the lexer accepted, encoded again, is accepted again as one frame.
        const std::string again = devio::CStreamLexer::EncodeFrame(f.kind, f.id, f.status, f.payload);
        OneFrame one;
        devio::CStreamLexer check(one);
        check.Feed(again);
        FUZZ_CHECK(one.frames == 1 && check.Counters().garbageBytes == 0);
        all.push_back(again);
    }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const char* bytes = reinterpret_cast<const char*>(data);
    Units whole;
    devio::CStreamLexer wholeLexer(whole);
    wholeLexer.Feed(bytes, size);
    wholeLexer.Finish();

    Units chunked;
    devio::CStreamLexer chunkedLexer(chunked);
    // Chunk lengths come from the input itself, so the fuzzer explores splits too.
    std::size_t at = 0;
    std::size_t step = 0;
    while (at < size) {
        const std::size_t chunk = 1 + (static_cast<std::size_t>(data[step++ % size]) % 31);
        const std::size_t n = chunk < size - at ? chunk : size - at;
        chunkedLexer.Feed(bytes + at, n);
        at += n;
    }
    chunkedLexer.Finish();

    FUZZ_CHECK(whole.all == chunked.all);
    const devio::LEXER_COUNTERS& a = wholeLexer.Counters();
    const devio::LEXER_COUNTERS& b = chunkedLexer.Counters();
    FUZZ_CHECK(a.garbageBytes == b.garbageBytes && a.droppedFrames == b.droppedFrames
               && a.droppedSentences == b.droppedSentences);
    FUZZ_CHECK(a.garbageBytes <= size);
    return 0;
}
