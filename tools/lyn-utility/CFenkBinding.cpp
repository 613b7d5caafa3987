#include "tools/lyn-utility/CFenkBinding.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <iterator>

#include "tools/lyn-utility/HostStrings.h"

namespace {

// Every launcher a host may find; those taking only the receiver and a parent get a menu entry.
// Row i's fallback caption is host string HS_CAPTION_FIRST + i.
struct ReceiverLauncherRow {
    const char* name;
    const char* shortcut;
};
constexpr ReceiverLauncherRow kReceiverLaunchers[] = {
    {"run_ReceiverInfoDlg", "Ctrl+I"}, {"run_ReceiverStatusPS", "Ctrl+T"}, {"run_PositioningPS", ""},
    {"run_TrackingOptionsPS", ""}, {"run_ReceiverPortsDlg", "Ctrl+P"}, {"run_LoggingMessagesDlg", "Ctrl+L"},
    {"run_ReceiverFileExplorerPS", "Ctrl+F"}, {"run_FileSystemInfoDlg", ""}, {"run_ReceiverPowerDlg", ""},
    {"run_BluetoothDlg", ""}, {"run_AutoSeedDlg", ""}, {"run_AutoSeed_PointListDlg", ""},
    {"run_SiteConfigurationDlg", "Ctrl+E"}, {"run_RawMeasurementDlg", ""}, {"run_ToolsDlg", ""},
    {"run_VolumeControlDlg", ""}, {"run_Tivar_MasterVolumeDlg", ""},
};
// Launchers with other arguments, bound when present for hosts that call them from elsewhere.
constexpr const char* kOtherLaunchers[] = {
    "run_MessageListDlg", "run_RcvMessageDlg", "run_RcvMessageListDlg", "run_RcvMessageMulListDlg",
    "run_CopyFileDlg", "run_XyzCoordEditDlg", "run_GeoCoordEditDlg", "run_AutoSeed_NewPointDlg",
    "run_ProgressDlg", "run_UniversalModemPS", "run_UploadFirmwareDlg", "run_SetupPS", "run_ZedToolsPS",
    "run_BackpackToolsPS", "run_CompassCalibrationDlg", "run_ChannelsListDlg", "run_CLTHelpDlg",
    "run_CLTFLoaderDlg", "run_CLTCCFFLoaderDlg",
};

QString DefaultLibraryPath() {
    // Beside the program in an installed tree, or in the build tree's fenklib folder.
    const QDir here(QCoreApplication::applicationDirPath());
    for (const QString& candidate : {here.filePath(QStringLiteral("libfenk.so")),
                                     here.filePath(QStringLiteral("../../fenklib/libfenk.so")),
                                     here.filePath(QStringLiteral("../lib/libfenk.so"))})
        if (QFileInfo::exists(candidate)) return QFileInfo(candidate).canonicalFilePath();
    return QStringLiteral("fenk");
}

}  // namespace

bool CFenkBinding::Load(const QString& path) {
    m_library.setFileName(path.isEmpty() ? DefaultLibraryPath() : path);
    if (!m_library.load()) return false;
    m_caption = reinterpret_cast<decltype(m_caption)>(BindOptional("FenkLauncherCaption"));
    m_probe = reinterpret_cast<ProbeFunction>(BindOptional("FenkProbeReceiver"));
    m_ownPortChange = reinterpret_cast<OwnPortChangeFunction>(BindOptional("FenkOwnPortChange"));
    m_restoreOwnPort = reinterpret_cast<RestoreOwnPortFunction>(BindOptional("FenkRestoreOwnPort"));
    for (std::size_t row = 0; row < std::size(kReceiverLaunchers); ++row) {
        const ReceiverLauncherRow& r = kReceiverLaunchers[row];
        if (const auto f = Bind(r.name))
            m_receiverLaunchers.push_back({r.name, reinterpret_cast<ReceiverLauncher>(f), CaptionOf(r.name, row), r.shortcut});
    }
    for (const char* name : kOtherLaunchers) Bind(name);
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
