#pragma once
#include <QWidget>

class CPositionSamples;

// Three traces (east, north, up) of deviation from the mean against time, autoscaled.
class CTimeChart : public QWidget {
public:
    CTimeChart(QWidget* parent, const CPositionSamples& samples, const int& windowSeconds);

protected:
    void paintEvent(QPaintEvent*) override;

private:
    const CPositionSamples& m_samples;
    const int& m_windowSeconds;
};
