// NMEA decoding throughput on a ~50 MB stream made of the shared captures repeated.
// For scale: bench_nmeadump_vs_gpsdecode measures gpsd's gpsdecode on the same stream (about 6 MB/s here);
// the live-data path aims at 100 MB/s.
//
//   bench_nmea_decode [--benchmark_filter=...]   (run from the repository root, or set FENK_SHARED_DIR)
#include <benchmark/benchmark.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "platform/devio/lexer/CStreamLexer.h"
#include "platform/devio/nmea/CLiveDataDecoder.h"
#include "platform/devio/nmea/CNmeaDecoder.h"
#include "bench/CaptureStream.h"

namespace {

constexpr std::size_t kStreamSize = 50u << 20;
constexpr std::size_t kReadChunk = 64 * 1024;  // what the receiver's reader thread hands over

using fenkbench::CapturesWithoutComments;

const std::string& Stream()
{
    static const std::string stream = [] {
        const std::string one = CapturesWithoutComments();
        std::string s;
        if (one.empty())
            return s;
        s.reserve(kStreamSize + one.size());
        while (s.size() < kStreamSize)
            s += one;
        return s;
    }();
    return stream;
}

struct CountingSink : devio::ILiveDataSink {
    std::size_t records = 0;
    void OnPosition(const devio::POSITION_RECORD&) override { ++records; }
    void OnSatList(const devio::SATLIST_RECORD& list) override { records += list.size(); }
    void OnDateTime(const devio::DATETIME_RECORD&) override { ++records; }
};

void SetCounters(benchmark::State& state, std::size_t bytes, std::uint64_t sentences)
{
    const double iterations = static_cast<double>(state.iterations());
    state.SetBytesProcessed(static_cast<std::int64_t>(bytes * state.iterations()));
    state.counters["MB/s"] = benchmark::Counter(bytes * iterations / 1e6, benchmark::Counter::kIsRate);
    state.counters["sentences/s"] = benchmark::Counter(static_cast<double>(sentences) * iterations,
                                                       benchmark::Counter::kIsRate);
}

// The whole path the receiver's reader uses: lexer, NMEA decoder, sink.
void BM_LiveDataDecode(benchmark::State& state)
{
    const std::string& stream = Stream();
    if (stream.empty()) {
        state.SkipWithError("captures not found: run from the repository root or set FENK_SHARED_DIR");
        return;
    }
    std::uint64_t sentences = 0;
    for (auto _ : state) {
        CountingSink sink;
        devio::CLiveDataDecoder decoder(sink);
        for (std::size_t at = 0; at < stream.size(); at += kReadChunk)
            decoder.Feed(stream.data() + at, std::min(kReadChunk, stream.size() - at));
        decoder.Finish();
        benchmark::DoNotOptimize(sink.records);
        sentences = decoder.Counters().lexer.sentences;
    }
    SetCounters(state, stream.size(), sentences);
}
BENCHMARK(BM_LiveDataDecode)->Unit(benchmark::kMillisecond)->UseRealTime();

// The lexer alone, to see how the cost divides.
void BM_LexerOnly(benchmark::State& state)
{
    const std::string& stream = Stream();
    if (stream.empty()) {
        state.SkipWithError("captures not found");
        return;
    }
    struct Sink : devio::ILexerSink {
        std::size_t bytes = 0;
        void OnSentence(std::string_view s) override { bytes += s.size(); }
    };
    std::uint64_t sentences = 0;
    for (auto _ : state) {
        Sink sink;
        devio::CStreamLexer lexer(sink);
        for (std::size_t at = 0; at < stream.size(); at += kReadChunk)
            lexer.Feed(stream.data() + at, std::min(kReadChunk, stream.size() - at));
        lexer.Finish();
        benchmark::DoNotOptimize(sink.bytes);
        sentences = lexer.Counters().sentences;
    }
    SetCounters(state, stream.size(), sentences);
}
BENCHMARK(BM_LexerOnly)->Unit(benchmark::kMillisecond)->UseRealTime();

// One big frame in reader-sized chunks: the payload is buffered once, never copied again.
void BM_BigFrame(benchmark::State& state)
{
    const std::string frame = devio::CStreamLexer::EncodeFrame('R', "1", 0, std::string(static_cast<std::size_t>(state.range(0)), 'x'));
    struct Sink : devio::ILexerSink {
        std::size_t bytes = 0;
        void OnFrame(const devio::FRAME_VIEW& f) override { bytes += f.payload.size(); }
    };
    for (auto _ : state) {
        Sink sink;
        devio::CStreamLexer lexer(sink);
        for (std::size_t at = 0; at < frame.size(); at += kReadChunk)
            lexer.Feed(frame.data() + at, std::min(kReadChunk, frame.size() - at));
        benchmark::DoNotOptimize(sink.bytes);
    }
    SetCounters(state, frame.size(), 0);
}
BENCHMARK(BM_BigFrame)->Arg(1 << 20)->Arg(60 << 20)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace

BENCHMARK_MAIN();
