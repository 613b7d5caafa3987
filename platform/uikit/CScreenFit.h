#pragma once
#include <QRect>
#include <QSize>

class QWidget;

namespace uikit {

// Keeps a window within the available area of its screen (the screen minus panels and docks),
// so its buttons are never off screen: on a 1280x480 wide screen, at 2x scale on 1280x800, or on
// a 480x640 portrait screen alike.
class CScreenFit {
public:
    // The largest size not above `wanted` that fits in `available`, and a top-left corner that
    // keeps `wanted`'s position where it fits and moves the window inside where it does not.
    static QRect Fit(const QRect& wanted, const QRect& available);
    // Sizes the window (its size hint when it has none of its own yet) and places it within the
    // available area of the screen it will show on; a window whose least size is larger than that
    // area is allowed to shrink to it.
    static void Apply(QWidget& window);
    // The available area for a window: its own screen's, else its parent's, else the primary's.
    static QRect AvailableFor(const QWidget& window);
    // Small screens get compact variants of standard dialogs (the file dialog).
    static bool IsSmall(const QRect& available) { return available.width() < 800 || available.height() < 600; }
};

}  // namespace uikit
