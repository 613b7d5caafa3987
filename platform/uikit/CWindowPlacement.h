#pragma once
#include "platform/basekit/ustring.h"

class QWidget;

namespace uikit {

// A window's position and size kept in the per-user settings under its name (group
// "WindowPlacement"), so a dialog opens where the user left it. An empty name keeps nothing.
class CWindowPlacement {
public:
    static void Save(const QWidget& window, const basekit::ustring& name);
    // True when a placement was found and applied.
    static bool Restore(QWidget& window, const basekit::ustring& name);
};

}  // namespace uikit
