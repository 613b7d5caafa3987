#pragma once
#include <QFont>
#include <memory>

#include "platform/basekit/CResourceInstance.h"
#include "platform/basekit/ustring.h"

// The one library object: its resources, the application name that message boxes of the port
// hooks carry, and the bold font dialogs emphasise captions with.
class CFenkLibApp {
public:
    static CFenkLibApp& Instance();

    const basekit::CResourceInstance& Resources() const;
    const basekit::ustring& ApplicationName() const { return m_appName; }
    // The font of the desktop with weight 700; empty until an application object exists.
    const QFont& BoldFont();

private:
    CFenkLibApp();
    basekit::ustring m_appName;
    std::unique_ptr<QFont> m_boldFont;
};
