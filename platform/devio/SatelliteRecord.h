#pragma once
#include <algorithm>
#include <bitset>
#include <cstdint>
#include <vector>

namespace devio {

// One tracked satellite as the satellite-list listener delivers it.
struct SATELLITE_RECORD {
    enum System : std::int32_t { Unused = 0, GPS = 1, GLO = 2, SBAS = 3, QZSS = 4, Reserved = 5,
                                 Galileo = 6, BeiDou = 7 };
    static constexpr std::int8_t kUnknownElevation = 127;
    static constexpr std::uint16_t kUnknownAzimuth = 65535;
    // Navigation status: 0 means used for the position (L1 C/A), 4 "measurements unavailable",
    // 63 "undefined". Used when below 4 or from 51 to 56.
    static constexpr std::uint8_t kNavUsed = 0;
    static constexpr std::uint8_t kNavNotUsed = 4;
    static constexpr std::uint8_t kNavUndefined = 63;

    std::int32_t system = Unused;
    std::int32_t number = 0;              // the system's own satellite number (PRN, slot, ...)
    std::int8_t elevation = kUnknownElevation;  // degrees
    std::uint16_t azimuth = kUnknownAzimuth;    // degrees
    std::uint8_t navStatus = kNavUndefined;
    std::uint8_t snr = 0;                 // dB-Hz, 0 when not tracked
    std::uint8_t signalId = 0;            // NMEA 4.x signal id, 0 when not given

    static constexpr bool IsUsed(std::uint8_t status) {
        return status < 4 || (status >= 51 && status <= 56);
    }
};

using SATLIST_RECORD = std::vector<SATELLITE_RECORD>;

// Satellites used in the position, each counted once: a list may hold a row per signal
// (NMEA 4.10 signal ids), and a satellite used on two signals is still one satellite.
inline std::size_t CountUsedSatellites(const SATLIST_RECORD& list)
{
    constexpr std::size_t kSystems = 8;
    constexpr std::size_t kNumbers = 512;
    std::bitset<kSystems * kNumbers> seen;
    std::size_t used = 0;
    for (auto it = list.begin(); it != list.end(); ++it) {
        if (!SATELLITE_RECORD::IsUsed(it->navStatus))
            continue;
        const bool inTable = it->system >= 0 && static_cast<std::size_t>(it->system) < kSystems && it->number >= 0
            && static_cast<std::size_t>(it->number) < kNumbers;
        if (inTable) {
            const std::size_t bit = static_cast<std::size_t>(it->system) * kNumbers + static_cast<std::size_t>(it->number);
            used += seen.test(bit) ? 0 : 1;
            seen.set(bit);
            continue;
        }
        const bool seenBefore = std::any_of(list.begin(), it, [&](const SATELLITE_RECORD& s) {
            return s.system == it->system && s.number == it->number && SATELLITE_RECORD::IsUsed(s.navStatus);
        });
        used += seenBefore ? 0 : 1;
    }
    return used;
}

}  // namespace devio
