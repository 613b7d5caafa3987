#include "fenklib/status/SatelliteCounts.h"

#include <map>
#include <set>
#include <utility>

namespace satcount {

namespace {

std::size_t CountTracked(const devio::SATLIST_RECORD& list) {
    std::set<std::pair<std::int32_t, std::int32_t>> seen;
    for (const auto& s : list) seen.emplace(s.system, s.number);
    return seen.size();
}

}  // namespace

std::vector<SYSTEM_COUNT> CountPerSystem(const devio::SATLIST_RECORD& list) {
    std::map<std::int32_t, devio::SATLIST_RECORD> bySystem;
    for (const auto& s : list) bySystem[s.system].push_back(s);
    std::vector<SYSTEM_COUNT> counts;
    counts.reserve(bySystem.size());
    for (const auto& [system, satellites] : bySystem)
        counts.push_back({system, devio::CountUsedSatellites(satellites), CountTracked(satellites)});
    return counts;
}

SYSTEM_COUNT CountAll(const devio::SATLIST_RECORD& list) {
    return {0, devio::CountUsedSatellites(list), CountTracked(list)};
}

}  // namespace satcount
