#include "fenklib/status/CSkyPlot.h"

#include <QPainter>
#include <cmath>

#include "fenklib/frame/LibraryHelpers.h"
#include "fenklib/resources/StringIds.h"
#include "fenklib/status/SatelliteLook.h"

namespace {

constexpr double kPi = 3.141592653589793;
constexpr int kMargin = 3;

QFont ChartFont(int weight) {
    QFont font(QStringLiteral("Arial"));
    font.setPixelSize(11);
    font.setWeight(static_cast<QFont::Weight>(weight));
    font.setStyleStrategy(QFont::PreferAntialias);
    return font;
}

int Round(double v) { return static_cast<int>(v + 0.5); }

// One line of text horizontally centred on x with its top at y.
void DrawTopCentred(QPainter& p, const QString& text, int x, int y) {
    const QFontMetrics metrics(p.font());
    p.drawText(QPoint(x - metrics.horizontalAdvance(text) / 2, y + metrics.ascent()), text);
}

}  // namespace

CSkyPlot::CSkyPlot(QWidget* parent) : QWidget(parent) {
    setAttribute(Qt::WA_OpaquePaintEvent);
    // Numbers without blending, so each keeps its system's colour exactly.
    m_labelFont = font();
    m_labelFont.setStyleStrategy(QFont::NoAntialias);
}

void CSkyPlot::SetSatellites(const devio::SATLIST_RECORD& list, double elevationMask) {
    m_list = list;
    m_mask = elevationMask;
    update();
}

void CSkyPlot::EnsureBackground() {
    if (!m_background.isNull() && m_backgroundSize == size() && m_backgroundMask == m_mask) return;
    m_background = QImage(size(), QImage::Format_RGB32);
    DrawBackground(m_background);
    m_backgroundSize = size();
    m_backgroundMask = m_mask;
}

void CSkyPlot::DrawBackground(QImage& image) {
    if (!m_boldFont) m_boldFont = ChartFont(700);
    if (!m_normalFont) m_normalFont = ChartFont(400);
    image.fill(Qt::white);
    if (image.isNull()) return;
    QPainter p(&image);
    const QRect r = QRect(0, 0, image.width(), image.height()).adjusted(kMargin, kMargin, -kMargin, -kMargin);
    const int left = r.left(), top = r.top(), right = left + r.width(), bottom = top + r.height();
    m_cx = (left + right) / 2;
    m_cy = (top + bottom) / 2;
    m_radius = std::min(right - left, bottom - top) / 2;
    const int R = m_radius;
    const QPointF centre(m_cx, m_cy);
    const auto circle = [&](const QColor& colour, int radius) {
        p.setRenderHint(QPainter::Antialiasing, true);
        p.setPen(QPen(colour, 1));
        p.setBrush(Qt::NoBrush);
        p.drawEllipse(centre, radius, radius);
        p.setRenderHint(QPainter::Antialiasing, false);
    };
    if (R > 0) {
        circle(Qt::black, R);
        const int rings = RingCountFor(R);
        p.setFont(*m_normalFont);
        const QString pattern = LoadResString(IDS_FMT_ELEVATION_RING).ToQString();
        for (int i = 1; i < rings; ++i) {
            const int radius = R * (rings - i) / rings;
            circle(QColor(128, 128, 128), radius);
            p.setPen(Qt::black);
            DrawTopCentred(p, QString(pattern).replace(QStringLiteral("%d"), QString::number(90 * i / rings)), m_cx - radius, m_cy);
        }
    }
    p.setPen(QPen(QColor(128, 128, 128), 1));
    p.drawLine(m_cx - R, m_cy, m_cx + R, m_cy);
    p.drawLine(m_cx, m_cy - R, m_cx, m_cy + R);
    if (m_mask >= 0) circle(QColor(255, 0, 0), static_cast<int>(R * (90 - m_mask) / 90));
    p.setFont(*m_boldFont);
    p.setPen(Qt::black);
    DrawTopCentred(p, LoadResString(IDS_NORTH).ToQString(), m_cx, m_cy - R + 3);
}

void CSkyPlot::DrawSatellites(QImage& frame) const {
    const auto& symbols = satlook::CSatelliteSymbols::Instance();
    const QSize s = symbols.SymbolSize();
    QPainter p(&frame);
    p.setFont(m_labelFont);
    for (const auto& sat : m_list) {
        if (sat.elevation == devio::SATELLITE_RECORD::kUnknownElevation || sat.azimuth >= devio::SATELLITE_RECORD::kUnknownAzimuth ||
            sat.elevation <= 0)
            continue;
        const double rho = (90.0 - sat.elevation) / 90.0 * m_radius;
        const double az = sat.azimuth * kPi / 180.0;
        const double x = m_cx + std::sin(az) * rho;
        const double y = m_cy - std::cos(az) * rho;
        const int key = satlook::CSatelliteSymbols::Key(sat.system, devio::SATELLITE_RECORD::IsUsed(sat.navStatus));
        symbols.Draw(p, key, Round(x - s.width() / 2), Round(y - s.height() / 2));
        p.setPen(satlook::SatelliteColour(sat.system, 0.4));
        DrawTopCentred(p, QString::number(sat.number), Round(x), Round(y + s.height() / 2));
    }
}

QImage CSkyPlot::RenderFrame() {
    EnsureBackground();
    QImage frame = m_background.copy();
    DrawSatellites(frame);
    return frame;
}

QImage CSkyPlot::RenderFull() {
    m_background = QImage();
    return RenderFrame();
}

void CSkyPlot::paintEvent(QPaintEvent*) {
    const QImage frame = RenderFrame();
    QPainter(this).drawImage(0, 0, frame);
}
