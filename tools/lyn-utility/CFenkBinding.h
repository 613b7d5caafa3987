#pragma once
#include <QLibrary>
#include <QWidget>
#include <string>
#include <vector>

#include "platform/basekit/CSmartPtr.h"
#include "platform/devio/IPortAddr.h"
#include "platform/devio/IReceiver.h"
#include "platform/devio/SerialLine.h"
#include "fenklib/FenkLaunchers.h"
#include "fenklib/frame/PortHooks.h"
#include "tools/lyn-utility/LauncherShapes.h"

// libfenk loaded at run time, its entry points bound by name. A name the library does not
// export is reported and left out; it never stops the host.
class CFenkBinding {
public:
    // Where the utility's window offers a launcher: windows on the receiver in the Device menu,
    // those that hold no receiver in Tools, editors of a value in Edit; None: the tour only.
    enum class Menu { Device, Tools, Edit, None };
    struct Launcher {
        std::string name;
        LauncherInvoker run;        // called as (receiver, parent) whatever the launcher's shape
        basekit::ustring caption;   // the window's own caption for the menu, never its class name
        const char* shortcut = "";  // a key sequence ("Ctrl+I"), or empty
        Menu menu = Menu::Device;
        bool takesReceiver = true;
    };
    // The receiver's identity as the library's probe read it.
    struct Identity {
        basekit::ustring model, serial, firmware;
    };
    // The library's probe (model, serial number, firmware within timeoutMs): 0 or the system
    // error code of the failure. Absent from libraries that do not export it.
    using ProbeFunction = int (*)(basekit::CSmartPtr<devio::IReceiver>, unsigned timeoutMs, basekit::ustring& model,
                                  basekit::ustring& serial, basekit::ustring& firmware);
    ProbeFunction Probe() const { return m_probe; }
    // After a ports dialog answered 4: the framing of the controller's own port before and after
    // the change (false: none recorded), and the writing back of the settings it had before
    // (0 or the system error code). Absent from libraries that do not export them.
    using OwnPortChangeFunction = bool (*)(devio::SerialLineSettings& before, devio::SerialLineSettings& after);
    using RestoreOwnPortFunction = int (*)(basekit::CSmartPtr<devio::IReceiver>);
    OwnPortChangeFunction OwnPortChange() const { return m_ownPortChange; }
    RestoreOwnPortFunction RestoreOwnPort() const { return m_restoreOwnPort; }

    // Loads the library from `path`, or by its name beside the program and on the system's paths.
    bool Load(const QString& path);
    QString ErrorText() const { return m_library.errorString(); }
    QString FileName() const { return m_library.fileName(); }

    // Every launcher of the library's table that it exports and the host can call, in the
    // table's order.
    const std::vector<Launcher>& Launchers() const { return m_launchers; }
    const std::vector<std::string>& Missing() const { return m_missing; }
    const std::vector<std::string>& Bound() const { return m_bound; }

    bool PreOpenPort(const basekit::CSmartPtr<devio::IPortAddr>& addr) const;
    void PostClosePort(const basekit::CSmartPtr<devio::IPortAddr>& addr) const;
    void OnExitApp() const;

private:
    QFunctionPointer Bind(const char* name);
    QFunctionPointer BindOptional(const char* name);
    basekit::ustring CaptionOf(const char* name) const;
    QLibrary m_library;
    std::vector<Launcher> m_launchers;
    std::vector<std::string> m_missing;
    std::vector<std::string> m_bound;
    decltype(&::PreOpenPort) m_preOpen = nullptr;
    decltype(&::PostClosePort) m_postClose = nullptr;
    decltype(&::OnExitApp) m_onExit = nullptr;
    ProbeFunction m_probe = nullptr;
    OwnPortChangeFunction m_ownPortChange = nullptr;
    RestoreOwnPortFunction m_restoreOwnPort = nullptr;
    // The library's captions from its string table, when it exports them.
    decltype(&FenkLauncherCaption) m_caption = nullptr;
};
