#pragma once
#include "platform/basekit/CStdException.h"
#include "platform/uikit/MessageBoxTypes.h"

namespace uikit {

// Every message box of the library goes through here, so that a test (or a headless host)
// can read what would be shown and answer it without a window and without blocking.
class CMessageBoxService {
public:
    // Shows text with caption (empty: the application's name) and returns the answer (IDOK...).
    // With a responder installed, the responder answers and nothing is shown.
    static int Show(QWidget* owner, const basekit::ustring& text, const basekit::ustring& caption,
                    unsigned flags);
    // The exception's own message in an error box captioned with the application's name.
    static void ReportError(QWidget* owner, const basekit::CStdException& e);

    // Installs responder and returns the one it replaces (an empty one: real boxes).
    static MessageBoxResponder SetResponder(MessageBoxResponder responder);
};

}  // namespace uikit
