#pragma once
#include <cstdint>

class QLineEdit;
class QWidget;

// Takes an integer edit's value when it lies in min..max. Otherwise the user is told the range
// in a box, the edit gets the focus with its text selected, and false comes back so the caller
// stops (nothing goes to the receiver). The text is read in the C locale: the keypad types no
// group separators and the receiver's numbers have none.
bool TakeIntegerInRange(QWidget* owner, QLineEdit* edit, std::int64_t min, std::int64_t max, int& value);
