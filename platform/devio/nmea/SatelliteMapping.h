#pragma once
#include <cstdint>
#include <string_view>

namespace devio {

// A satellite in the records' terms: system code (SATELLITE_RECORD::System) and the system's
// own number. system == SATELLITE_RECORD::Unused when the NMEA id means nothing we know.
struct SAT_ID {
    std::int32_t system = 0;
    std::int32_t number = 0;
};

// Maps an NMEA satellite id as sent under a talker ("GP", "GL", "GA", "GB", "BD", "GQ", "QZ",
// "GN", ...) to its system and number; docs/nmea-decoding.md has the table.
SAT_ID MapSatellite(std::string_view talker, unsigned nmeaId);

// The talker whose numbering a GSA system id (NMEA 4.10, 1-6) stands for; empty when unknown.
std::string_view TalkerOfSystemId(unsigned systemId);

}  // namespace devio
