#pragma once
#include "fenklib/frame/CDialogControls.h"
#include "fenklib/frame/CFenkPropertyPage.h"
#include "fenklib/status/PositionSamples.h"

class CTimeChart;
class QLabel;

// East, north and up deviation from the mean over a rolling window (10 minutes by default),
// scaled to the largest deviation shown; held positions are left out. Below the chart, the
// receiver's own error estimate of the latest fix when it gives one.
class CStatusPositionInTimePP : public CFenkPropertyPage {
public:
    static constexpr int kDefaultWindowSeconds = 600;

    explicit CStatusPositionInTimePP(basekit::CSmartPtr<devio::IReceiver> receiver);

    bool OnInitDialog() override;
    void OnPosition(const devio::POSITION_RECORD& record);

    const CPositionSamples& Samples() const { return m_samples; }
    // The positions as they reached the page, in order (the last ones kept).
    const std::deque<devio::POSITION_RECORD>& Received() const { return m_received; }
    QString NoteText() const;

private:
    void ShowNote();

    CDialogControls m_controls;
    CTimeChart* m_chart = nullptr;
    QLabel* m_note = nullptr;
    CPositionSamples m_samples{kDefaultWindowSeconds * 20};
    std::deque<devio::POSITION_RECORD> m_received;
    int m_windowSeconds = kDefaultWindowSeconds;
};
