#include "platform/basekit/BaseStrings.h"

namespace basekit {

namespace {

constexpr StringEntry kTexts[] = {
    {kStrCommError, L"%s reported an error.\nCommand: %s\nReply: %s"},
    {kStrWinError, L"%s\n%s (error %u)"},
    {kStrCancelled, L"The operation was canceled by the user."},
    {kStrTimeout, L"This operation returned because the timeout period expired."},
    {kStrInternal, L"An internal error occurred."},
    {kStrLinkLost, L"The connection to the device was lost."},
    {kStrUnknownError, L"System error."},
    {kStrBadCommandText, L"This text cannot be sent to the receiver: \"%s\". Line breaks, other control "
                         L"characters and double quotes are not allowed, nor commas, semicolons and braces in names."},
};

}  // namespace

const CResourceInstance& BaseStrings() {
    static const CResourceInstance instance("basekit", kTexts);
    return instance;
}

}  // namespace basekit
