#pragma once
#include <QImage>
#include <QSize>
#include <functional>

class QPainter;

// Bitmaps keep the classic magenta colour key instead of an alpha channel, because their users
// (image lists, the satellite-symbol recolouring) decide transparency by colour.
namespace fenkres {

// Paints with anti-aliasing on a transparent canvas of size logical units scaled by scale, then
// flattens it: a pixel at least half covered becomes opaque, every other pixel magenta. The
// threshold keeps edges crisp instead of blending them into magenta fringes.
QImage PaintOnMagenta(QSize size, const std::function<void(QPainter&)>& paint);

}  // namespace fenkres
