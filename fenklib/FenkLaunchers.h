#pragma once
// The launchers libfenk exports, as a host that links the library declares them. A host that
// loads the library at run time binds the same names with dlsym/QLibrary::resolve instead.
#include <vector>

#include "fenklib/frame/FenkExport.h"
#include "fenklib/receiver/VokTypes.h"
#include "platform/basekit/CSmartPtr.h"
#include "fenklib/receiver/VokTypes.h"
#include "platform/devio/IReceiver.h"
#include "fenklib/files/ProgressInfo.h"

#include <vector>

class QWidget;
namespace devio {
struct IModem;
}

extern "C" {
FENK_EXPORT int run_ReceiverInfoDlg(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent);
FENK_EXPORT int run_ReceiverPortsDlg(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent);
FENK_EXPORT int run_SetupPS(QWidget* parent);
FENK_EXPORT int run_ZedToolsPS(QWidget* parent);
FENK_EXPORT int run_BackpackToolsPS(QWidget* parent);
FENK_EXPORT int run_CompassCalibrationDlg(QWidget* parent);
FENK_EXPORT int run_ReceiverFileExplorerPS(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent);
FENK_EXPORT int run_FileSystemInfoDlg(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent);
FENK_EXPORT int run_CopyFileDlg(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent, const wchar_t* source,
                                const wchar_t* target, bool fromReceiver);
FENK_EXPORT int run_ProgressDlg(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent, PROGRESS_INFO info);
FENK_EXPORT int run_XyzCoordEditDlg(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent, devio::vok::POS_XYZ& pos);
FENK_EXPORT int run_GeoCoordEditDlg(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent, devio::vok::POS_GEO& pos);
FENK_EXPORT int run_AutoSeedDlg(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent);
FENK_EXPORT int run_AutoSeed_PointListDlg(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent);
FENK_EXPORT int run_AutoSeed_NewPointDlg(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent, int slot);
FENK_EXPORT int run_SiteConfigurationDlg(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent);
FENK_EXPORT int run_ChannelsListDlg(QWidget* parent, const std::vector<double>& channels, double& result);
FENK_EXPORT int run_UniversalModemPS(basekit::CSmartPtr<devio::IModem> modem, QWidget* parent);
FENK_EXPORT int run_LoggingMessagesDlg(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent);
FENK_EXPORT int run_MessageListDlg(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent,
                                   std::vector<devio::vok::MSG>& list);
FENK_EXPORT int run_RcvMessageDlg(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent, devio::vok::MSG& message);
FENK_EXPORT int run_RcvMessageListDlg(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent, basekit::ustring& name);
FENK_EXPORT int run_RcvMessageMulListDlg(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent,
                                         std::vector<devio::vok::MSG>& list);
FENK_EXPORT int run_ReceiverStatusPS(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent);
FENK_EXPORT int run_ToolsDlg(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent);
FENK_EXPORT int run_RawMeasurementDlg(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent);
FENK_EXPORT int run_PositioningPS(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent);
FENK_EXPORT int run_TrackingOptionsPS(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent);
FENK_EXPORT int run_ReceiverPowerDlg(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent);
FENK_EXPORT int run_BluetoothDlg(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent);
FENK_EXPORT int run_VolumeControlDlg(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent);
FENK_EXPORT int run_Tivar_MasterVolumeDlg(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent);
}
