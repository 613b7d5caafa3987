#include "platform/devio/nmea/CSkyView.h"

#include <algorithm>

namespace devio {

namespace {

std::uint16_t TalkerCode(const GSV_GROUP& group)
{
    return static_cast<std::uint16_t>(static_cast<unsigned char>(group.talker[0]) << 8
                                      | static_cast<unsigned char>(group.talker[1]));
}

bool InRange(SAT_ID satellite, std::size_t systems, std::size_t numbers)
{
    return satellite.system > 0 && static_cast<std::size_t>(satellite.system) < systems
        && satellite.number >= 0 && static_cast<std::size_t>(satellite.number) < numbers;
}

std::uint8_t NavStatusOf(bool used, const SATELLITE_RECORD& satellite)
{
    if (used)
        return SATELLITE_RECORD::kNavUsed;
    return satellite.snr > 0 ? SATELLITE_RECORD::kNavNotUsed : SATELLITE_RECORD::kNavUndefined;
}

}  // namespace

void CSkyView::MarkUsed(SAT_ID satellite)
{
    if (InRange(satellite, kSystems, kMaxNumber))
        m_used[satellite.system].set(static_cast<std::size_t>(satellite.number));
}

bool CSkyView::IsUsed(SAT_ID satellite) const
{
    return InRange(satellite, kSystems, kMaxNumber)
        && m_used[satellite.system].test(static_cast<std::size_t>(satellite.number));
}

bool CSkyView::CanAdd(const GSV_GROUP& group) const
{
    const std::pair key{TalkerCode(group), group.firstSignal};
    return std::find(m_groupKeys.begin(), m_groupKeys.end(), key) == m_groupKeys.end();
}

void CSkyView::Add(const GSV_GROUP& group)
{
    m_groupKeys.emplace_back(TalkerCode(group), group.firstSignal);
    m_satellites.insert(m_satellites.end(), group.satellites.begin(), group.satellites.end());
}

void CSkyView::Publish(INmeaSink& sink)
{
    if (m_groupKeys.empty())
        return;
    // Used flags are set now rather than when the group arrived: some receivers send GSA
    // after GSV within the epoch.
    for (SATELLITE_RECORD& satellite : m_satellites)
        satellite.navStatus = NavStatusOf(IsUsed(SAT_ID{satellite.system, satellite.number}), satellite);
    sink.OnSatList(m_satellites);
    m_groupKeys.clear();
    m_satellites.clear();
}

}  // namespace devio
