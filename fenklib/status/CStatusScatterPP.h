#pragma once
#include "fenklib/frame/CDialogControls.h"
#include "fenklib/frame/CFenkPropertyPage.h"
#include "fenklib/status/PositionSamples.h"

class QLabel;
class CScatterPlot;

// Horizontal positions around their mean in metres with a scale bar; the wheel zooms; the
// occupation statistics (count, mean, deviations, CEP50/95) below, with a reset.
class CStatusScatterPP : public CFenkPropertyPage {
public:
    static constexpr size_t kMaxSamples = 36000;   // half an hour at 20 Hz

    explicit CStatusScatterPP(basekit::CSmartPtr<devio::IReceiver> receiver);

    bool OnInitDialog() override;
    void OnPosition(const devio::POSITION_RECORD& record);
    void OnMouseWheel(int delta);
    void OnReset();

    const CPositionSamples& Samples() const { return m_samples; }
    QString StatisticsText() const;
    double MetresAcross() const;

private:
    void Show();

    CDialogControls m_controls;
    CScatterPlot* m_plot = nullptr;
    QLabel* m_statistics = nullptr;
    CPositionSamples m_samples{kMaxSamples};
    devio::POSITION_RECORD m_latest;
};
