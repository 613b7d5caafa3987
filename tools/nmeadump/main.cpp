// nmeadump: decodes a receiver capture (NMEA sentences and frames) into JSON lines.
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <string_view>

#include "platform/devio/nmea/CLiveDataDecoder.h"
#include "tools/nmeadump/CJsonLineSink.h"

namespace {

int Usage()
{
    std::fputs("usage: nmeadump [--stats] [--raw] [file]\n"
               "Decodes a capture file (or standard input) into one JSON object per line.\n"
               "  --stats  end with a line of counters\n"
               "  --raw    scan '#' comment lines like any other bytes (a live receiver stream)\n",
               stderr);
    return 2;
}

}  // namespace

int main(int argc, char** argv)
{
    bool stats = false;
    bool raw = false;
    const char* path = nullptr;
    for (int i = 1; i < argc; ++i) {
        const std::string_view arg = argv[i];
        if (arg == "--stats")
            stats = true;
        else if (arg == "--raw")
            raw = true;
        else if (arg == "-h" || arg == "--help" || (!arg.empty() && arg[0] == '-' && arg != "-") || path != nullptr)
            return Usage();
        else
            path = argv[i];
    }
    std::FILE* in = (path == nullptr || std::string_view(path) == "-") ? stdin : std::fopen(path, "rb");
    if (in == nullptr) {
        std::fprintf(stderr, "nmeadump: %s: %s\n", path, std::strerror(errno));
        return 1;
    }
    CJsonLineSink sink(stdout);
    devio::CLiveDataDecoder decoder(sink);
    decoder.SetCommentLines(!raw);
    std::array<char, 65536> chunk{};
    std::size_t n = 0;
    while ((n = std::fread(chunk.data(), 1, chunk.size(), in)) > 0)
        decoder.Feed(chunk.data(), n);
    const bool readError = std::ferror(in) != 0;
    if (in != stdin)
        std::fclose(in);
    decoder.Finish();
    if (stats)
        sink.WriteStats(decoder.Counters());
    if (readError) {
        std::fprintf(stderr, "nmeadump: read error\n");
        return 1;
    }
    return 0;
}
