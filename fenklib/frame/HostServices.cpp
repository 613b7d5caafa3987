// What a host asks of the library besides its windows: who answers on a link it just opened,
// and the captions of the windows it offers in its menus.
#include <cstring>

#include "fenklib/frame/CFenkLibApp.h"
#include "fenklib/frame/FenkExport.h"
#include "fenklib/frame/LibraryHelpers.h"
#include "fenklib/receiver/CVokReceiverMate.h"
#include "fenklib/resources/StringIds.h"
#include "platform/basekit/CResourceInstance.h"

using basekit::ustring;

namespace {

struct LAUNCHER_CAPTION {
    const char* launcher;
    unsigned captionId;
};
constexpr LAUNCHER_CAPTION kCaptions[] = {
    {"run_ReceiverInfoDlg", IDS_RECEIVER_INFO},
    {"run_ReceiverStatusPS", IDS_STATUS},
    {"run_ReceiverPortsDlg", IDS_RECEIVER_PORTS},
    {"run_LoggingMessagesDlg", IDS_LOGGING_MESSAGES},
    {"run_FileSystemInfoDlg", IDS_FILE_SYSTEM_INFO},
    {"run_SiteConfigurationDlg", IDS_SITE_CONFIGURATION},
    {"run_CopyFileDlg", IDS_COPY_FILE},
    {"run_ProgressDlg", IDS_PROGRESS},
    {"run_SetupPS", IDS_SETUP_CAPTION},
    {"run_ZedToolsPS", IDS_ZED_TOOLS},
    {"run_BackpackToolsPS", IDS_BACKPACK_TOOLS},
    {"run_CompassCalibrationDlg", IDS_COMPASS_CALIBRATION},
    {"run_ChannelsListDlg", IDS_CHANNELS},
    {"run_XyzCoordEditDlg", IDS_CARTESIAN_COORDINATES},
    {"run_GeoCoordEditDlg", IDS_GEODETIC_COORDINATES},
    {"run_RcvMessageDlg", IDS_RECEIVER_MESSAGE},
    {"run_RcvMessageListDlg", IDS_RECEIVER_MESSAGE_LIST},
};

}  // namespace

// 0 when the receiver answered all three; otherwise the system code of the first failure
// (an error reply counts as invalid data).
extern "C" FENK_EXPORT int FenkProbeReceiver(basekit::CSmartPtr<devio::IReceiver> receiver, unsigned timeoutMs, ustring& model,
                                             ustring& serial, ustring& firmware) {
    try {
        devio::CVokReceiverMate mate(receiver);
        mate.Identify(timeoutMs, model, serial, firmware);
        return 0;
    } catch (const basekit::CWinException& e) {
        return static_cast<int>(e.Code());
    } catch (const basekit::CStdException&) {
        return static_cast<int>(basekit::kErrorInvalidData);
    }
}

extern "C" FENK_EXPORT bool FenkLauncherCaption(const char* launcherName, ustring& caption) {
    const basekit::CResourceScope resources(CFenkLibApp::Instance().Resources());
    for (const LAUNCHER_CAPTION& row : kCaptions) {
        if (std::strcmp(row.launcher, launcherName) != 0) continue;
        caption = LoadResString(row.captionId);
        return !caption.empty();
    }
    return false;
}
