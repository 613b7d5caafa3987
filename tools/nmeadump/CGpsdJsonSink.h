#pragma once
#include "platform/devio/nmea/ILiveDataSink.h"
#include "tools/nmeadump/CJsonWriter.h"

// Writes positions and satellite lists in the shape of gpsd's TPV and SKY reports, so that
// nmeadump's output and the reference decoder's can be put side by side with diff. The
// mapping of each field is in README.md.
class CGpsdJsonSink : public devio::ILiveDataSink {
public:
    explicit CGpsdJsonSink(CJsonWriter& out) : m_out(out) {}

    void OnPosition(const devio::POSITION_RECORD& position) override;
    void OnSatList(const devio::SATLIST_RECORD& satellites) override;
    // Dates are kept for the TPV time; they make no line of their own.
    void OnDateTime(const devio::DATETIME_RECORD& dateTime) override;

private:
    CJsonWriter& m_out;
    devio::DATETIME_RECORD m_date;        // last date seen; year 0 while none
};
