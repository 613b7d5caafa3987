#include "fenklib/status/PositionSummary.h"

#include <QLocale>
#include <QStringList>
#include <cmath>
#include <iterator>

#include "fenklib/frame/LibraryHelpers.h"
#include "fenklib/resources/StringIds.h"
#include "fenklib/status/SatelliteLook.h"

namespace {

// GGA fix quality names, by quality.
constexpr unsigned kFixNames[] = {IDS_FIX_NONE,      IDS_FIX_SINGLE,    IDS_FIX_DGPS,
                                  IDS_FIX_PPS,       IDS_FIX_RTK_FIXED, IDS_FIX_RTK_FLOAT,
                                  IDS_FIX_ESTIMATED, IDS_FIX_MANUAL,    IDS_FIX_SIMULATION};
constexpr unsigned kNoHdop = 0xFFFFu;

// Shown to a person: the user's own number format; unknown values are a dash.
QString Number(double v, int decimals) {
    return std::isfinite(v) ? QLocale().toString(v, 'f', decimals) : QStringLiteral("-");
}

QString TextOf(unsigned id) { return LoadResString(id).ToQString(); }

}  // namespace

void CPositionSummary::SetSatellites(const devio::SATLIST_RECORD& list) {
    m_total = satcount::CountAll(list);
    m_perSystem = satcount::CountPerSystem(list);
}

std::vector<CPositionSummary::ROW> CPositionSummary::Rows(ECoordSystem coords, bool bothForms) const {
    std::vector<ROW> rows;
    AddCoordinates(rows, coords, bothForms);
    AddSolution(rows);
    AddSatellites(rows);
    AddAccuracy(rows);
    rows.push_back({IDS_UTC, m_utc.isValid() ? m_utc.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss.zzz")) : QStringLiteral("-")});
    return rows;
}

void CPositionSummary::AddCoordinates(std::vector<ROW>& rows, ECoordSystem coords, bool bothForms) const {
    const bool geo = m_position && m_position->geoValid;
    const bool xyz = m_position && m_position->xyzValid;
    const double nan = devio::POSITION_RECORD::kUnknown;
    const bool cartesian = coords == COORD_CARTESIAN;
    if (!cartesian || bothForms) {
        rows.push_back({IDS_STATUS_LATITUDE, Number(geo ? m_position->lat : nan, 9)});
        rows.push_back({IDS_STATUS_LONGITUDE, Number(geo ? m_position->lon : nan, 9)});
        rows.push_back({IDS_HEIGHT, Number(geo ? m_position->height : nan, 3)});
    }
    if (cartesian || bothForms) {
        rows.push_back({IDS_COORD_X, Number(xyz ? m_position->x : nan, 3)});
        rows.push_back({IDS_COORD_Y, Number(xyz ? m_position->y : nan, 3)});
        rows.push_back({IDS_COORD_Z, Number(xyz ? m_position->z : nan, 3)});
    }
}

void CPositionSummary::AddSolution(std::vector<ROW>& rows) const {
    if (!m_position || (!m_position->geoValid && !m_position->xyzValid)) {
        rows.push_back({IDS_FIX_QUALITY, TextOf(IDS_FIX_NONE)});
        return;
    }
    const std::uint32_t extra = m_position->geoValid ? m_position->geoExtra : m_position->xyzExtra;
    const unsigned quality = extra & 0xFFu;
    rows.push_back({IDS_FIX_QUALITY, quality < std::size(kFixNames) ? TextOf(kFixNames[quality]) : QString::number(quality)});
    const unsigned type = m_position->IsHeld() ? IDS_SOLUTION_HELD
                          : std::isfinite(m_position->height) ? IDS_SOLUTION_3D : IDS_SOLUTION_2D;
    rows.push_back({IDS_SOLUTION_TYPE, TextOf(type)});
}

void CPositionSummary::AddSatellites(std::vector<ROW>& rows) const {
    const auto pair = [](std::size_t used, std::size_t tracked) { return QStringLiteral("%1 / %2").arg(used).arg(tracked); };
    if (m_total) {
        rows.push_back({IDS_SATS_USED_TRACKED, pair(m_total->used, m_total->tracked)});
    } else if (m_position && (m_position->geoValid || m_position->xyzValid)) {
        // No list yet: the count the fix itself gives.
        const std::uint32_t extra = m_position->geoValid ? m_position->geoExtra : m_position->xyzExtra;
        rows.push_back({IDS_SATS_USED_TRACKED, QStringLiteral("%1 / -").arg((extra >> 8) & 0xFFu)});
    } else {
        rows.push_back({IDS_SATS_USED_TRACKED, QStringLiteral("-")});
    }
    for (const auto& c : m_perSystem) {
        const unsigned name = satlook::SystemNameId(c.system);
        rows.push_back({name ? name : IDS_SYSTEM_UNUSED, pair(c.used, c.tracked)});
    }
}

void CPositionSummary::AddAccuracy(std::vector<ROW>& rows) const {
    const double nan = devio::POSITION_RECORD::kUnknown;
    const devio::POSITION_RECORD none;
    const devio::POSITION_RECORD& p = m_position ? *m_position : none;
    const std::uint32_t extra = p.geoValid ? p.geoExtra : p.xyzExtra;
    const bool fix = p.geoValid || p.xyzValid;
    const unsigned hdop = extra >> 16;
    rows.push_back({IDS_PDOP, Number(p.pdop, 1)});
    rows.push_back({IDS_HDOP, Number(fix && hdop != kNoHdop ? hdop / 100.0 : nan, 2)});
    rows.push_back({IDS_VDOP, Number(p.vdop, 1)});
    if (std::isfinite(p.correctionAge)) rows.push_back({IDS_CORRECTION_AGE, Number(p.correctionAge, 1)});
    // The receiver's own error estimates, when it sends them.
    if (std::isfinite(p.sigmaLat)) rows.push_back({IDS_SIGMA_LAT, Number(p.sigmaLat, 3)});
    if (std::isfinite(p.sigmaLon)) rows.push_back({IDS_SIGMA_LON, Number(p.sigmaLon, 3)});
    if (std::isfinite(p.sigmaHeight)) rows.push_back({IDS_SIGMA_HEIGHT, Number(p.sigmaHeight, 3)});
    if (p.flags & devio::POSITION_RECORD::kSeparationMissing)
        rows.push_back({IDS_GEOID_SEPARATION, TextOf(IDS_GEOID_MISSING)});
    else if (p.flags & devio::POSITION_RECORD::kSeparationModelled)
        rows.push_back({IDS_GEOID_SEPARATION, TextOf(IDS_GEOID_MODELLED).arg(Number(p.geoidSeparation, 3))});
    else if (std::isfinite(p.geoidSeparation))
        rows.push_back({IDS_GEOID_SEPARATION, Number(p.geoidSeparation, 3)});
}

basekit::ustring CPositionSummary::Text(const std::vector<ROW>& rows) {
    QString text;
    for (const ROW& row : rows) text += LoadResString(row.label).ToQString() + u'\t' + row.value + u'\n';
    return basekit::ustring::FromQString(text);
}

QString CPositionSummary::StatisticsNote(const devio::POSITION_RECORD& latest, size_t heldLeftOut) {
    QStringList lines;
    if (std::isfinite(latest.sigmaLat) || std::isfinite(latest.sigmaLon) || std::isfinite(latest.sigmaHeight))
        lines << TextOf(IDS_RECEIVER_SIGMA).arg(Number(latest.sigmaLat, 3), Number(latest.sigmaLon, 3), Number(latest.sigmaHeight, 3));
    if (heldLeftOut > 0) lines << TextOf(IDS_HELD_LEFT_OUT).arg(heldLeftOut);
    return lines.join(u'\n');
}
