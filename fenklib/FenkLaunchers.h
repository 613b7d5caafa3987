#pragma once
// The launchers libfenk exports, as a host that links the library declares them. A host that
// loads the library at run time binds the same names with dlsym/QLibrary::resolve instead.
#include "fenklib/frame/FenkExport.h"
#include "platform/basekit/CSmartPtr.h"
#include "platform/devio/IReceiver.h"

class QWidget;

extern "C" {
FENK_EXPORT int run_ReceiverInfoDlg(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent);
FENK_EXPORT int run_ToolsDlg(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent);
FENK_EXPORT int run_RawMeasurementDlg(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent);
FENK_EXPORT int run_PositioningPS(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent);
FENK_EXPORT int run_TrackingOptionsPS(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent);
FENK_EXPORT int run_ReceiverPowerDlg(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent);
}
