#pragma once
#include <QFont>
#include <QImage>
#include <QWidget>
#include <optional>

#include "platform/devio/SatelliteRecord.h"

// The polar chart of the sky plot page. The background (rings, labels, axes, mask, north) is
// drawn once per size and mask into an off-screen image; a new satellite list only copies it
// and draws one symbol and one number per satellite.
class CSkyPlot : public QWidget {
public:
    explicit CSkyPlot(QWidget* parent);

    void SetSatellites(const devio::SATLIST_RECORD& list, double elevationMask);
    // The chart as it is painted at the control's size (also what paintEvent puts on screen).
    QImage RenderFrame();
    // The same picture with the cached background thrown away first (what a plot without the
    // cache would pay per list).
    QImage RenderFull();

    const devio::SATLIST_RECORD& Satellites() const { return m_list; }
    int Radius() const { return m_radius; }
    QPoint Centre() const { return {m_cx, m_cy}; }
    int RingCount() const { return RingCountFor(m_radius); }
    static int RingCountFor(int radius) { return radius / 9 < 21 ? 3 : 9; }

protected:
    void paintEvent(QPaintEvent*) override;

private:
    void EnsureBackground();
    void DrawBackground(QImage& image);
    void DrawSatellites(QImage& frame) const;

    devio::SATLIST_RECORD m_list;
    double m_mask = 0;   // degrees; negative: none
    QImage m_background;
    QSize m_backgroundSize;
    std::optional<double> m_backgroundMask;
    std::optional<QFont> m_boldFont, m_normalFont;
    QFont m_labelFont;
    int m_cx = 0, m_cy = 0, m_radius = 0;
};
