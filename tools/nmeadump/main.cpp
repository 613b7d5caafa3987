// nmeadump: decodes a receiver capture (NMEA sentences and frames) into JSON lines.
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>
#include <string_view>
#include <vector>

#include "platform/devio/nmea/CLiveDataDecoder.h"
#include "tools/nmeadump/CGpsdJsonSink.h"
#include "tools/nmeadump/CJsonLineSink.h"
#include "tools/nmeadump/CJsonWriter.h"

namespace {

constexpr std::size_t kChunk = 256 * 1024;

int Usage()
{
    std::fputs("usage: nmeadump [--stats] [--raw] [--gpsd] [file]\n"
               "Decodes a capture file (or standard input) into one JSON object per line.\n"
               "  --stats  end with a line of counters\n"
               "  --raw    scan '#' comment lines like any other bytes (a live receiver stream)\n"
               "  --gpsd   positions and satellite lists as gpsd's TPV and SKY reports\n",
               stderr);
    return 2;
}

struct OPTIONS {
    bool stats = false;
    bool raw = false;
    bool gpsd = false;
    const char* path = nullptr;
};

bool ParseOptions(int argc, char** argv, OPTIONS& options)
{
    for (int i = 1; i < argc; ++i) {
        const std::string_view arg = argv[i];
        if (arg == "--stats")
            options.stats = true;
        else if (arg == "--raw")
            options.raw = true;
        else if (arg == "--gpsd")
            options.gpsd = true;
        else if (arg == "-h" || arg == "--help" || (!arg.empty() && arg[0] == '-' && arg != "-") || options.path != nullptr)
            return false;
        else
            options.path = argv[i];
    }
    return true;
}

}  // namespace

int main(int argc, char** argv)
{
    OPTIONS options;
    if (!ParseOptions(argc, argv, options))
        return Usage();
    const bool useStdin = options.path == nullptr || std::string_view(options.path) == "-";
    std::FILE* in = useStdin ? stdin : std::fopen(options.path, "rb");
    if (in == nullptr) {
        std::fprintf(stderr, "nmeadump: %s: %s\n", options.path, std::strerror(errno));
        return 1;
    }
    CJsonWriter writer(stdout);
    CJsonLineSink lines(writer);
    CGpsdJsonSink gpsd(writer);
    devio::ILiveDataSink& sink = options.gpsd ? static_cast<devio::ILiveDataSink&>(gpsd) : lines;
    devio::CLiveDataDecoder decoder(sink);
    decoder.SetCommentLines(!options.raw);
    std::vector<char> chunk(kChunk);
    std::size_t n = 0;
    while ((n = std::fread(chunk.data(), 1, chunk.size(), in)) > 0) {
        decoder.Feed(chunk.data(), n);
        // A short read means a live source: show what it gave without waiting for more.
        if (n < chunk.size()) {
            writer.Flush();
            std::fflush(stdout);
        }
    }
    const bool readError = std::ferror(in) != 0;
    if (in != stdin)
        std::fclose(in);
    decoder.Finish();
    if (options.stats)
        lines.WriteStats(decoder.Counters());
    writer.Flush();
    if (readError) {
        std::fprintf(stderr, "nmeadump: read error\n");
        return 1;
    }
    return 0;
}
