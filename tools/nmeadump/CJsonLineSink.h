#pragma once
#include <cstdio>
#include <string>

#include "platform/devio/nmea/CLiveDataDecoder.h"
#include "platform/devio/nmea/ILiveDataSink.h"

// Writes each live-data record as one JSON object per line.
class CJsonLineSink : public devio::ILiveDataSink {
public:
    explicit CJsonLineSink(std::FILE* out) : m_out(out) {}

    void OnPosition(const devio::POSITION_RECORD& position) override;
    void OnSatList(const devio::SATLIST_RECORD& satellites) override;
    void OnDateTime(const devio::DATETIME_RECORD& dateTime) override;
    void OnDataLink(const devio::DATALINK_RECORD& link) override;

    void WriteStats(const devio::LIVEDATA_COUNTERS& counters);

private:
    void WriteLine();

    std::FILE* m_out;
    std::string m_line;                   // reused for every record
};
