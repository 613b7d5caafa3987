#include "platform/devio/nmea/CGsvAssembler.h"

namespace devio {

const GSV_GROUP* CGsvAssembler::Add(std::string_view talker, unsigned total, unsigned part,
                                    std::uint8_t signalId, const SATELLITE_RECORD* satellites,
                                    std::size_t count)
{
    GSV_GROUP& group = GroupOf(talker);
    const bool inSequence = part == group.next && total == group.total;
    if (part == 1) {
        if (group.collecting)
            ++m_brokenGroups;
        group.collecting = true;
        group.total = static_cast<std::uint8_t>(total);
        group.firstSignal = signalId;
        group.satellites.clear();
    } else if (!inSequence || !group.collecting) {
        // The rest of a broken group follows in sequence; count the group once, not per part.
        if (group.collecting || !inSequence)
            ++m_brokenGroups;
        group.collecting = false;
        group.total = static_cast<std::uint8_t>(total);
        group.next = static_cast<std::uint8_t>(part < total ? part + 1 : 0);
        group.satellites.clear();
        return nullptr;
    }
    group.satellites.insert(group.satellites.end(), satellites, satellites + count);
    if (part < total) {
        group.next = static_cast<std::uint8_t>(part + 1);
        return nullptr;
    }
    group.next = 0;
    group.collecting = false;
    return &group;
}

GSV_GROUP& CGsvAssembler::GroupOf(std::string_view talker)
{
    for (GSV_GROUP& group : m_groups) {
        if (group.talker[0] == talker[0] && group.talker[1] == talker[1])
            return group;
    }
    GSV_GROUP& group = m_groups.emplace_back();
    group.talker[0] = talker[0];
    group.talker[1] = talker[1];
    return group;
}

}  // namespace devio
