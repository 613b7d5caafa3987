#include "fenklib/frame/RangeValidation.h"

#include <QLineEdit>
#include <QLocale>

#include "fenklib/frame/LibraryHelpers.h"
#include "fenklib/resources/StringIds.h"
#include "platform/uikit/CMessageBoxService.h"

using basekit::ustring;

namespace {

// A person may type the number in their own locale or with a point.
bool ReadNumber(const QLineEdit* edit, double& value) {
    const QString text = edit->text().trimmed();
    bool ok = false;
    value = QLocale().toDouble(text, &ok);
    if (!ok) value = QLocale::c().toDouble(text, &ok);
    return ok;
}

// The limits as a person reads them, without group separators (86400, not 86.400).
QString Shown(double limit) {
    QLocale locale;
    locale.setNumberOptions(QLocale::OmitGroupSeparator);
    return locale.toString(limit, 'g', 12);
}

bool Refuse(QWidget* owner, QLineEdit* edit, unsigned message, double min, double max) {
    uikit::CMessageBoxService::Show(owner,
                                    ustring::Format(LoadResString(message).c_str(), ustring::FromQString(Shown(min)),
                                                    ustring::FromQString(Shown(max))),
                                    {}, uikit::MB_OK | uikit::MB_ICONEXCLAMATION);
    edit->setFocus();
    edit->selectAll();
    return false;
}

}  // namespace

bool ValidateRange(QWidget* owner, QLineEdit* edit, int min, int max, int& value) {
    double number = 0;
    if (!ReadNumber(edit, number) || number != static_cast<double>(static_cast<long long>(number)) || number < min || number > max)
        return Refuse(owner, edit, IDS_ENTER_INTEGER_BETWEEN, min, max);
    value = static_cast<int>(number);
    return true;
}

bool ValidateRange(QWidget* owner, QLineEdit* edit, double min, double max, double& value) {
    double number = 0;
    if (!ReadNumber(edit, number) || !(number >= min && number <= max))
        return Refuse(owner, edit, IDS_VALUE_OUT_OF_RANGE, min, max);
    value = number;
    return true;
}
