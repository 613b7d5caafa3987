#pragma once
// Helpers shared by the lexer, NMEA and nmeadump tests: capture files and a sink that keeps everything.
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "platform/devio/nmea/ILiveDataSink.h"

namespace devio::test {

// The shared captures are read where they lie: $FENK_SHARED_DIR/nmea-captures, else
// ../shared/nmea-captures from the repository root (the tests' working directory).
inline std::string CapturePath(std::string_view name)
{
    const char* shared = std::getenv("FENK_SHARED_DIR");
    const std::string dir = shared != nullptr && *shared != '\0' ? std::string(shared) : std::string("../shared");
    return dir + "/nmea-captures/" + std::string(name);
}

inline std::string ReadFile(const std::string& path)
{
    std::ifstream in(path, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

inline const std::vector<std::string>& CaptureNames()
{
    static const std::vector<std::string> names{
        "beidou-gb.log",   "firefly-II.log", "furuno_gl_ga.log",  "gpsdf.log",
        "isync.log",       "nmea-rtk.log",   "polarx2.log",       "quectelLC79D.log",
        "sl869.log",       "telit-pls83-w.log", "ublox-zed-f9p-nmea.log"};
    return names;
}

// NMEA checksum appended to a body written without it: "GPGGA,..." -> "$GPGGA,...*hh".
inline std::string WithChecksum(std::string_view body)
{
    unsigned sum = 0;
    for (const char c : body)
        sum ^= static_cast<unsigned char>(c);
    static constexpr char kHex[] = "0123456789ABCDEF";
    std::string sentence = "$";
    sentence += body;
    sentence += '*';
    sentence += kHex[sum >> 4];
    sentence += kHex[sum & 0xF];
    return sentence;
}

struct RecordingSink : ILiveDataSink {
    std::vector<POSITION_RECORD> positions;
    std::vector<SATLIST_RECORD> satLists;
    std::vector<DATETIME_RECORD> dateTimes;
    std::vector<DATALINK_RECORD> dataLinks;
    std::vector<std::string> otherFrames;

    void OnPosition(const POSITION_RECORD& r) override { positions.push_back(r); }
    void OnSatList(const SATLIST_RECORD& r) override { satLists.push_back(r); }
    void OnDateTime(const DATETIME_RECORD& r) override { dateTimes.push_back(r); }
    void OnDataLink(const DATALINK_RECORD& r) override { dataLinks.push_back(r); }
    void OnOtherFrame(const FRAME_VIEW& f) override
    {
        otherFrames.push_back(std::string(1, f.kind) + std::string(f.id) + "," + std::to_string(f.status) + ":"
                              + std::string(f.payload));
    }
};

}  // namespace devio::test
