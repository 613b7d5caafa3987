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
    static int Show(const MessageBoxRequest& request);
    // An error box captioned with the application's name: the exception's plain sentence (what
    // happened, what to check) leads and its own message is under Details; an exception without
    // a plain sentence shows its message alone.
    static void ReportError(QWidget* owner, const basekit::CStdException& e);
    // The same for the exception being handled, whatever was thrown (call inside a catch block):
    // the boundaries where nothing may escape (event dispatch, job ends, launchers) use it.
    static void ReportCurrentError(QWidget* owner);
    // An error box with a plain sentence and the technical text under Details.
    static void ShowError(QWidget* owner, const basekit::ustring& plain, const basekit::ustring& details,
                          const basekit::ustring& caption = {});

    // Installs responder and returns the one it replaces (an empty one: real boxes).
    static MessageBoxResponder SetResponder(MessageBoxResponder responder);
};

}  // namespace uikit
