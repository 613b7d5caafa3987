#pragma once
// The launchers libfenk exports, as a host that links the library declares them. A host that
// loads the library at run time binds the same names with dlsym/QLibrary::resolve instead.
#include <vector>

#include "fenklib/frame/FenkExport.h"
#include "fenklib/receiver/VokTypes.h"
#include "platform/basekit/CSmartPtr.h"
#include "platform/devio/IReceiver.h"

class QWidget;

extern "C" {
FENK_EXPORT int run_ReceiverInfoDlg(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent);
FENK_EXPORT int run_LoggingMessagesDlg(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent);
FENK_EXPORT int run_MessageListDlg(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent,
                                   std::vector<devio::vok::MSG>& list);
FENK_EXPORT int run_RcvMessageDlg(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent, devio::vok::MSG& message);
FENK_EXPORT int run_RcvMessageListDlg(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent, basekit::ustring& name);
FENK_EXPORT int run_RcvMessageMulListDlg(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent,
                                         std::vector<devio::vok::MSG>& list);
}
