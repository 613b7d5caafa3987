#include "fenklib/status/PositionSamples.h"

#include <algorithm>
#include <cmath>
#include <vector>

void CPositionSamples::Add(const devio::POSITION_RECORD& r, const QDateTime& time) {
    if (!r.xyzValid || !std::isfinite(r.x) || !std::isfinite(r.y) || !std::isfinite(r.z)) return;
    if (r.IsHeld()) {
        ++m_heldLeftOut;
        return;
    }
    const geodesy::Cartesian xyz{r.x, r.y, r.z};
    if (!m_origin) m_origin = geodesy::ToGeodetic(xyz);
    if (m_samples.size() >= m_capacity) m_samples.pop_front();
    m_samples.push_back({time, geodesy::ToEnu(*m_origin, xyz)});
}

void CPositionSamples::Reset() {
    m_samples.clear();
    m_origin.reset();
    m_heldLeftOut = 0;
}

void CPositionSamples::DropOlderThan(const QDateTime& limit) {
    while (!m_samples.empty() && m_samples.front().time < limit) m_samples.pop_front();
}

geodesy::Enu CPositionSamples::Mean() const {
    geodesy::Enu m{0, 0, 0};
    if (m_samples.empty()) return m;
    for (const SAMPLE& s : m_samples) {
        m.east += s.enu.east;
        m.north += s.enu.north;
        m.up += s.enu.up;
    }
    const double n = static_cast<double>(m_samples.size());
    return {m.east / n, m.north / n, m.up / n};
}

CPositionSamples::STATISTICS CPositionSamples::Statistics() const {
    STATISTICS st;
    st.count = m_samples.size();
    if (st.count == 0) return st;
    st.mean = Mean();
    std::vector<double> radii;
    radii.reserve(st.count);
    geodesy::Enu sq{0, 0, 0};
    for (const SAMPLE& s : m_samples) {
        const double e = s.enu.east - st.mean.east, n = s.enu.north - st.mean.north, u = s.enu.up - st.mean.up;
        sq.east += e * e;
        sq.north += n * n;
        sq.up += u * u;
        radii.push_back(std::hypot(e, n));
    }
    const double divisor = st.count > 1 ? static_cast<double>(st.count - 1) : 1.0;
    st.deviation = {std::sqrt(sq.east / divisor), std::sqrt(sq.north / divisor), std::sqrt(sq.up / divisor)};
    std::sort(radii.begin(), radii.end());
    // The smallest radius holding the share of the samples (nearest rank).
    const auto percentile = [&](double share) {
        const size_t rank = static_cast<size_t>(std::ceil(share * static_cast<double>(radii.size())));
        return radii[std::clamp<size_t>(rank, 1, radii.size()) - 1];
    };
    st.cep50 = percentile(0.50);
    st.cep95 = percentile(0.95);
    return st;
}
