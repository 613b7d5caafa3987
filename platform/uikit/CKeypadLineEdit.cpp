#include "platform/uikit/CKeypadLineEdit.h"

#include <QAction>
#include <QIcon>
#include <QPainter>
#include <QPixmap>

#include "platform/uikit/CKeypadPopup.h"
#include "platform/uikit/UiStrings.h"

namespace uikit {

namespace {

// Nine dots in a square: the usual sign of a keypad.
QIcon KeypadIcon(const QColor& ink) {
    QPixmap pixmap(16, 16);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(ink);
    for (int row = 0; row < 3; ++row)
        for (int column = 0; column < 3; ++column)
            painter.drawRoundedRect(QRectF(1.5 + 4.8 * column, 1.5 + 4.8 * row, 3.4, 3.4), 0.8, 0.8);
    return QIcon(pixmap);
}

}  // namespace

CKeypadLineEdit::CKeypadLineEdit(QWidget* parent, Keys keys) : QLineEdit(parent), m_keys(keys) {
    QAction* open = addAction(KeypadIcon(palette().color(QPalette::Text)), QLineEdit::TrailingPosition);
    open->setObjectName(QStringLiteral("keypad_button"));
    open->setToolTip(UiText(kStrKeypadTip));
    connect(open, &QAction::triggered, this, &CKeypadLineEdit::ShowKeypad);
}

void CKeypadLineEdit::SetKeys(Keys keys) {
    if (keys == m_keys) return;
    m_keys = keys;
    delete m_keypad;   // rebuilt with the new keys when next shown
    m_keypad = nullptr;
}

void CKeypadLineEdit::ShowKeypad() {
    if (!m_keypad) m_keypad = new CKeypadPopup(this, m_keys);
    setFocus(Qt::OtherFocusReason);
    m_keypad->ShowUnder(*this);
}

}  // namespace uikit
