#pragma once
#include <array>
#include <bitset>
#include <cstdint>
#include <utility>
#include <vector>

#include "platform/devio/SatelliteRecord.h"
#include "platform/devio/nmea/CGsvAssembler.h"
#include "platform/devio/nmea/INmeaSink.h"
#include "platform/devio/nmea/SatelliteMapping.h"

namespace devio {

// The satellites of one epoch: completed GSV groups of all talkers plus the set GSA reported
// as used. The decoder decides when an epoch ends; Publish then hands the combined list out.
class CSkyView {
public:
    // A run of GSA sentences replaces the used set; the set lasts until the next run.
    void BeginUsedSet() { m_used.fill(std::bitset<kMaxNumber>()); }
    void MarkUsed(SAT_ID satellite);
    bool IsUsed(SAT_ID satellite) const;

    // False when the epoch already holds a group of this talker and signal, which means a new
    // epoch began without a time sentence in between; the caller publishes first.
    bool CanAdd(const GSV_GROUP& group) const;
    void Add(const GSV_GROUP& group);

    // Emits the combined list when the epoch holds any group, then starts a new epoch.
    void Publish(INmeaSink& sink);

private:
    static constexpr std::size_t kMaxNumber = 512;
    static constexpr std::size_t kSystems = 8;

    std::array<std::bitset<kMaxNumber>, kSystems> m_used{};
    std::vector<std::pair<std::uint16_t, std::uint8_t>> m_groupKeys;  // talker code, signal
    SATLIST_RECORD m_satellites;          // reused: publishing allocates nothing once warm
};

}  // namespace devio
