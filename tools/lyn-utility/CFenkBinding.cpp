#include "tools/lyn-utility/CFenkBinding.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <string_view>
#include <type_traits>

namespace {

using Menu = CFenkBinding::Menu;

// The library's launchers as the host calls them, one per row of the library's launcher table,
// each typed by its declaration: the call with sample arguments, and the menu its type suggests
// (windows on the receiver in Device, editors of a value in Edit, windows that hold no receiver
// in Tools).
struct LAUNCHER_ROW {
    const char* name;
    LauncherInvoker (*call)(QFunctionPointer entry);
    bool takesReceiver;
    Menu menu;
};

// The one place an address from the library becomes a function: its type comes from the
// declaration of what was bound.
template <typename Function>
Function* As(QFunctionPointer entry) {
    return reinterpret_cast<Function*>(entry);
}

template <typename Function>
LauncherInvoker Call(QFunctionPointer entry) {
    return SampleCall(As<Function>(entry));
}

template <typename Function>
constexpr LAUNCHER_ROW Row(const char* name) {
    using Type = LAUNCHER_TYPE<Function>;
    const Menu menu = !Type::takesReceiver ? Menu::Tools : Type::takesValue ? Menu::Edit : Menu::Device;
    return {name, &Call<Function>, Type::takesReceiver, menu};
}

constexpr LAUNCHER_ROW kLaunchers[] = {
#define FENK_LAUNCHER(name, window, shape, caption) Row<decltype(name)>(#name),
#include "fenklib/FenkLauncherTable.h"
#undef FENK_LAUNCHER
};

// The host's own choices for some launchers, by name: a key, or another menu (None: the tour
// only, for windows that need a real file or job to show).
struct PLACEMENT {
    std::string_view name;
    Menu menu;
    const char* shortcut;
};
constexpr PLACEMENT kPlacements[] = {
    {"run_ReceiverInfoDlg", Menu::Device, "Ctrl+I"},
    {"run_ReceiverStatusPS", Menu::Device, "Ctrl+T"},
    {"run_ReceiverPortsDlg", Menu::Device, "Ctrl+P"},
    {"run_LoggingMessagesDlg", Menu::Device, "Ctrl+L"},
    {"run_ReceiverFileExplorerPS", Menu::Device, "Ctrl+F"},
    {"run_SiteConfigurationDlg", Menu::Device, "Ctrl+E"},
    {"run_CopyFileDlg", Menu::None, ""},
    {"run_ProgressDlg", Menu::None, ""},
};

constexpr bool EveryPlacementIsALauncher() {
    for (const PLACEMENT& placement : kPlacements) {
        bool found = false;
        for (const LAUNCHER_ROW& row : kLaunchers) found = found || placement.name == row.name;
        if (!found) return false;
    }
    return true;
}
static_assert(EveryPlacementIsALauncher(), "a placement names a launcher the library's table does not have");

const PLACEMENT* PlacementOf(std::string_view name) {
    for (const PLACEMENT& placement : kPlacements)
        if (placement.name == name) return &placement;
    return nullptr;
}

QString DefaultLibraryPath() {
    // Beside the program, in the build tree's fenklib folder or in an installed tree; else the
    // system's library path, by the versioned name (the unversioned one is only for building).
    const QString soname = QStringLiteral("libfenk.so." FENK_SOVERSION);
    const QDir here(QCoreApplication::applicationDirPath());
    for (const QString& candidate : {here.filePath(QStringLiteral("libfenk.so")),
                                     here.filePath(QStringLiteral("../../fenklib/libfenk.so")),
                                     here.filePath(QStringLiteral("../lib/") + soname)})
        if (QFileInfo::exists(candidate)) return QFileInfo(candidate).canonicalFilePath();
    return soname;
}

}  // namespace

bool CFenkBinding::Load(const QString& path) {
    m_library.setFileName(path.isEmpty() ? DefaultLibraryPath() : path);
    if (!m_library.load()) return false;
    m_caption = As<decltype(FenkLauncherCaption)>(BindOptional("FenkLauncherCaption"));
    m_probe = As<std::remove_pointer_t<ProbeFunction>>(BindOptional("FenkProbeReceiver"));
    m_ownPortChange = As<std::remove_pointer_t<OwnPortChangeFunction>>(BindOptional("FenkOwnPortChange"));
    m_restoreOwnPort = As<std::remove_pointer_t<RestoreOwnPortFunction>>(BindOptional("FenkRestoreOwnPort"));
    for (const LAUNCHER_ROW& row : kLaunchers) {
        const QFunctionPointer entry = Bind(row.name);
        if (!entry) continue;
        LauncherInvoker call = row.call(entry);
        if (!call) continue;   // bound for hosts that call it from elsewhere, not offered here
        const PLACEMENT* placement = PlacementOf(row.name);
        m_launchers.push_back({row.name, std::move(call), CaptionOf(row.name), placement ? placement->shortcut : "",
                               placement ? placement->menu : row.menu, row.takesReceiver});
    }
    m_preOpen = As<decltype(::PreOpenPort)>(Bind("PreOpenPort"));
    m_postClose = As<decltype(::PostClosePort)>(Bind("PostClosePort"));
    m_onExit = As<decltype(::OnExitApp)>(Bind("OnExitApp"));
    return true;
}

QFunctionPointer CFenkBinding::Bind(const char* name) {
    const QFunctionPointer f = m_library.resolve(name);
    (f ? m_bound : m_missing).push_back(name);
    return f;
}

QFunctionPointer CFenkBinding::BindOptional(const char* name) {
    // Extensions a library may lack without anything being missing.
    return m_library.resolve(name);
}

basekit::ustring CFenkBinding::CaptionOf(const char* name) const {
    basekit::ustring caption;
    if (m_caption && m_caption(name, caption) && !caption.empty()) return caption;
    // A library without captions: the window's name, still never its class.
    return basekit::ustring::FromUtf8(std::string_view(name).substr(std::string_view("run_").size()));
}

bool CFenkBinding::PreOpenPort(const basekit::CSmartPtr<devio::IPortAddr>& addr) const {
    return m_preOpen ? m_preOpen(addr) : true;
}

void CFenkBinding::PostClosePort(const basekit::CSmartPtr<devio::IPortAddr>& addr) const {
    if (m_postClose) m_postClose(addr);
}

void CFenkBinding::OnExitApp() const {
    if (m_onExit) m_onExit();
}
