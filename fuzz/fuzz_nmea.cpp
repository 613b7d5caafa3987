// Fuzz target: the NMEA and data-link decoders behind the lexer. Every sentence must land in
// exactly one counter, and records must hold values the records allow.
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "fuzz/FuzzChecks.h"
#include "platform/devio/nmea/CLiveDataDecoder.h"
#include "platform/devio/nmea/CNmeaDecoder.h"

namespace {

struct Checks : devio::ILiveDataSink {
    void OnPosition(const devio::POSITION_RECORD& p) override
    {
        FUZZ_CHECK(p.geoValid == 1);
        FUZZ_CHECK(std::fabs(p.lat) <= 90.0 && std::fabs(p.lon) <= 180.0);
        FUZZ_CHECK((p.geoExtra & 0xFFu) != 0);
        FUZZ_CHECK(p.source >= devio::POSITION_RECORD::SourceGga && p.source <= devio::POSITION_RECORD::SourceGll);
        FUZZ_CHECK(p.timeOfDay >= -1 && p.timeOfDay < 86401000);
        // A height needs an altitude; a modelled separation needs one too.
        FUZZ_CHECK(std::isnan(p.height) == std::isnan(p.altitudeMsl));
        FUZZ_CHECK(!(p.flags & devio::POSITION_RECORD::kSeparationModelled) || std::isfinite(p.geoidSeparation));
        FUZZ_CHECK(std::isnan(p.speed) || p.speed >= 0);
    }
    void OnSatList(const devio::SATLIST_RECORD& list) override
    {
        for (const devio::SATELLITE_RECORD& s : list) {
            FUZZ_CHECK(s.system != devio::SATELLITE_RECORD::Unused);
            FUZZ_CHECK(s.elevation == devio::SATELLITE_RECORD::kUnknownElevation
                       || (s.elevation >= -90 && s.elevation <= 90));
            FUZZ_CHECK(s.azimuth == devio::SATELLITE_RECORD::kUnknownAzimuth || s.azimuth < 360);
            FUZZ_CHECK(s.snr <= 99);
            FUZZ_CHECK(s.navStatus == devio::SATELLITE_RECORD::kNavUsed
                       || s.navStatus == devio::SATELLITE_RECORD::kNavNotUsed
                       || s.navStatus == devio::SATELLITE_RECORD::kNavUndefined);
        }
    }
    void OnDateTime(const devio::DATETIME_RECORD& t) override
    {
        FUZZ_CHECK(t.month >= 1 && t.month <= 12 && t.day >= 1 && t.day <= 31);
        FUZZ_CHECK(t.hour < 24 && t.minute < 60 && t.second <= 60 && t.millisecond < 1000);
    }
    void OnDataLink(const devio::DATALINK_RECORD& link) override
    {
        FUZZ_CHECK(std::string_view("ABCDEFGHILU").find(link.port) != std::string_view::npos);
        FUZZ_CHECK(std::string_view("CJRT").find(link.format) != std::string_view::npos);
    }
};

std::uint64_t Classified(const devio::NMEA_COUNTERS& c)
{
    return c.decoded + c.ignored + c.badChecksum + c.noChecksum + c.malformed + c.notSentence;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    Checks sink;

    // Through the lexer, as a receiver stream.
    devio::CLiveDataDecoder live(sink);
    live.Feed(bytes);
    live.Finish();
    const devio::LIVEDATA_COUNTERS counters = live.Counters();
    FUZZ_CHECK(Classified(counters.nmea) == counters.lexer.sentences);

    // Line by line straight into the decoder, so text the lexer would reject is tried too.
    devio::CNmeaDecoder decoder(sink);
    std::uint64_t lines = 0;
    std::size_t start = 0;
    while (start <= bytes.size()) {
        const std::size_t end = std::min(bytes.find('\n', start), bytes.size());
        decoder.Decode(bytes.substr(start, end - start));
        ++lines;
        start = end + 1;
    }
    decoder.Flush();
    FUZZ_CHECK(Classified(decoder.Counters()) == lines);
    return 0;
}
