#pragma once
#include <cstdint>

#include "platform/devio/PositionRecord.h"
#include "platform/devio/nmea/CGeoidModel.h"
#include "platform/devio/nmea/INmeaSink.h"

namespace devio {

// What one sentence says about the epoch's fix (GGA, GNS, RMC or GLL).
struct FIX_REPORT {
    POSITION_RECORD::Source source = POSITION_RECORD::SourceNone;
    double lat = 0, lon = 0;
    unsigned quality = 0;                 // GGA scale: 1 autonomous, 2 differential, 4 RTK fixed, ...
    unsigned used = 0;
    bool usedKnown = false;               // GGA and GNS count satellites, RMC and GLL do not
    double hdop = -1;
    double altitudeMsl = POSITION_RECORD::kUnknown;
    double separation = POSITION_RECORD::kUnknown;
    double speed = POSITION_RECORD::kUnknown;   // RMC carries its velocity in the same sentence
    double course = POSITION_RECORD::kUnknown;
    double correctionAge = POSITION_RECORD::kUnknown;
};

// Assembles one position per epoch from whatever mix of GGA, GNS, RMC, GLL, VTG and GST a
// receiver sends. The richest fix wins (a 3-D GGA/GNS over a 2-D RMC/GLL; among equals the one
// counting more satellites, which is the combined talker's), speed and errors are added from
// the other sentences.
//
// When to publish: the sentence kind that closed the previous epoch's position reports closes
// this one too, so a receiver sending GST after GGA gets both in one record without waiting
// for the next epoch. Before any order is known a GGA goes out at once; an epoch left open
// (its closing sentence lost) goes out when the next one begins.
class CEpochPosition {
public:
    enum Kind : std::uint8_t { KindNone, KindGga, KindGns, KindRmc, KindGll, KindVtg, KindGst };

    // Publishes what the ending epoch holds and starts the next one.
    void BeginEpoch(INmeaSink& sink, std::int32_t timeOfDay);
    void OfferFix(INmeaSink& sink, Kind kind, const FIX_REPORT& fix);
    void OfferVelocity(INmeaSink& sink, Kind kind, double speed, double course);
    void OfferErrors(INmeaSink& sink, double sigmaLat, double sigmaLon, double sigmaHeight);
    // GSA's dilutions. A receiver may send its GSA after the position has gone out, so the
    // latest ones stand for the following epoch too, until an epoch passes without any.
    void OfferDops(double pdop, double vdop);
    // End of stream.
    void Flush(INmeaSink& sink);

private:
    static int Rank(const FIX_REPORT& fix);
    void Noted(INmeaSink& sink, Kind kind);
    void Publish(INmeaSink& sink);
    void Complete(POSITION_RECORD& record);

    CGeoidModel m_geoid;
    FIX_REPORT m_fix;                     // best fix of the epoch; source None while there is none
    POSITION_RECORD m_extras;             // speed, course and errors gathered so far
    std::int32_t m_timeOfDay = -1;
    bool m_published = false;
    bool m_heldClaim = false;             // some sentence of the epoch claimed a fix with no satellite
    Kind m_lastKind = KindNone;           // the epoch's last position sentence so far
    Kind m_closingKind = KindNone;        // learned from the previous epoch
    double m_pdop = POSITION_RECORD::kUnknown;
    double m_vdop = POSITION_RECORD::kUnknown;
    bool m_dopsThisEpoch = false;
};

}  // namespace devio
