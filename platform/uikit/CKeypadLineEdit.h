#pragma once
#include <QLineEdit>

namespace uikit {

class CKeypadPopup;

// A line edit for touch screens: a small button at its right end opens an on-screen keypad
// whose keys edit the text as typing would (validator and textEdited included). The keyboard
// still works as usual.
class CKeypadLineEdit : public QLineEdit {
public:
    enum class Keys {
        Integer,        // digits and sign
        Numeric,        // digits, sign and point
        Alphanumeric,   // the numeric keys and the letters A-Z with space
    };

    explicit CKeypadLineEdit(QWidget* parent = nullptr, Keys keys = Keys::Numeric);

    void SetKeys(Keys keys);
    Keys GetKeys() const { return m_keys; }

    void ShowKeypad();
    // The keypad window, nullptr until it was first shown.
    CKeypadPopup* GetKeypad() const { return m_keypad; }

private:
    Keys m_keys;
    CKeypadPopup* m_keypad = nullptr;   // owned as a Qt child
};

}  // namespace uikit
