// The launchers libfenk exports: one row each, the one list of them.
//
//   exported name  what hosts bind, exactly: a name never changes once exported (run_VolumeControlDlg
//                  runs CTivar_VolumeControlDlg, and the command-line loader of channel files is to be
//                  exported as run_CLTCCFFLoaderDlg, with its doubled F)
//   window         the class of the dialog or sheet the launcher runs
//   shape          its argument list (FenkLauncherShapes.h)
//   caption        the string of the window's caption a host shows for it
//
// Adding a launcher is a row here and its window. From the rows come the exported functions
// (fenklib/FenkLaunchers.cpp), their declarations (fenklib/FenkLaunchers.h), the caption a host asks
// for (FenkLauncherCaption), the export test and the host program's entries; the build finds each
// window's header beside its class (fenklib/<folder>/<window>.h). The order is the host's menu
// and tour order. A row starts at the beginning of its line and stays on it.
//
// No include guard: each reader defines FENK_LAUNCHER(name, window, shape, caption), includes
// this file and undefines it.
FENK_LAUNCHER(run_ReceiverInfoDlg, CReceiverInfoDlg, ReceiverParent, IDS_RECEIVER_INFO)
FENK_LAUNCHER(run_ReceiverStatusPS, CReceiverStatusPS, ReceiverParent, IDS_STATUS)
FENK_LAUNCHER(run_PositioningPS, CPositioningPS, ReceiverParent, IDS_POSITIONING)
FENK_LAUNCHER(run_TrackingOptionsPS, CTrackingOptionsPS, ReceiverParent, IDS_TRACKING_OPTIONS)
FENK_LAUNCHER(run_ReceiverPortsDlg, CReceiverPortsDlg, ReceiverParent, IDS_RECEIVER_PORTS)
FENK_LAUNCHER(run_LoggingMessagesDlg, CLoggingMessagesDlg, ReceiverParent, IDS_LOGGING_MESSAGES)
FENK_LAUNCHER(run_ReceiverFileExplorerPS, CReceiverFileExplorerPS, ReceiverParent, IDS_RECEIVER_FILE_EXPLORER)
FENK_LAUNCHER(run_FileSystemInfoDlg, CFileSystemInfoDlg, ReceiverParent, IDS_FILE_SYSTEM_INFO)
FENK_LAUNCHER(run_ReceiverPowerDlg, CReceiverPowerDlg, ReceiverParent, IDS_RECEIVER_POWER)
FENK_LAUNCHER(run_BluetoothDlg, CBluetoothDlg, ReceiverParent, IDS_BLUETOOTH)
FENK_LAUNCHER(run_AutoSeedDlg, CAutoSeedDlg, ReceiverParent, IDS_AUTO_SEED)
FENK_LAUNCHER(run_AutoSeed_PointListDlg, CAutoSeed_PointListDlg, ReceiverParent, IDS_STORED_POINTS)
FENK_LAUNCHER(run_SiteConfigurationDlg, CSiteConfigurationDlg, ReceiverParent, IDS_SITE_CONFIGURATION)
FENK_LAUNCHER(run_RawMeasurementDlg, CRawMeasurementDlg, ReceiverParent, IDS_RAW_MEASUREMENT)
FENK_LAUNCHER(run_ToolsDlg, CToolsDlg, ReceiverParent, IDS_RECEIVER_TOOLS)
FENK_LAUNCHER(run_VolumeControlDlg, CTivar_VolumeControlDlg, ReceiverParent, IDS_VOLUME_CONTROL)
FENK_LAUNCHER(run_Tivar_MasterVolumeDlg, CTivar_MasterVolumeDlg, ReceiverParent, IDS_MASTER_VOLUME)
FENK_LAUNCHER(run_SetupPS, CSetupPS, Parent, IDS_SETUP_CAPTION)
FENK_LAUNCHER(run_ZedToolsPS, CZedToolsPS, Parent, IDS_ZED_TOOLS)
FENK_LAUNCHER(run_BackpackToolsPS, CBackpackToolsPS, Parent, IDS_BACKPACK_TOOLS)
FENK_LAUNCHER(run_CompassCalibrationDlg, CCompassCalibrationDlg, Parent, IDS_COMPASS_CALIBRATION)
FENK_LAUNCHER(run_ChannelsListDlg, CChannelsListDlg, ChannelList, IDS_CHANNELS)
FENK_LAUNCHER(run_UniversalModemPS, CUniversalModemPS, ModemParent, IDS_MODEM_SHEET)
FENK_LAUNCHER(run_XyzCoordEditDlg, CXyzCoordEditDlg, XyzPosition, IDS_CARTESIAN_COORDINATES)
FENK_LAUNCHER(run_GeoCoordEditDlg, CGeoCoordEditDlg, GeoPosition, IDS_GEODETIC_COORDINATES)
FENK_LAUNCHER(run_AutoSeed_NewPointDlg, CAutoSeed_NewPointDlg, PointSlot, IDS_NEW_POINT)
FENK_LAUNCHER(run_MessageListDlg, CMessageListDlg, MessageList, IDS_MESSAGES)
FENK_LAUNCHER(run_RcvMessageDlg, CRcvMessageDlg, Message, IDS_RECEIVER_MESSAGE)
FENK_LAUNCHER(run_RcvMessageListDlg, CRcvMessageListDlg, MessageName, IDS_RECEIVER_MESSAGE_LIST)
FENK_LAUNCHER(run_RcvMessageMulListDlg, CRcvMessageMulListDlg, MessageList, IDS_RECEIVER_MESSAGES_PICK)
FENK_LAUNCHER(run_CopyFileDlg, CCopyFileDlg, CopyFile, IDS_COPY_FILE)
FENK_LAUNCHER(run_ProgressDlg, CProgressDlg, Progress, IDS_PROGRESS)
