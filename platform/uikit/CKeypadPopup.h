#pragma once
#include <QFrame>

#include "platform/uikit/CKeypadLineEdit.h"

class QGridLayout;

namespace uikit {

// The keypad window of a CKeypadLineEdit: a popup grid of keys, placed under the edit. Keys
// are named for tests ("key_0".."key_9", "key_A".., "key_point", "key_sign", "key_back",
// "key_space", "key_close").
class CKeypadPopup : public QFrame {
public:
    CKeypadPopup(CKeypadLineEdit* target, CKeypadLineEdit::Keys keys);

    void ShowUnder(const QWidget& anchor);

private:
    void AddKey(QGridLayout* grid, const QString& name, const QString& caption, int row, int column,
                int columnSpan, void (CKeypadPopup::*action)(const QString&));
    void AddNumericKeys(QGridLayout* grid, int firstRow, bool withPoint);
    void AddLetterKeys(QGridLayout* grid);

    void InsertText(const QString& text);
    void ToggleSign(const QString&);
    void Backspace(const QString&);
    void Close(const QString&);

    CKeypadLineEdit* m_target;
};

}  // namespace uikit
