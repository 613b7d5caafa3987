#pragma once
#include <cstdint>
#include <vector>

#include "platform/devio/SatelliteRecord.h"

// Satellites used and tracked per system, as the position page shows them. A list may hold a
// row per signal; a satellite tracked (or used) on two signals is one satellite.
namespace satcount {

struct SYSTEM_COUNT {
    std::int32_t system = 0;
    std::size_t used = 0;
    std::size_t tracked = 0;
};

// One entry per system present in the list, in system order.
std::vector<SYSTEM_COUNT> CountPerSystem(const devio::SATLIST_RECORD& list);
// The whole list's satellites, each counted once.
SYSTEM_COUNT CountAll(const devio::SATLIST_RECORD& list);

}  // namespace satcount
