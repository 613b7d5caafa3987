#include "platform/uikit/CScreenFit.h"

#include <QGuiApplication>
#include <QLayout>
#include <QScreen>
#include <QWidget>
#include <algorithm>

namespace uikit {

QRect CScreenFit::Fit(const QRect& wanted, const QRect& available) {
    const QSize size(std::min(wanted.width(), available.width()), std::min(wanted.height(), available.height()));
    const int x = std::clamp(wanted.x(), available.left(), available.left() + available.width() - size.width());
    const int y = std::clamp(wanted.y(), available.top(), available.top() + available.height() - size.height());
    return QRect(QPoint(x, y), size);
}

QRect CScreenFit::AvailableFor(const QWidget& window) {
    const QScreen* screen = window.screen();
    if (!screen && window.parentWidget()) screen = window.parentWidget()->screen();
    if (!screen) screen = QGuiApplication::primaryScreen();
    return screen ? screen->availableGeometry() : QRect();
}

void CScreenFit::Apply(QWidget& window) {
    const QRect available = AvailableFor(window);
    if (available.isEmpty()) return;
    window.ensurePolished();
    if (!window.testAttribute(Qt::WA_Resized)) {
        window.adjustSize();
        // adjustSize keeps a window within two thirds of the screen; the fit below is the limit.
        window.resize(window.size().expandedTo(window.sizeHint()));
    }
    QRect wanted = window.geometry();
    if (!window.testAttribute(Qt::WA_Moved)) {
        // Centred on the parent (or the screen), as the window system would place it.
        const QRect over = window.parentWidget() ? window.parentWidget()->window()->frameGeometry() : available;
        wanted.moveCenter(over.center());
    }
    const QRect fitted = Fit(wanted, available);
    if (fitted.size() == wanted.size() && fitted.topLeft() == wanted.topLeft()) return;
    if (window.minimumWidth() > fitted.width() || window.minimumHeight() > fitted.height()) {
        // Better a cramped window whose buttons can be pressed than one whose buttons are gone.
        if (window.layout()) window.layout()->setSizeConstraint(QLayout::SetNoConstraint);
        window.setMinimumSize(window.minimumSize().boundedTo(fitted.size()));
    }
    window.setGeometry(fitted);
}

}  // namespace uikit
