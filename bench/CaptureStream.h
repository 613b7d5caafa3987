#pragma once
// The shared receiver captures as one stream of sentences, for the decoding benchmarks.
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>

namespace fenkbench {

inline const char* const kCaptures[] = {
    "beidou-gb.log", "firefly-II.log", "furuno_gl_ga.log", "gpsdf.log", "isync.log", "nmea-rtk.log",
    "polarx2.log", "quectelLC79D.log", "sl869.log", "telit-pls83-w.log", "ublox-zed-f9p-nmea.log"};

// FENK_SHARED_DIR, else ../shared, as the tests find it.
inline std::string CaptureDir()
{
    const char* shared = std::getenv("FENK_SHARED_DIR");
    return std::string(shared != nullptr && *shared != '\0' ? shared : "../shared") + "/nmea-captures/";
}

// The receivers' output: every capture without its '#' annotation lines, one after another.
inline std::string CapturesWithoutComments()
{
    std::string all;
    for (const char* name : kCaptures) {
        std::ifstream in(CaptureDir() + name, std::ios::binary);
        const std::string text((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
        std::size_t start = 0;
        while (start < text.size()) {
            std::size_t end = text.find('\n', start);
            end = end == std::string::npos ? text.size() : end + 1;
            if (text[start] != '#')
                all.append(text, start, end - start);
            start = end;
        }
    }
    return all;
}

}  // namespace fenkbench
