#pragma once
class QLineEdit;
class QWidget;

// Checks the number in an edit against a range, the way every window of the library does: out
// of range or not a number, the owner shows "Please enter a number between min and max.", the
// edit takes the focus with its text selected, and the result is false.
bool ValidateRange(QWidget* owner, QLineEdit* edit, int min, int max, int& value);
bool ValidateRange(QWidget* owner, QLineEdit* edit, double min, double max, double& value);
