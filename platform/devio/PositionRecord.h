#pragma once
#include <cstdint>
#include <limits>

namespace devio {

// One fix, carried twice: a Cartesian and a geodetic half, each with its own presence flag.
// The status sheet derives the missing half on WGS-84.
struct POSITION_RECORD {
    std::uint8_t xyzValid = 0;
    double x = 0, y = 0, z = 0;           // Earth-centred, metres
    std::uint32_t xyzExtra = 0;           // fix quality word, see below
    std::uint8_t geoValid = 0;
    double lat = 0, lon = 0;              // degrees
    double height = 0;                    // metres above the ellipsoid; NaN for a 2-D fix
    std::uint32_t geoExtra = 0;

    // Extra word layout: bits 0-7 fix quality (GGA), bits 8-15 satellites used,
    // bits 16-31 HDOP x 100 (0xFFFF when unknown).
    static constexpr std::uint32_t MakeExtra(unsigned quality, unsigned used, double hdop) {
        const unsigned h = (hdop < 0 || hdop > 655.34) ? 0xFFFFu : static_cast<unsigned>(hdop * 100 + 0.5);
        return (quality & 0xFFu) | ((used & 0xFFu) << 8) | (h << 16);
    }

    // ---- Added with the NMEA epoch assembly; older readers may ignore everything below.
    static constexpr double kUnknown = std::numeric_limits<double>::quiet_NaN();

    // Which sentence gave the coordinates: the richest source of the epoch wins.
    enum Source : std::uint8_t { SourceNone = 0, SourceGga = 1, SourceGns = 2, SourceRmc = 3, SourceGll = 4 };
    // flags bits.
    static constexpr std::uint8_t kHeld = 0x01;               // fix claimed with no satellite used:
                                                              // a held position; keep out of statistics
    static constexpr std::uint8_t kSeparationModelled = 0x02; // geoidSeparation from the EGM96 grid
    static constexpr std::uint8_t kSeparationMissing = 0x04;  // none given and no model at hand:
                                                              // height is above the geoid, not the ellipsoid

    std::uint8_t source = SourceNone;
    std::uint8_t flags = 0;
    std::int32_t timeOfDay = -1;          // UTC millisecond of day of the epoch; -1 unknown
    double altitudeMsl = kUnknown;        // metres above the geoid (mean sea level)
    double geoidSeparation = kUnknown;    // geoid above the ellipsoid, metres: height = altitudeMsl + this
    double speed = kUnknown;              // over ground, metres per second (RMC, VTG)
    double course = kUnknown;             // over ground, degrees from true north
    double sigmaLat = kUnknown;           // 1-sigma errors in metres (GST)
    double sigmaLon = kUnknown;
    double sigmaHeight = kUnknown;
    double pdop = kUnknown;               // GSA; the HDOP is in the extra word
    double vdop = kUnknown;
    double correctionAge = kUnknown;      // seconds since the last differential correction (GGA, GNS)

    constexpr bool IsHeld() const { return (flags & kHeld) != 0; }
};

}  // namespace devio
