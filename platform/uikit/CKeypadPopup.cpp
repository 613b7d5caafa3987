#include "platform/uikit/CKeypadPopup.h"

#include <QGridLayout>
#include <QGuiApplication>
#include <QScreen>
#include <QToolButton>
#include <QValidator>
#include <algorithm>

#include "platform/uikit/UiStrings.h"

namespace uikit {

namespace {
constexpr int kKeySide = 40;   // a fingertip
constexpr int kLetterColumns = 7;
}  // namespace

CKeypadPopup::CKeypadPopup(CKeypadLineEdit* target, CKeypadLineEdit::Keys keys)
    : QFrame(target, Qt::Popup), m_target(target) {
    setFrameShape(QFrame::StyledPanel);
    auto* grid = new QGridLayout(this);
    grid->setSpacing(2);
    grid->setContentsMargins(3, 3, 3, 3);
    int firstNumericRow = 0;
    if (keys == CKeypadLineEdit::Keys::Alphanumeric) {
        AddLetterKeys(grid);
        firstNumericRow = grid->rowCount();
    }
    AddNumericKeys(grid, firstNumericRow, keys != CKeypadLineEdit::Keys::Integer);
}

void CKeypadPopup::ShowUnder(const QWidget& anchor) {
    adjustSize();
    QPoint at = anchor.mapToGlobal(QPoint(0, anchor.height()));
    if (const QScreen* screen = anchor.screen()) {
        const QRect area = screen->availableGeometry();
        // Kept on the screen: above the edit when there is no room below it.
        if (at.y() + height() > area.bottom()) at.setY(anchor.mapToGlobal(QPoint(0, 0)).y() - height());
        at.setX(std::clamp(at.x(), area.left(), std::max(area.left(), area.right() - width())));
    }
    move(at);
    show();
}

void CKeypadPopup::AddKey(QGridLayout* grid, const QString& name, const QString& caption, int row,
                          int column, int columnSpan, void (CKeypadPopup::*action)(const QString&)) {
    auto* key = new QToolButton(this);
    key->setObjectName(name);
    key->setText(caption);
    key->setFocusPolicy(Qt::NoFocus);   // the edit keeps the cursor
    key->setAutoRepeat(action == &CKeypadPopup::Backspace);
    key->setMinimumSize(kKeySide * columnSpan, kKeySide);
    key->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    connect(key, &QToolButton::clicked, this, [this, action, caption] { (this->*action)(caption); });
    grid->addWidget(key, row, column, 1, columnSpan);
}

void CKeypadPopup::AddNumericKeys(QGridLayout* grid, int r, bool withPoint) {
    for (int digit = 1; digit <= 9; ++digit) {
        const int row = r + 2 - (digit - 1) / 3;
        const QString text = QString::number(digit);
        AddKey(grid, QStringLiteral("key_") + text, text, row, (digit - 1) % 3, 1, &CKeypadPopup::InsertText);
    }
    AddKey(grid, QStringLiteral("key_0"), QStringLiteral("0"), r + 3, 0, withPoint ? 2 : 3,
           &CKeypadPopup::InsertText);
    if (withPoint)
        AddKey(grid, QStringLiteral("key_point"), UiText(kStrKeypadPoint), r + 3, 2, 1, &CKeypadPopup::InsertText);
    AddKey(grid, QStringLiteral("key_back"), UiText(kStrKeypadBackspace), r, 3, 1, &CKeypadPopup::Backspace);
    AddKey(grid, QStringLiteral("key_sign"), UiText(kStrKeypadSign), r + 1, 3, 1, &CKeypadPopup::ToggleSign);
    AddKey(grid, QStringLiteral("key_close"), UiText(kStrKeypadClose), r + 2, 3, 1,
           &CKeypadPopup::Close);
}

void CKeypadPopup::AddLetterKeys(QGridLayout* grid) {
    int index = 0;
    for (char16_t letter = u'A'; letter <= u'Z'; ++letter, ++index) {
        const QString text(QChar{letter});
        AddKey(grid, QStringLiteral("key_") + text, text, index / kLetterColumns, index % kLetterColumns, 1,
               &CKeypadPopup::InsertText);
    }
    const int row = index / kLetterColumns;
    const int column = index % kLetterColumns;
    AddKey(grid, QStringLiteral("key_space"), UiText(kStrKeypadSpace), row, column, kLetterColumns - column,
           &CKeypadPopup::InsertText);
}

void CKeypadPopup::InsertText(const QString& caption) {
    // The space key shows a visible blank sign but types a blank.
    m_target->insert(caption == UiText(kStrKeypadSpace) ? QStringLiteral(" ") : caption);
}

void CKeypadPopup::ToggleSign(const QString&) {
    QString text = m_target->text();
    if (text.startsWith(QLatin1Char('-'))) text.remove(0, 1);
    else text.prepend(QLatin1Char('-'));
    if (const QValidator* validator = m_target->validator()) {
        int position = 0;
        if (validator->validate(text, position) == QValidator::Invalid) return;
    }
    // Like typing: the edit's owner hears textEdited.
    m_target->selectAll();
    m_target->insert(text);
}

void CKeypadPopup::Backspace(const QString&) { m_target->backspace(); }

void CKeypadPopup::Close(const QString&) { hide(); }

}  // namespace uikit
