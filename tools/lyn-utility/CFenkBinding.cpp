#include "tools/lyn-utility/CFenkBinding.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <iterator>

#include "tools/lyn-utility/HostStrings.h"

namespace {

// Every launcher a host may find, one row each: its name, the arguments it takes, where the
// window offers it and its key. A launcher of a known shape needs nothing but its row here;
// row i's fallback caption is host string HS_CAPTION_FIRST + i, used when the library has none.
using Shape = LauncherShape;
using Menu = CFenkBinding::Menu;
struct LAUNCHER_ROW {
    const char* name;
    Shape shape;
    Menu menu;
    const char* shortcut;
};
constexpr LAUNCHER_ROW kLaunchers[] = {
    {"run_ReceiverInfoDlg", Shape::ReceiverParent, Menu::Device, "Ctrl+I"},
    {"run_ReceiverStatusPS", Shape::ReceiverParent, Menu::Device, "Ctrl+T"},
    {"run_PositioningPS", Shape::ReceiverParent, Menu::Device, ""},
    {"run_TrackingOptionsPS", Shape::ReceiverParent, Menu::Device, ""},
    {"run_ReceiverPortsDlg", Shape::ReceiverParent, Menu::Device, "Ctrl+P"},
    {"run_LoggingMessagesDlg", Shape::ReceiverParent, Menu::Device, "Ctrl+L"},
    {"run_ReceiverFileExplorerPS", Shape::ReceiverParent, Menu::Device, "Ctrl+F"},
    {"run_FileSystemInfoDlg", Shape::ReceiverParent, Menu::Device, ""},
    {"run_ReceiverPowerDlg", Shape::ReceiverParent, Menu::Device, ""},
    {"run_BluetoothDlg", Shape::ReceiverParent, Menu::Device, ""},
    {"run_AutoSeedDlg", Shape::ReceiverParent, Menu::Device, ""},
    {"run_AutoSeed_PointListDlg", Shape::ReceiverParent, Menu::Device, ""},
    {"run_SiteConfigurationDlg", Shape::ReceiverParent, Menu::Device, "Ctrl+E"},
    {"run_RawMeasurementDlg", Shape::ReceiverParent, Menu::Device, ""},
    {"run_ToolsDlg", Shape::ReceiverParent, Menu::Device, ""},
    {"run_VolumeControlDlg", Shape::ReceiverParent, Menu::Device, ""},
    {"run_Tivar_MasterVolumeDlg", Shape::ReceiverParent, Menu::Device, ""},
    {"run_SetupPS", Shape::Parent, Menu::Tools, ""},
    {"run_ZedToolsPS", Shape::Parent, Menu::Tools, ""},
    {"run_BackpackToolsPS", Shape::Parent, Menu::Tools, ""},
    {"run_CompassCalibrationDlg", Shape::Parent, Menu::Tools, ""},
    {"run_ChannelsListDlg", Shape::ChannelList, Menu::Tools, ""},
    {"run_CLTHelpDlg", Shape::ParentCode, Menu::Tools, ""},
    {"run_CLTFLoaderDlg", Shape::ParentCodeLetters, Menu::Tools, ""},
    {"run_CLTCCFFLoaderDlg", Shape::ParentCodeLetters, Menu::Tools, ""},
    {"run_XyzCoordEditDlg", Shape::XyzPosition, Menu::Edit, ""},
    {"run_GeoCoordEditDlg", Shape::GeoPosition, Menu::Edit, ""},
    {"run_AutoSeed_NewPointDlg", Shape::PointSlot, Menu::Edit, ""},
    {"run_MessageListDlg", Shape::MessageList, Menu::Edit, ""},
    {"run_RcvMessageDlg", Shape::Message, Menu::Edit, ""},
    {"run_RcvMessageListDlg", Shape::MessageName, Menu::Edit, ""},
    {"run_RcvMessageMulListDlg", Shape::MessageList, Menu::Edit, ""},
    {"run_CopyFileDlg", Shape::CopyFile, Menu::None, ""},
    {"run_ProgressDlg", Shape::Progress, Menu::None, ""},
};
// Launchers whose arguments (a modem, a port being flashed) the host has no sample of: bound
// when present, for hosts that call them from elsewhere.
constexpr const char* kUncalledLaunchers[] = {"run_UniversalModemPS", "run_UploadFirmwareDlg"};

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
    m_caption = reinterpret_cast<decltype(m_caption)>(BindOptional("FenkLauncherCaption"));
    m_probe = reinterpret_cast<ProbeFunction>(BindOptional("FenkProbeReceiver"));
    m_ownPortChange = reinterpret_cast<OwnPortChangeFunction>(BindOptional("FenkOwnPortChange"));
    m_restoreOwnPort = reinterpret_cast<RestoreOwnPortFunction>(BindOptional("FenkRestoreOwnPort"));
    for (std::size_t row = 0; row < std::size(kLaunchers); ++row) {
        const LAUNCHER_ROW& r = kLaunchers[row];
        if (const auto f = Bind(r.name))
            m_launchers.push_back({r.name, MakeInvoker(r.shape, f), CaptionOf(r.name, row), r.shortcut, r.menu,
                                   TakesReceiver(r.shape)});
    }
    for (const char* name : kUncalledLaunchers) Bind(name);
    m_preOpen = reinterpret_cast<decltype(m_preOpen)>(Bind("PreOpenPort"));
    m_postClose = reinterpret_cast<decltype(m_postClose)>(Bind("PostClosePort"));
    m_onExit = reinterpret_cast<decltype(m_onExit)>(Bind("OnExitApp"));
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

basekit::ustring CFenkBinding::CaptionOf(const char* name, std::size_t row) const {
    basekit::ustring caption;
    if (m_caption && m_caption(name, caption) && !caption.empty()) return caption;
    return HostText(HS_CAPTION_FIRST + static_cast<unsigned>(row));
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
