#pragma once
#include <QDateTime>
#include <deque>
#include <optional>

#include "platform/devio/PositionRecord.h"
#include "platform/geodesy/Wgs84.h"

// The recent fixes of an occupation as east/north/up offsets from the first one, with the
// statistics a surveyor reads off them. Bounded: the oldest samples leave first.
class CPositionSamples {
public:
    struct SAMPLE {
        QDateTime time;
        geodesy::Enu enu;
    };
    struct STATISTICS {
        size_t count = 0;
        geodesy::Enu mean{0, 0, 0};
        geodesy::Enu deviation{0, 0, 0};   // standard deviation per axis
        double cep50 = 0, cep95 = 0;     // horizontal radius around the mean holding 50 / 95 %
    };

    explicit CPositionSamples(size_t capacity) : m_capacity(capacity) {}

    // Takes a record whose Cartesian half is present and finite. A held position (the receiver
    // coasting on its last fix) would pile up on one point and shrink the spread: it is left
    // out and counted.
    void Add(const devio::POSITION_RECORD& record, const QDateTime& time);
    size_t HeldLeftOut() const { return m_heldLeftOut; }
    void Reset();
    // Drops samples older than window before now.
    void DropOlderThan(const QDateTime& limit);

    const std::deque<SAMPLE>& Samples() const { return m_samples; }
    STATISTICS Statistics() const;
    geodesy::Enu Mean() const;

private:
    size_t m_capacity;
    std::optional<geodesy::Geodetic> m_origin;
    std::deque<SAMPLE> m_samples;
    size_t m_heldLeftOut = 0;
};
