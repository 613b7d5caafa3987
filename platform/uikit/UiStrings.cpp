#include "platform/uikit/UiStrings.h"

#include <QString>

#include "platform/basekit/ustring.h"

namespace uikit {

namespace {

constexpr basekit::StringEntry kTexts[] = {
    {kStrKeypadTip, L"On-screen keypad"},
    {kStrKeypadSign, L"\u00B1"},
    {kStrKeypadPoint, L"."},
    {kStrKeypadBackspace, L"\u2190"},
    {kStrKeypadSpace, L"\u2423"},
    {kStrKeypadClose, L"\u2713"},
};

}  // namespace

const basekit::CResourceInstance& UiStrings() {
    static const basekit::CResourceInstance instance("uikit", kTexts);
    return instance;
}

QString UiText(unsigned id) {
    basekit::ustring text;
    text.load(UiStrings(), id);
    return text.ToQString();
}

}  // namespace uikit
