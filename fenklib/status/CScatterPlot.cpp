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
    m_span = std::clamp(Span() * std::pow(0.8, steps), 0.001, 10000.0);
    m_autoFit = false;
    update();
}

void CScatterPlot::FitToSamples() {
    m_autoFit = true;
    update();
}

// The farthest sample from the mean with a margin, never below a centimetre.
double CScatterPlot::FittedSpan() const {
    const geodesy::Enu mean = m_samples.Mean();
    double farthest = 0;
    for (const auto& s : m_samples.Samples())
        farthest = std::max(farthest, std::hypot(s.enu.east - mean.east, s.enu.north - mean.north));
    return std::max(0.01, farthest * 1.25);
}

void CScatterPlot::paintEvent(QPaintEvent*) {
    QPainter p(this);
    p.fillRect(rect(), Qt::white);
    const QPointF c(width() / 2.0, height() / 2.0);
    const double half = std::max(1, std::min(width(), height()) / 2 - 4);
    const double span = Span();
    const double scale = half / span;   // pixels per metre
    p.setPen(QColor(200, 200, 200));
    p.drawLine(QPointF(c.x() - half, c.y()), QPointF(c.x() + half, c.y()));
    p.drawLine(QPointF(c.x(), c.y() - half), QPointF(c.x(), c.y() + half));
    const geodesy::Enu mean = m_samples.Mean();
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(0, 90, 200));
    for (const auto& s : m_samples.Samples())
        p.drawEllipse(QPointF(c.x() + (s.enu.east - mean.east) * scale, c.y() - (s.enu.north - mean.north) * scale), 2, 2);
    p.setBrush(Qt::NoBrush);
    // Scale bar: the largest 1-2-5 length that fits in a quarter of the width.
    const double target = span / 2;
    const double decade = std::pow(10.0, std::floor(std::log10(target)));
    double bar = decade;
    for (const double m : {2.0, 5.0})
        if (decade * m <= target) bar = decade * m;
    p.setPen(Qt::black);
    const QPointF start(8, height() - 8);
    p.drawLine(start, start + QPointF(bar * scale, 0));
    p.drawText(start + QPointF(0, -4), QLocale().toString(bar, 'g', 3) + LoadResString(IDS_METRES).ToQString());
}
