// The built library exports, by their exact names, the launchers of the dialogs that exist,
// the port hooks and the two exported classes, and nothing that would be a placeholder.
#include <dlfcn.h>
#include <gtest/gtest.h>

#include <memory>

namespace {

struct Library {
    void* handle = dlopen(FENK_LIBRARY_PATH, RTLD_NOW | RTLD_LOCAL);
    ~Library() { if (handle) dlclose(handle); }
};

TEST(Exports, EveryBuiltEntryResolvesByName) {
    const Library lib;
    ASSERT_NE(lib.handle, nullptr) << dlerror();
    const char* present[] = {
        "PreOpenPort", "PostClosePort", "OnExitApp",
        "run_ReceiverInfoDlg",
        "run_SetupPS", "run_ZedToolsPS", "run_BackpackToolsPS", "run_CompassCalibrationDlg",
        "run_ReceiverFileExplorerPS", "run_FileSystemInfoDlg", "run_CopyFileDlg", "run_ProgressDlg",
        "run_ChannelsListDlg", "run_SiteConfigurationDlg", "run_XyzCoordEditDlg", "run_GeoCoordEditDlg",
        "run_AutoSeedDlg", "run_AutoSeed_PointListDlg", "run_AutoSeed_NewPointDlg",
        "run_LoggingMessagesDlg", "run_MessageListDlg", "run_RcvMessageDlg", "run_RcvMessageListDlg", "run_RcvMessageMulListDlg",
        "run_ReceiverStatusPS",
        "run_ToolsDlg", "run_RawMeasurementDlg", "run_PositioningPS", "run_TrackingOptionsPS", "run_ReceiverPowerDlg",
        "run_BluetoothDlg", "run_VolumeControlDlg", "run_Tivar_MasterVolumeDlg",
        "run_ReceiverPortsDlg",
        "_ZN19CFenkGlobalSettings3RefEv", "_ZN11CFenkLibDoc21GetApplicationVersionEb",
        "_ZN11CFenkLibDoc22GetLongApplicationNameEb", "_ZN11CFenkLibDoc23GetShortApplicationNameEb",
    };
    for (const char* name : present) EXPECT_NE(dlsym(lib.handle, name), nullptr) << name;
}

TEST(Exports, LaunchersOfDialogsNotBuiltAreAbsent) {
    const Library lib;
    ASSERT_NE(lib.handle, nullptr) << dlerror();
    const char* absent[] = {"run_CLTCCFFLoaderDlg", "run_UploadFirmwareDlg"};
    for (const char* name : absent) EXPECT_EQ(dlsym(lib.handle, name), nullptr) << name;
    EXPECT_EQ(dlsym(lib.handle, "_ZN11CFenkLibApp8InstanceEv"), nullptr) << "internal classes stay hidden";
}

}  // namespace
