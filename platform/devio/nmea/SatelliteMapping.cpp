#include "platform/devio/nmea/SatelliteMapping.h"

#include <array>

#include "platform/devio/SatelliteRecord.h"

namespace devio {

namespace {

using Sys = SATELLITE_RECORD::System;

// One block of ids: [first, last] maps to system, number = id - offset.
struct ID_RANGE {
    unsigned first;
    unsigned last;
    Sys system;
    int offset;
};

// Ids under GP, GN and other mixed talkers. SBAS is given as its PRN (120-151); GLONASS as
// its slot. QZSS is 193-200 here because 201 and 202 are BeiDou C01 and C02 in the older
// numbering, and those are real geostationary satellites.
constexpr std::array kMixedIds{
    ID_RANGE{1, 32, Sys::GPS, 0},         ID_RANGE{33, 64, Sys::SBAS, -87},
    ID_RANGE{65, 96, Sys::GLO, 64},       ID_RANGE{193, 200, Sys::QZSS, 0},
    ID_RANGE{201, 263, Sys::BeiDou, 200}, ID_RANGE{301, 336, Sys::Galileo, 300},
    ID_RANGE{401, 463, Sys::BeiDou, 400},
};

SAT_ID Map(Sys system, unsigned id, int offset) { return SAT_ID{system, static_cast<int>(id) - offset}; }

SAT_ID MapMixed(unsigned id)
{
    for (const ID_RANGE& range : kMixedIds) {
        if (id >= range.first && id <= range.last)
            return Map(range.system, id, range.offset);
    }
    return SAT_ID{Sys::Unused, static_cast<int>(id)};
}

// Talkers are two letters; compared by hand, as this runs for every satellite block.
bool Same(std::string_view talker, const char* name)
{
    return talker.size() == 2 && talker[0] == name[0] && talker[1] == name[1];
}

bool Is(std::string_view talker, const char* a, const char* b = nullptr)
{
    return Same(talker, a) || (b != nullptr && Same(talker, b));
}

}  // namespace

SAT_ID MapSatellite(std::string_view talker, unsigned id)
{
    if (id == 0)
        return SAT_ID{Sys::Unused, 0};
    if (Is(talker, "GL"))
        return Map(Sys::GLO, id, id > 64 ? 64 : 0);
    // Galileo: its own 1-36, the 301+ of mixed talkers, and 101+ as some chipsets send it.
    if (Is(talker, "GA"))
        return Map(Sys::Galileo, id, id > 300 ? 300 : (id > 100 ? 100 : 0));
    if (Is(talker, "GB", "BD"))
        return Map(Sys::BeiDou, id, id > 400 ? 400 : (id > 200 ? 200 : 0));
    if (Is(talker, "GQ", "QZ"))
        return Map(Sys::QZSS, id, id <= 10 ? -192 : 0);
    if (Is(talker, "GI"))
        return SAT_ID{Sys::Unused, static_cast<int>(id)};  // NavIC has no system code yet
    return MapMixed(id);
}

std::string_view TalkerOfSystemId(unsigned systemId)
{
    static constexpr std::array<std::string_view, 7> kTalkers{"", "GP", "GL", "GA", "GB", "GQ", "GI"};
    return systemId < kTalkers.size() ? kTalkers[systemId] : std::string_view();
}

}  // namespace devio
