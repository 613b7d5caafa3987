#pragma once
#include <cstdint>

namespace devio {

// One fix, carried twice: a Cartesian and a geodetic half, each with its own presence flag.
// The status sheet derives the missing half on WGS-84.
struct POSITION_RECORD {
    std::uint8_t xyzValid = 0;
    double x = 0, y = 0, z = 0;           // Earth-centred, metres
    std::uint32_t xyzExtra = 0;           // fix quality word, see below
    std::uint8_t geoValid = 0;
    double lat = 0, lon = 0;              // degrees
    double height = 0;                    // metres above the ellipsoid
    std::uint32_t geoExtra = 0;

    // Extra word layout: bits 0-7 fix quality (GGA), bits 8-15 satellites used,
    // bits 16-31 HDOP x 100 (0xFFFF when unknown).
    static constexpr std::uint32_t MakeExtra(unsigned quality, unsigned used, double hdop) {
        const unsigned h = (hdop < 0 || hdop > 655.34) ? 0xFFFFu : static_cast<unsigned>(hdop * 100 + 0.5);
        return (quality & 0xFFu) | ((used & 0xFFu) << 8) | (h << 16);
    }
};

}  // namespace devio
