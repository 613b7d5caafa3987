#pragma once
#include <QDateTime>
#include <QString>
#include <optional>
#include <vector>

#include "fenklib/frame/CFenkGlobalSettings.h"
#include "fenklib/status/SatelliteCounts.h"
#include "platform/basekit/ustring.h"
#include "platform/devio/PositionRecord.h"

// What the position page says about the current fix, row by row: coordinates in the library's
// coordinate system (or both forms), fix quality and solution type, satellites used and tracked
// per system, dilutions, UTC, age of corrections, the receiver's error estimates and where the
// geoid separation came from. The page lists the rows and copies them as text.
class CPositionSummary {
public:
    struct ROW {
        unsigned label;   // string number
        QString value;
    };

    void SetPosition(const devio::POSITION_RECORD& record) { m_position = record; }
    void SetSatellites(const devio::SATLIST_RECORD& list);
    void SetUtc(const QDateTime& utc) { m_utc = utc; }
    const QDateTime& Utc() const { return m_utc; }

    // A held position (a fix claimed with no satellite used) is shown greyed.
    bool IsHeld() const { return m_position && m_position->IsHeld(); }
    std::vector<ROW> Rows(ECoordSystem coords, bool bothForms) const;
    // The rows as lines of "label<TAB>value".
    static basekit::ustring Text(const std::vector<ROW>& rows);
    // What the statistics pages add beside their own figures: the receiver's error estimate of
    // the latest fix, when it gave one, and how many held positions were left out. Empty
    // lines are left out.
    static QString StatisticsNote(const devio::POSITION_RECORD& latest, size_t heldLeftOut);

private:
    void AddCoordinates(std::vector<ROW>& rows, ECoordSystem coords, bool bothForms) const;
    void AddSolution(std::vector<ROW>& rows) const;
    void AddSatellites(std::vector<ROW>& rows) const;
    void AddAccuracy(std::vector<ROW>& rows) const;

    std::optional<devio::POSITION_RECORD> m_position;
    std::optional<satcount::SYSTEM_COUNT> m_total;   // set once a satellite list arrived
    std::vector<satcount::SYSTEM_COUNT> m_perSystem;
    QDateTime m_utc;
};
