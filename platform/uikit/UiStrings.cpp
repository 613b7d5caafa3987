#include "platform/uikit/UiStrings.h"

#include <QString>
#include <array>
#include <utility>

#include "platform/basekit/ustring.h"

namespace uikit {

namespace {

constexpr std::array<std::pair<unsigned, const wchar_t*>, 6> kTexts{{
    {kStrKeypadTip, L"On-screen keypad"},
    {kStrKeypadSign, L"\u00B1"},
    {kStrKeypadPoint, L"."},
    {kStrKeypadBackspace, L"\u2190"},
    {kStrKeypadSpace, L"\u2423"},
    {kStrKeypadClose, L"\u2713"},
}};

const wchar_t* Find(unsigned id) {
    for (const auto& [key, text] : kTexts)
        if (key == id) return text;
    return nullptr;
}

}  // namespace

const basekit::CResourceInstance& UiStrings() {
    static const basekit::CResourceInstance instance("uikit", &Find);
    return instance;
}

QString UiText(unsigned id) {
    basekit::ustring text;
    text.load(UiStrings(), id);
    return text.ToQString();
}

}  // namespace uikit
