#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <cmath>

#include "fenklib/resources/FenkImages.h"
#include "fenklib/resources/ImageIds.h"
#include "fenklib/resources/MagentaKey.h"

namespace {

constexpr int kSymbolSize = 14;
constexpr QSize kPortSize(16, 16);
const QRgb kMagenta = 0xFF000000u | kFenkBitmapTransparent;

// Green of a symbol pixel at (dx, dy) from the centre, lit from the upper left like a ball;
// never 0, because green 0 would read as "not part of the symbol" to the recolouring.
int ShadedGreen(double dx, double dy, double radius) {
    const double nx = dx / radius, ny = dy / radius;
    const double nz = std::sqrt(std::max(0.0, 1.0 - nx * nx - ny * ny));
    const double light = std::clamp(-0.45 * nx - 0.45 * ny + 0.77 * nz, 0.0, 1.0);
    return std::clamp(static_cast<int>(96 + 159 * light), 1, 255);
}

// One symbol into the square at column x0: a shaded disc when used, a shaded ring when not.
// Drawn pixel by pixel without anti-aliasing, so every pixel is either pure template green
// (red and blue 0) or the magenta key; a blended edge would be neither.
void DrawSymbol(QImage& image, int x0, bool used) {
    const double c = kSymbolSize / 2.0;
    const double outer = c - 0.5, inner = outer - 2.6, rim = outer - 1.0;
    for (int y = 0; y < kSymbolSize; ++y) {
        for (int x = 0; x < kSymbolSize; ++x) {
            const double dx = x + 0.5 - c, dy = y + 0.5 - c;
            const double d = std::hypot(dx, dy);
            const bool inside = d <= outer && (used || d >= inner);
            if (!inside) continue;
            const int green = d > rim ? 72 : ShadedGreen(dx, dy, outer);
            image.setPixel(x0 + x, y, qRgb(0, green, 0));
        }
    }
}

QImage SatelliteSymbols() {
    QImage image(2 * kSymbolSize, kSymbolSize, QImage::Format_RGB32);
    image.fill(kMagenta);
    DrawSymbol(image, 0, true);
    DrawSymbol(image, kSymbolSize, false);
    return image;
}

const QColor kInk(40, 44, 52);

// A DB-9 style connector shell with its two rows of pins.
void PaintSerial(QPainter& p) {
    QPainterPath shell;
    shell.moveTo(0.8, 4.0);
    shell.lineTo(15.2, 4.0);
    shell.lineTo(13.0, 12.5);
    shell.lineTo(3.0, 12.5);
    shell.closeSubpath();
    p.setPen(QPen(kInk, 1.0));
    p.setBrush(QColor(170, 176, 186));
    p.drawPath(shell);
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(200, 150, 30));
    for (int i = 0; i < 5; ++i) p.drawEllipse(QPointF(3.6 + 2.2 * i, 6.8), 0.9, 0.9);
    for (int i = 0; i < 4; ++i) p.drawEllipse(QPointF(4.7 + 2.2 * i, 9.7), 0.9, 0.9);
}

// The USB trident: a stem with an arrow head, a round and a square branch.
void PaintUsb(QPainter& p) {
    const QColor blue(25, 70, 160);
    p.setPen(QPen(blue, 1.4, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    p.setBrush(Qt::NoBrush);
    p.drawLine(QPointF(3.0, 8.0), QPointF(12.5, 8.0));
    p.drawPolyline(QPolygonF({QPointF(5.0, 8.0), QPointF(7.0, 4.0), QPointF(10.0, 4.0)}));
    p.drawPolyline(QPolygonF({QPointF(6.5, 8.0), QPointF(8.5, 12.0), QPointF(10.5, 12.0)}));
    p.setPen(Qt::NoPen);
    p.setBrush(blue);
    p.drawEllipse(QPointF(2.5, 8.0), 1.8, 1.8);
    p.drawEllipse(QPointF(10.8, 4.0), 1.4, 1.4);
    p.drawRect(QRectF(10.3, 10.7, 2.6, 2.6));
    p.drawPolygon(QPolygonF({QPointF(15.5, 8.0), QPointF(12.3, 5.8), QPointF(12.3, 10.2)}));
}

// Three hosts joined by a network.
void PaintTcp(QPainter& p) {
    p.setPen(QPen(kInk, 1.2));
    p.drawLine(QPointF(8.0, 5.5), QPointF(8.0, 9.0));
    p.drawLine(QPointF(3.5, 9.0), QPointF(12.5, 9.0));
    p.drawLine(QPointF(3.5, 9.0), QPointF(3.5, 11.0));
    p.drawLine(QPointF(12.5, 9.0), QPointF(12.5, 11.0));
    p.setPen(QPen(kInk, 0.9));
    p.setBrush(QColor(70, 150, 220));
    p.drawRect(QRectF(5.0, 1.0, 6.0, 4.5));
    p.drawRect(QRectF(0.8, 10.8, 5.4, 4.2));
    p.drawRect(QRectF(9.8, 10.8, 5.4, 4.2));
}

// A radio modem: a box with an antenna and its signal.
void PaintModem(QPainter& p) {
    p.setPen(QPen(kInk, 1.2, Qt::SolidLine, Qt::RoundCap));
    p.drawLine(QPointF(11.5, 9.0), QPointF(11.5, 2.0));
    p.setBrush(Qt::NoBrush);
    p.setPen(QPen(QColor(30, 140, 60), 1.0, Qt::SolidLine, Qt::RoundCap));
    p.drawArc(QRectF(8.0, 0.5, 7.0, 5.0), 30 * 16, 120 * 16);
    p.setPen(QPen(kInk, 1.0));
    p.setBrush(QColor(120, 128, 140));
    p.drawRoundedRect(QRectF(1.0, 8.5, 14.0, 6.0), 1.2, 1.2);
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(60, 220, 90));
    p.drawEllipse(QPointF(3.8, 11.5), 1.0, 1.0);
    p.setBrush(QColor(250, 190, 40));
    p.drawEllipse(QPointF(6.8, 11.5), 1.0, 1.0);
}

// A message: a sheet of paper with text lines.
void PaintMessage(QPainter& p) {
    QPainterPath sheet;
    sheet.moveTo(2.5, 1.0);
    sheet.lineTo(10.0, 1.0);
    sheet.lineTo(13.5, 4.5);
    sheet.lineTo(13.5, 15.0);
    sheet.lineTo(2.5, 15.0);
    sheet.closeSubpath();
    p.setPen(QPen(kInk, 1.0));
    p.setBrush(Qt::white);
    p.drawPath(sheet);
    p.setPen(QPen(QColor(40, 100, 190), 1.0));
    for (int i = 0; i < 4; ++i) p.drawLine(QPointF(4.5, 6.0 + 2.3 * i), QPointF(11.5, 6.0 + 2.3 * i));
}

}  // namespace

QImage FenkBitmap(unsigned id) {
    switch (id) {
        case IDB_SATELLITE_SYMBOLS: return SatelliteSymbols();
        case IDB_PORT_SERIAL: return fenkres::PaintOnMagenta(kPortSize, PaintSerial);
        case IDB_PORT_USB: return fenkres::PaintOnMagenta(kPortSize, PaintUsb);
        case IDB_PORT_TCP: return fenkres::PaintOnMagenta(kPortSize, PaintTcp);
        case IDB_PORT_MVP: return fenkres::PaintOnMagenta(kPortSize, PaintModem);
        case IDB_MESSAGE_TREE: return fenkres::PaintOnMagenta(kPortSize, PaintMessage);
        default: return {};
    }
}
