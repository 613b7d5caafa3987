#include "platform/basekit/BaseStrings.h"

#include <array>
#include <utility>

namespace basekit {

namespace {

constexpr std::array<std::pair<unsigned, const wchar_t*>, 7> kTexts{{
    {kStrCommError, L"%s reported an error.\nCommand: %s\nReply: %s"},
    {kStrWinError, L"%s\n%s (error %u)"},
    {kStrCancelled, L"The operation was canceled by the user."},
    {kStrTimeout, L"This operation returned because the timeout period expired."},
    {kStrInternal, L"An internal error occurred."},
    {kStrLinkLost, L"The connection to the device was lost."},
    {kStrUnknownError, L"System error."},
}};

const wchar_t* Find(unsigned id) {
    for (const auto& [key, text] : kTexts)
        if (key == id) return text;
    return nullptr;
}

}  // namespace

const CResourceInstance& BaseStrings() {
    static const CResourceInstance instance("basekit", &Find);
    return instance;
}

}  // namespace basekit
