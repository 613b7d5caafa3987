#include "fenklib/status/CScatterPlot.h"

#include <QLocale>
#include <QPainter>
#include <algorithm>
#include <cmath>

#include "fenklib/frame/LibraryHelpers.h"
#include "fenklib/resources/StringIds.h"
#include "fenklib/status/PositionSamples.h"

CScatterPlot::CScatterPlot(QWidget* parent, const CPositionSamples& samples) : QWidget(parent), m_samples(samples) {}

void CScatterPlot::Zoom(int steps) {
    m_span = std::clamp(m_span * std::pow(0.8, steps), 0.001, 10000.0);
    update();
}

void CScatterPlot::paintEvent(QPaintEvent*) {
    QPainter p(this);
    p.fillRect(rect(), Qt::white);
    const QPointF c(width() / 2.0, height() / 2.0);
    const double half = std::max(1, std::min(width(), height()) / 2 - 4);
    const double scale = half / m_span;   // pixels per metre
    p.setPen(QColor(200, 200, 200));
    p.drawLine(QPointF(c.x() - half, c.y()), QPointF(c.x() + half, c.y()));
    p.drawLine(QPointF(c.x(), c.y() - half), QPointF(c.x(), c.y() + half));
    const wgs84::ENU mean = m_samples.Mean();
    p.setPen(QColor(0, 90, 200));
    for (const auto& s : m_samples.Samples())
        p.drawPoint(QPointF(c.x() + (s.enu.east - mean.east) * scale, c.y() - (s.enu.north - mean.north) * scale));
    // Scale bar: the largest 1-2-5 length that fits in a quarter of the width.
    const double target = m_span / 2;
    const double decade = std::pow(10.0, std::floor(std::log10(target)));
    double bar = decade;
    for (const double m : {2.0, 5.0})
        if (decade * m <= target) bar = decade * m;
    p.setPen(Qt::black);
    const QPointF start(8, height() - 8);
    p.drawLine(start, start + QPointF(bar * scale, 0));
    p.drawText(start + QPointF(0, -4), QLocale().toString(bar, 'g', 3) + LoadResString(IDS_METRES).ToQString());
}
