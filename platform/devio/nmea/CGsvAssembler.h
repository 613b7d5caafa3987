#pragma once
#include <cstdint>
#include <string_view>
#include <vector>

#include "platform/devio/SatelliteRecord.h"

namespace devio {

// A complete GSV group: all satellites of one talker's "n of total" sequence.
struct GSV_GROUP {
    char talker[2] = {0, 0};
    std::uint8_t total = 0;
    std::uint8_t next = 0;                // the part number expected next; 0 after a last part
    bool collecting = false;              // false while parts of a broken group trickle in
    std::uint8_t firstSignal = 0;         // signal id of part 1; keys repeats within an epoch
    std::vector<SATELLITE_RECORD> satellites;
};

// Puts GSV parts together per talker. Parts of other talkers and other sentences may come in
// between; a part out of order abandons the group, which is counted.
class CGsvAssembler {
public:
    // Returns the group when this part completes it, else nullptr. The group stays valid
    // until the next call.
    const GSV_GROUP* Add(std::string_view talker, unsigned total, unsigned part,
                         std::uint8_t signalId, const SATELLITE_RECORD* satellites,
                         std::size_t count);

    std::uint64_t BrokenGroups() const { return m_brokenGroups; }

private:
    GSV_GROUP& GroupOf(std::string_view talker);

    std::vector<GSV_GROUP> m_groups;      // one per talker seen; talkers are few
    std::uint64_t m_brokenGroups = 0;
};

}  // namespace devio
