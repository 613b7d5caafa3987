#pragma once
#include <QLibrary>
#include <QWidget>
#include <string>
#include <vector>

#include "platform/basekit/CSmartPtr.h"
#include "platform/devio/IPortAddr.h"
#include "platform/devio/IReceiver.h"

// libfenk loaded at run time, its entry points bound by name. A name the library does not
// export is reported and left out; it never stops the host.
class CFenkBinding {
public:
    using ReceiverLauncher = int (*)(basekit::CSmartPtr<devio::IReceiver>, QWidget*);
    struct Launcher {
        std::string name;
        ReceiverLauncher run;
    };

    // Loads the library from `path`, or by its name beside the program and on the system's paths.
    bool Load(const QString& path);
    QString ErrorText() const { return m_library.errorString(); }
    QString FileName() const { return m_library.fileName(); }

    const std::vector<Launcher>& ReceiverLaunchers() const { return m_receiverLaunchers; }
    const std::vector<std::string>& Missing() const { return m_missing; }
    const std::vector<std::string>& Bound() const { return m_bound; }

    bool PreOpenPort(const basekit::CSmartPtr<devio::IPortAddr>& addr) const;
    void PostClosePort(const basekit::CSmartPtr<devio::IPortAddr>& addr) const;
    void OnExitApp() const;

private:
    QFunctionPointer Bind(const char* name);
    QLibrary m_library;
    std::vector<Launcher> m_receiverLaunchers;
    std::vector<std::string> m_missing;
    std::vector<std::string> m_bound;
    bool (*m_preOpen)(basekit::CSmartPtr<devio::IPortAddr>) = nullptr;
    bool (*m_postClose)(basekit::CSmartPtr<devio::IPortAddr>) = nullptr;
    void (*m_onExit)() = nullptr;
};
