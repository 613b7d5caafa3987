#include <QPainter>
#include <QPainterPath>
#include <QPixmap>
#include <functional>

#include "fenklib/resources/FenkImages.h"
#include "fenklib/resources/ImageIds.h"

namespace {

using Painter = std::function<void(QPainter&)>;

const QColor kInk(40, 44, 52);
const QColor kGold(214, 170, 50);

// A GNSS receiver: a dark body under a survey antenna dome, with a green status light.
void PaintReceiver(QPainter& p) {
    p.setPen(QPen(kInk, 0.9));
    QLinearGradient dome(0, 1.5, 0, 8.5);
    dome.setColorAt(0, QColor(255, 236, 160));
    dome.setColorAt(1, QColor(222, 170, 40));
    p.setBrush(dome);
    p.drawChord(QRectF(2.0, 1.5, 12.0, 13.0), 0, 180 * 16);
    p.setBrush(QColor(74, 79, 87));
    p.drawRoundedRect(QRectF(1.5, 8.0, 13.0, 6.5), 1.5, 1.5);
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(70, 230, 100));
    p.drawEllipse(QPointF(4.5, 11.2), 1.1, 1.1);
}

// A memory module: green board, black chips, gold contacts.
void PaintRam(QPainter& p) {
    p.setPen(QPen(QColor(20, 70, 30), 0.8));
    p.setBrush(QColor(46, 125, 50));
    p.drawRect(QRectF(0.5, 3.5, 15.0, 8.5));
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(30, 30, 34));
    for (int i = 0; i < 3; ++i) p.drawRect(QRectF(1.6 + 4.8 * i, 4.8, 3.8, 4.0));
    p.setBrush(kGold);
    for (int i = 0; i < 7; ++i) p.drawRect(QRectF(1.2 + 2.05 * i, 10.0, 1.2, 2.0));
}

// A flash card with its cut corner and contacts.
void PaintFlash(QPainter& p) {
    QPainterPath card;
    card.moveTo(3.0, 1.0);
    card.lineTo(10.5, 1.0);
    card.lineTo(13.0, 3.5);
    card.lineTo(13.0, 15.0);
    card.lineTo(3.0, 15.0);
    card.closeSubpath();
    p.setPen(QPen(kInk, 0.9));
    p.setBrush(QColor(31, 58, 147));
    p.drawPath(card);
    p.setPen(Qt::NoPen);
    p.setBrush(kGold);
    for (int i = 0; i < 4; ++i) p.drawRect(QRectF(4.2 + 1.9 * i, 2.2, 1.1, 3.0));
    p.setBrush(QColor(235, 235, 240));
    p.drawRect(QRectF(4.5, 8.0, 7.0, 5.0));
}

// A battery, mostly charged.
void PaintBattery(QPainter& p) {
    p.setPen(QPen(kInk, 1.0));
    p.setBrush(Qt::white);
    p.drawRoundedRect(QRectF(0.8, 4.0, 12.8, 8.0), 1.2, 1.2);
    p.setPen(Qt::NoPen);
    p.setBrush(kInk);
    p.drawRect(QRectF(13.6, 6.2, 1.8, 3.6));
    p.setBrush(QColor(60, 185, 75));
    p.drawRect(QRectF(2.2, 5.4, 7.5, 5.2));
}

// A processor: a square package with pins on every side.
void PaintCpu(QPainter& p) {
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(150, 155, 165));
    for (int i = 0; i < 3; ++i) {
        const double at = 4.6 + 2.6 * i;
        p.drawRect(QRectF(at, 0.8, 1.2, 2.4));
        p.drawRect(QRectF(at, 12.8, 1.2, 2.4));
        p.drawRect(QRectF(0.8, at, 2.4, 1.2));
        p.drawRect(QRectF(12.8, at, 2.4, 1.2));
    }
    p.setPen(QPen(kInk, 0.8));
    p.setBrush(QColor(55, 71, 79));
    p.drawRoundedRect(QRectF(3.0, 3.0, 10.0, 10.0), 1.0, 1.0);
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(196, 202, 210));
    p.drawRect(QRectF(5.5, 5.5, 5.0, 5.0));
}

// The receiver with an information badge: the receiver information dialog.
void PaintReceiverInfo(QPainter& p) {
    PaintReceiver(p);
    p.setPen(QPen(Qt::white, 0.8));
    p.setBrush(QColor(30, 100, 210));
    p.drawEllipse(QPointF(11.5, 11.5), 4.0, 4.0);
    p.setPen(Qt::NoPen);
    p.setBrush(Qt::white);
    p.drawEllipse(QPointF(11.5, 9.3), 0.8, 0.8);
    p.drawRect(QRectF(10.8, 10.6, 1.4, 3.4));
}

// A wrench: the controller tools dialog.
void PaintTools(QPainter& p) {
    const QColor steel(120, 130, 145);
    p.setPen(QPen(kInk, 4.2, Qt::SolidLine, Qt::RoundCap));
    p.drawLine(QPointF(3.0, 13.0), QPointF(9.5, 6.5));
    p.setPen(QPen(steel, 2.6, Qt::SolidLine, Qt::RoundCap));
    p.drawLine(QPointF(3.0, 13.0), QPointF(9.5, 6.5));
    p.setPen(QPen(kInk, 0.9));
    p.setBrush(steel);
    p.drawEllipse(QPointF(11.0, 5.0), 4.0, 4.0);
    // The jaw is cut out of the head so the background shows through it.
    p.setCompositionMode(QPainter::CompositionMode_Clear);
    p.setPen(Qt::NoPen);
    p.translate(11.0, 5.0);
    p.rotate(45);
    p.drawRect(QRectF(-1.3, -5.0, 2.6, 4.6));
}

QImage Render(const Painter& paint, int side) {
    QImage image(side, side, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    {
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.scale(side / 16.0, side / 16.0);
        paint(painter);
    }
    return image;
}

QIcon MakeIcon(const Painter& paint, std::initializer_list<int> sides) {
    QIcon icon;
    for (const int side : sides) icon.addPixmap(QPixmap::fromImage(Render(paint, side)));
    return icon;
}

}  // namespace

QIcon FenkIcon(unsigned id) {
    switch (id) {
        case IDI_RECEIVER: return MakeIcon(PaintReceiver, {16, 32});
        case IDI_RAM: return MakeIcon(PaintRam, {16, 32});
        case IDI_FLASH: return MakeIcon(PaintFlash, {16, 32});
        case IDI_BATTERY: return MakeIcon(PaintBattery, {16, 32});
        case IDI_CPU: return MakeIcon(PaintCpu, {16, 32});
        // Icon groups carry the sizes a window frame and a task switcher ask for.
        case IDI_TOOLS_DIALOG: return MakeIcon(PaintTools, {16, 32, 48});
        case IDI_RECEIVER_INFO: return MakeIcon(PaintReceiverInfo, {16, 32, 48});
        default: return {};
    }
}
