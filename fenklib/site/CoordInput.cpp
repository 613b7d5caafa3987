#include "fenklib/site/CoordInput.h"

#include <QLineEdit>
#include <QLocale>

#include "fenklib/frame/LibraryHelpers.h"
#include "fenklib/resources/StringIds.h"
#include "platform/uikit/CMessageBoxService.h"

using basekit::ustring;

namespace coordinput {

std::optional<double> Parse(const QString& text) {
    bool ok = false;
    QLocale own;   // "1.500" is not fifteen hundred in a comma-decimal locale
    own.setNumberOptions(QLocale::RejectGroupSeparator);
    const double value = own.toDouble(text.trimmed(), &ok);
    if (ok) return value;
    const double c = QLocale::c().toDouble(text.trimmed(), &ok);
    if (ok) return c;
    return std::nullopt;
}

namespace {
void Refuse(QWidget* owner, QLineEdit* edit, const ustring& why) {
    uikit::CMessageBoxService::Show(owner, why, {}, uikit::MB_OK | uikit::MB_ICONEXCLAMATION);
    edit->setFocus();
    edit->selectAll();
}
}  // namespace

std::optional<double> Take(QWidget* owner, QLineEdit* edit, double lo, double hi, bool hiIncluded) {
    const std::optional<double> value = Parse(edit->text());
    if (!value) {
        Refuse(owner, edit, LoadResString(IDS_ENTER_A_NUMBER));
        return std::nullopt;
    }
    if (*value < lo || *value > hi || (!hiIncluded && *value >= hi)) {
        RefuseRange(owner, edit, lo, hi);
        return std::nullopt;
    }
    return value;
}

void RefuseRange(QWidget* owner, QLineEdit* edit, double lo, double hi) {
    Refuse(owner, edit, ustring::Format(LoadResString(IDS_VALUE_BETWEEN).c_str(), ustring::FromQString(QLocale().toString(lo)),
                                        ustring::FromQString(QLocale().toString(hi))));
}

// Without group separators, so that the text reads back as the same number.
QString Show(double value, int decimals) {
    QLocale own;
    own.setNumberOptions(QLocale::OmitGroupSeparator);
    return own.toString(value, 'f', decimals);
}

}  // namespace coordinput
