#include "fenklib/status/CTimeChart.h"

#include <QLocale>
#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <cmath>

#include "fenklib/frame/LibraryHelpers.h"
#include "fenklib/resources/StringIds.h"
#include "fenklib/status/PositionSamples.h"

CTimeChart::CTimeChart(QWidget* parent, const CPositionSamples& samples, const int& windowSeconds)
    : QWidget(parent), m_samples(samples), m_windowSeconds(windowSeconds) {}

void CTimeChart::paintEvent(QPaintEvent*) {
    QPainter p(this);
    p.fillRect(rect(), Qt::white);
    const auto& samples = m_samples.Samples();
    const double midY = height() / 2.0;
    p.setPen(QColor(200, 200, 200));
    p.drawLine(QPointF(0, midY), QPointF(width(), midY));
    if (samples.empty()) return;
    const geodesy::Enu mean = m_samples.Mean();
    double largest = 0.001;
    for (const auto& s : samples)
        largest = std::max({largest, std::fabs(s.enu.east - mean.east), std::fabs(s.enu.north - mean.north), std::fabs(s.enu.up - mean.up)});
    const double yScale = (height() / 2.0 - 12) / largest;
    const QDateTime end = samples.back().time;
    const double xScale = width() / (m_windowSeconds * 1000.0);
    const auto trace = [&](const QColor& colour, double geodesy::Enu::*axis, double meanValue) {
        QPainterPath path;
        bool first = true;
        for (const auto& s : samples) {
            const QPointF pt(width() - end.msecsTo(s.time) * -xScale, midY - (s.enu.*axis - meanValue) * yScale);
            if (first) path.moveTo(pt);
            else path.lineTo(pt);
            first = false;
        }
        p.setPen(QPen(colour, 1));
        p.drawPath(path);
    };
    p.setRenderHint(QPainter::Antialiasing);
    trace(QColor(200, 40, 40), &geodesy::Enu::east, mean.east);
    trace(QColor(40, 150, 40), &geodesy::Enu::north, mean.north);
    trace(QColor(40, 60, 200), &geodesy::Enu::up, mean.up);
    p.setPen(Qt::black);
    p.drawText(QPointF(4, 12), QStringLiteral("±") + QLocale().toString(largest, 'f', 3) + LoadResString(IDS_METRES).ToQString());
}
