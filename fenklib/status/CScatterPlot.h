#pragma once
#include <QWidget>

class CPositionSamples;

// Draws the samples' east/north offsets from their mean; the half-width shown is the zoom.
class CScatterPlot : public QWidget {
public:
    CScatterPlot(QWidget* parent, const CPositionSamples& samples);

    // Half of the width shown, in metres: fitted to the samples until the user zooms.
    double Span() const { return m_autoFit ? FittedSpan() : m_span; }
    void Zoom(int steps);   // positive: closer
    void FitToSamples();

protected:
    void paintEvent(QPaintEvent*) override;

private:
    double FittedSpan() const;

    const CPositionSamples& m_samples;
    double m_span = 1.0;
    bool m_autoFit = true;
};
