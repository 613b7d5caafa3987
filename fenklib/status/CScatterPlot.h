#pragma once
#include <QWidget>

class CPositionSamples;

// Draws the samples' east/north offsets from their mean; the half-width shown is the zoom.
class CScatterPlot : public QWidget {
public:
    CScatterPlot(QWidget* parent, const CPositionSamples& samples);

    // Half of the width shown, in metres.
    double Span() const { return m_span; }
    void Zoom(int steps);   // positive: closer

protected:
    void paintEvent(QPaintEvent*) override;

private:
    const CPositionSamples& m_samples;
    double m_span = 1.0;
};
