#pragma once
#include <QString>
#include <optional>

class QLineEdit;
class QWidget;

// Reading numbers the person typed in a coordinate editor: their own decimal sign or a point;
// a refused value is told (with the allowed range) and focused.
namespace coordinput {

std::optional<double> Parse(const QString& text);
// The number in edit within [lo, hi]; otherwise the user is told why and nothing is returned.
std::optional<double> Take(QWidget* owner, QLineEdit* edit, double lo, double hi, bool hiIncluded = true);
QString Show(double value, int decimals);
// Tells the user the value of edit must lie in [lo, hi] and focuses it.
void RefuseRange(QWidget* owner, QLineEdit* edit, double lo, double hi);

}  // namespace coordinput
