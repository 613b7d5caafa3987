#include "fenklib/resources/MagentaKey.h"

#include <QPainter>

#include "fenklib/resources/ImageIds.h"

namespace fenkres {

QImage PaintOnMagenta(QSize size, const std::function<void(QPainter&)>& paint) {
    QImage canvas(size, QImage::Format_ARGB32);
    canvas.fill(Qt::transparent);
    {
        QPainter painter(&canvas);
        painter.setRenderHint(QPainter::Antialiasing);
        paint(painter);
    }
    QImage out(size, QImage::Format_RGB32);
    const QRgb key = 0xFF000000u | kFenkBitmapTransparent;
    for (int y = 0; y < size.height(); ++y) {
        const auto* src = reinterpret_cast<const QRgb*>(canvas.constScanLine(y));
        auto* dst = reinterpret_cast<QRgb*>(out.scanLine(y));
        for (int x = 0; x < size.width(); ++x) {
            const QRgb p = src[x];
            dst[x] = qAlpha(p) >= 128 ? qRgb(qRed(p), qGreen(p), qBlue(p)) : key;
        }
    }
    return out;
}

}  // namespace fenkres
