#pragma once
#include <functional>

#include "platform/basekit/ustring.h"

class QWidget;

namespace uikit {

// Message-box style and answers, numbered as the library has always numbered them.
enum MessageBoxFlags : unsigned {
    MB_OK = 0x0,
    MB_OKCANCEL = 0x1,
    MB_ABORTRETRYIGNORE = 0x2,
    MB_YESNOCANCEL = 0x3,
    MB_YESNO = 0x4,
    MB_RETRYCANCEL = 0x5,
    MB_TYPEMASK = 0xF,
    MB_ICONERROR = 0x10,
    MB_ICONHAND = MB_ICONERROR,
    MB_ICONSTOP = MB_ICONERROR,
    MB_ICONQUESTION = 0x20,
    MB_ICONWARNING = 0x30,
    MB_ICONEXCLAMATION = MB_ICONWARNING,
    MB_ICONINFORMATION = 0x40,
    MB_ICONASTERISK = MB_ICONINFORMATION,
    MB_ICONMASK = 0xF0,
    MB_DEFBUTTON1 = 0x000,
    MB_DEFBUTTON2 = 0x100,
    MB_DEFBUTTON3 = 0x200,
    MB_DEFMASK = 0xF00,
};

enum DialogResult : int {
    IDOK = 1,
    IDCANCEL = 2,
    IDABORT = 3,
    IDRETRY = 4,
    IDIGNORE = 5,
    IDYES = 6,
    IDNO = 7,
};

// One message box as the library asked for it.
struct MessageBoxRequest {
    QWidget* owner = nullptr;
    basekit::ustring text;
    basekit::ustring caption;
    unsigned flags = MB_OK;
    basekit::ustring details;   // the technical text, under the box's Details button; may be empty
};

// Answers a message box instead of the user: returns IDOK, IDYES, ...
using MessageBoxResponder = std::function<int(const MessageBoxRequest&)>;

}  // namespace uikit
