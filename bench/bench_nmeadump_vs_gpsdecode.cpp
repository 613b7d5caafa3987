// nmeadump end to end against gpsd's gpsdecode (Debian package gpsd-clients), on the same
// ~50 MB stream of the shared captures in the same run: both read the file and write JSON
// lines to /dev/null. Printed, never asserted. The goal is nmeadump at least 10 times faster,
// with decoding, not the JSON writer, the larger share of its time.
//
//   bench_nmeadump_vs_gpsdecode   (run from the repository root, or set FENK_SHARED_DIR)
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>

#include "platform/devio/nmea/CLiveDataDecoder.h"
#include "bench/CaptureStream.h"

namespace {

constexpr std::size_t kStreamSize = 50u << 20;
constexpr int kRounds = 3;                // best of, to step round the other builds on the machine

// The receivers' output: the captures without their '#' annotation lines, repeated.
std::string MakeStream()
{
    const std::string one = fenkbench::CapturesWithoutComments();
    std::string stream;
    if (one.empty())
        return stream;
    while (stream.size() < kStreamSize)
        stream += one;
    return stream;
}

double Seconds(const std::chrono::steady_clock::time_point start)
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

// Best wall time of a shell command; negative when it fails.
double TimeCommand(const std::string& command)
{
    double best = 1e30;
    for (int i = 0; i < kRounds; ++i) {
        const auto start = std::chrono::steady_clock::now();
        if (std::system(command.c_str()) != 0)
            return -1;
        best = std::min(best, Seconds(start));
    }
    return best;
}

struct NullSink : devio::ILiveDataSink {
    std::size_t records = 0;
    void OnPosition(const devio::POSITION_RECORD&) override { ++records; }
    void OnSatList(const devio::SATLIST_RECORD& list) override { records += list.size(); }
    void OnDateTime(const devio::DATETIME_RECORD&) override { ++records; }
};

// The decoding nmeadump does, without reading a file or writing JSON.
double TimeDecodeOnly(const std::string& stream)
{
    double best = 1e30;
    for (int i = 0; i < kRounds; ++i) {
        const auto start = std::chrono::steady_clock::now();
        NullSink sink;
        devio::CLiveDataDecoder decoder(sink);
        constexpr std::size_t kChunk = 256 * 1024;
        for (std::size_t at = 0; at < stream.size(); at += kChunk)
            decoder.Feed(stream.data() + at, std::min(kChunk, stream.size() - at));
        decoder.Finish();
        best = std::min(best, Seconds(start));
        if (sink.records == 0)
            std::puts("(no records decoded)");
    }
    return best;
}

}  // namespace

int main()
{
    const std::string stream = MakeStream();
    if (stream.empty()) {
        std::puts("captures not found: run from the repository root or set FENK_SHARED_DIR");
        return 1;
    }
    const std::string path = "/tmp/bench_nmeadump_stream.nmea";
    {
        std::ofstream out(path, std::ios::binary);
        out.write(stream.data(), static_cast<std::streamsize>(stream.size()));
    }
    const double mb = stream.size() / 1e6;
    std::printf("stream: %.1f MB of the shared captures, best of %d runs each\n", mb, kRounds);

    const double nmeadump = TimeCommand(std::string(NMEADUMP_PATH) + " " + path + " > /dev/null");
    const double decode = TimeDecodeOnly(stream);
    std::printf("nmeadump (JSON lines)     %7.3f s  %7.1f MB/s\n", nmeadump, mb / nmeadump);
    std::printf("  of which decoding       %7.3f s  (%.0f %%); reading and JSON writing %.3f s (%.0f %%)\n", decode,
                100 * decode / nmeadump, nmeadump - decode, 100 * (nmeadump - decode) / nmeadump);
    const double gpsd = TimeCommand("gpsdecode -j < " + path + " > /dev/null 2>&1");
    if (gpsd < 0) {
        std::puts("gpsdecode          not available (Debian package gpsd-clients): no ratio");
    } else {
        std::printf("gpsdecode -j              %7.3f s  %7.1f MB/s\n", gpsd, mb / gpsd);
        std::printf("ratio gpsdecode / nmeadump: %.1f (goal: at least 10)\n", gpsd / nmeadump);
    }
    std::remove(path.c_str());
    return 0;
}
