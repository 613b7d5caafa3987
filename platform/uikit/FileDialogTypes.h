#pragma once
#include <functional>

#include "platform/basekit/ustring.h"

class QWidget;

namespace uikit {

// One file dialog as the library asked for it.
struct FileDialogRequest {
    enum class Kind { Open, Save };
    Kind kind = Kind::Open;
    QWidget* owner = nullptr;
    basekit::ustring defaultPath;        // a folder, a file name, or both
    basekit::ustring filter;             // classic form: "Text Files (*.txt)|*.txt|...||"
    basekit::ustring defaultExtension;   // added to a chosen name without one (".txt" or "txt")
};

// Answers a file dialog instead of the user: the chosen path, or empty for Cancel.
using FileDialogResponder = std::function<basekit::ustring(const FileDialogRequest&)>;

}  // namespace uikit
