#include "fenklib/frame/IntegerRangeCheck.h"

#include <QLineEdit>

#include "fenklib/frame/LibraryHelpers.h"
#include "fenklib/resources/StringIds.h"
#include "platform/uikit/CMessageBoxService.h"

bool TakeIntegerInRange(QWidget* owner, QLineEdit* edit, std::int64_t min, std::int64_t max, int& value) {
    bool parsed = false;
    const qlonglong number = edit->text().trimmed().toLongLong(&parsed);
    if (parsed && number >= min && number <= max) {
        value = static_cast<int>(number);
        return true;
    }
    const auto text = basekit::ustring::Format(LoadResString(IDS_ENTER_INTEGER_BETWEEN).c_str(), static_cast<long long>(min),
                                               static_cast<long long>(max));
    uikit::CMessageBoxService::Show(owner, text, {}, uikit::MB_OK | uikit::MB_ICONEXCLAMATION);
    edit->setFocus();
    edit->selectAll();
    return false;
}
