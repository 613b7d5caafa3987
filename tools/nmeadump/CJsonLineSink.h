#pragma once
#include <cstdio>

#include "platform/devio/nmea/CLiveDataDecoder.h"
#include "platform/devio/nmea/ILiveDataSink.h"
#include "tools/nmeadump/CJsonWriter.h"

// Writes each live-data record as one JSON object per line, in the records' own terms.
class CJsonLineSink : public devio::ILiveDataSink {
public:
    explicit CJsonLineSink(CJsonWriter& out) : m_out(out) {}

    void OnPosition(const devio::POSITION_RECORD& position) override;
    void OnSatList(const devio::SATLIST_RECORD& satellites) override;
    void OnDateTime(const devio::DATETIME_RECORD& dateTime) override;
    void OnDataLink(const devio::DATALINK_RECORD& link) override;

    void WriteStats(const devio::LIVEDATA_COUNTERS& counters);

private:
    CJsonWriter& m_out;
};
