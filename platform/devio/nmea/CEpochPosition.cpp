#include "platform/devio/nmea/CEpochPosition.h"

#include <cmath>

namespace devio {

int CEpochPosition::Rank(const FIX_REPORT& fix)
{
    if (fix.source == POSITION_RECORD::SourceNone)
        return 0;
    return std::isfinite(fix.altitudeMsl) ? 2 : 1;
}

void CEpochPosition::BeginEpoch(INmeaSink& sink, std::int32_t timeOfDay)
{
    Publish(sink);
    if (m_lastKind != KindNone)
        m_closingKind = m_lastKind;
    m_lastKind = KindNone;
    if (!m_dopsThisEpoch)
        m_pdop = m_vdop = POSITION_RECORD::kUnknown;
    m_dopsThisEpoch = false;
    m_fix = FIX_REPORT{};
    m_extras = POSITION_RECORD{};
    m_published = false;
    m_heldClaim = false;
    m_timeOfDay = timeOfDay;
}

void CEpochPosition::OfferFix(INmeaSink& sink, Kind kind, const FIX_REPORT& fix)
{
    // A fix claimed with no satellite used is the receiver coasting on its last position;
    // it taints the whole epoch, whichever sentence gives the coordinates.
    if (fix.source != POSITION_RECORD::SourceNone && fix.usedKnown && fix.used == 0)
        m_heldClaim = true;
    if (!m_published) {
        const int rank = Rank(fix);
        const int held = Rank(m_fix);
        if (rank > held || (rank == held && fix.usedKnown && fix.used > m_fix.used))
            m_fix = fix;
    }
    if (std::isnan(m_extras.speed))
        m_extras.speed = fix.speed;
    if (std::isnan(m_extras.course))
        m_extras.course = fix.course;
    Noted(sink, kind);
}

void CEpochPosition::OfferVelocity(INmeaSink& sink, Kind kind, double speed, double course)
{
    if (std::isnan(m_extras.speed))
        m_extras.speed = speed;
    if (std::isnan(m_extras.course))
        m_extras.course = course;
    Noted(sink, kind);
}

void CEpochPosition::OfferErrors(INmeaSink& sink, double sigmaLat, double sigmaLon, double sigmaHeight)
{
    m_extras.sigmaLat = sigmaLat;
    m_extras.sigmaLon = sigmaLon;
    m_extras.sigmaHeight = sigmaHeight;
    Noted(sink, KindGst);
}

void CEpochPosition::OfferDops(double pdop, double vdop)
{
    m_pdop = pdop;
    m_vdop = vdop;
    m_dopsThisEpoch = true;
}

void CEpochPosition::Flush(INmeaSink& sink) { Publish(sink); }

void CEpochPosition::Noted(INmeaSink& sink, Kind kind)
{
    m_lastKind = kind;
    // Before the order is known a GGA goes out at once: it is the sentence nearly every
    // receiver sends, and a GNS before it may yet be contradicted by it (a held fix).
    const bool closes = m_closingKind != KindNone ? kind == m_closingKind : kind == KindGga;
    if (closes)
        Publish(sink);
}

void CEpochPosition::Publish(INmeaSink& sink)
{
    if (m_published || m_fix.source == POSITION_RECORD::SourceNone)
        return;
    m_published = true;
    POSITION_RECORD record = m_extras;
    record.geoValid = 1;
    record.lat = m_fix.lat;
    record.lon = m_fix.lon;
    record.source = m_fix.source;
    record.timeOfDay = m_timeOfDay;
    record.correctionAge = m_fix.correctionAge;
    record.pdop = m_pdop;
    record.vdop = m_vdop;
    record.geoExtra = POSITION_RECORD::MakeExtra(m_fix.quality, m_fix.used, m_fix.hdop);
    if (m_heldClaim)
        record.flags |= POSITION_RECORD::kHeld;
    Complete(record);
    sink.OnPosition(record);
}

void CEpochPosition::Complete(POSITION_RECORD& record)
{
    record.altitudeMsl = m_fix.altitudeMsl;
    record.geoidSeparation = m_fix.separation;
    if (std::isnan(record.altitudeMsl)) {
        record.height = POSITION_RECORD::kUnknown;
        return;
    }
    if (std::isnan(record.geoidSeparation)) {
        double modelled = 0;
        if (m_geoid.Separation(record.lat, record.lon, modelled)) {
            record.geoidSeparation = modelled;
            record.flags |= POSITION_RECORD::kSeparationModelled;
        } else {
            record.flags |= POSITION_RECORD::kSeparationMissing;
        }
    }
    // GGA altitude is above the geoid; adding the separation gives the ellipsoidal height.
    record.height = record.altitudeMsl + (std::isnan(record.geoidSeparation) ? 0.0 : record.geoidSeparation);
}

}  // namespace devio
