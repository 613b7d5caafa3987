#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QIntValidator>
#include <QKeyEvent>
#include <QLabel>
#include <QPointer>
#include <QToolButton>

#include "platform/uikit/CBusyCursor.h"
#include "platform/uikit/CKeypadLineEdit.h"
#include "platform/uikit/CKeypadPopup.h"
#include "platform/uikit/CTipWindow.h"

using namespace uikit;

namespace {

bool Overridden() {
    return QGuiApplication::overrideCursor() && QGuiApplication::overrideCursor()->shape() == Qt::WaitCursor;
}

TEST(BusyCursor, NestedGuardsRestoreOnlyWhenTheLastEnds) {
    ASSERT_FALSE(Overridden());
    {
        CBusyCursor outer;
        {
            CBusyCursor inner;
            EXPECT_TRUE(Overridden());
        }
        EXPECT_TRUE(Overridden()) << "the outer operation is still running";
    }
    EXPECT_FALSE(Overridden());
}

void Press(const CKeypadLineEdit& edit, const char* key) {
    auto* button = edit.GetKeypad()->findChild<QToolButton*>(QString::fromLatin1(key));
    ASSERT_NE(button, nullptr) << key;
    button->click();
}

void OpenKeypad(CKeypadLineEdit& edit) {
    edit.findChild<QAction*>(QStringLiteral("keypad_button"))->trigger();
    ASSERT_NE(edit.GetKeypad(), nullptr);
}

TEST(KeypadLineEdit, KeysEditTheTextLikeTyping) {
    CKeypadLineEdit edit(nullptr, CKeypadLineEdit::Keys::Numeric);
    edit.show();
    int edits = 0;
    QObject::connect(&edit, &QLineEdit::textEdited, [&] { ++edits; });
    OpenKeypad(edit);
    EXPECT_TRUE(edit.GetKeypad()->isVisible());
    for (const char* key : {"key_7", "key_point", "key_5", "key_sign"}) Press(edit, key);
    EXPECT_EQ(edit.text(), QStringLiteral("-7.5"));
    Press(edit, "key_back");
    EXPECT_EQ(edit.text(), QStringLiteral("-7."));
    EXPECT_EQ(edits, 5) << "the owner hears every key as an edit";
    QKeyEvent typed(QEvent::KeyPress, Qt::Key_9, Qt::NoModifier, QStringLiteral("9"));
    QCoreApplication::sendEvent(&edit, &typed);
    EXPECT_EQ(edit.text(), QStringLiteral("-7.9")) << "the keyboard still works";
    Press(edit, "key_close");
    EXPECT_FALSE(edit.GetKeypad()->isVisible());
}

TEST(KeypadLineEdit, IntegerKeypadHasNoPointAndHonoursTheValidator) {
    CKeypadLineEdit edit(nullptr, CKeypadLineEdit::Keys::Integer);
    edit.setValidator(new QIntValidator(0, 86400, &edit));
    edit.show();
    OpenKeypad(edit);
    for (const auto* absent : {"key_point", "key_A"})
        EXPECT_EQ(edit.GetKeypad()->findChild<QToolButton*>(QString::fromLatin1(absent)), nullptr) << absent;
    Press(edit, "key_6");
    Press(edit, "key_sign");
    EXPECT_EQ(edit.text(), QStringLiteral("6")) << "a negative period is refused";
}

TEST(KeypadLineEdit, AlphanumericKeypadTypesLettersAndBlanks) {
    CKeypadLineEdit edit(nullptr, CKeypadLineEdit::Keys::Alphanumeric);
    edit.show();
    OpenKeypad(edit);
    for (const char* key : {"key_B", "key_space", "key_2"}) Press(edit, key);
    EXPECT_EQ(edit.text(), QStringLiteral("B 2"));
}

TEST(TipWindow, ShownForItsLifetime) {
    QPointer<const QLabel> label;
    {
        CTipWindow tip(nullptr, L"Saving Receiver Settings");
        label = tip.GetLabel();
        EXPECT_TRUE(label->isVisible());
    }
    EXPECT_TRUE(label.isNull()) << "the note is gone with its guard";
}

}  // namespace
