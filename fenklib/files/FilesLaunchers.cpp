#include "fenklib/FenkLaunchers.h"
#include "fenklib/files/CCopyFileDlg.h"
#include "fenklib/files/CFileSystemInfoDlg.h"
#include "fenklib/files/CProgressDlg.h"
#include "fenklib/files/CReceiverFileExplorerPS.h"
#include "fenklib/frame/FenkExport.h"
#include "fenklib/frame/LauncherConvention.h"

extern "C" FENK_EXPORT int run_ReceiverFileExplorerPS(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent) {
    return RunLauncher<CReceiverFileExplorerPS>(receiver, parent);
}

extern "C" FENK_EXPORT int run_FileSystemInfoDlg(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent) {
    return RunLauncher<CFileSystemInfoDlg>(receiver, parent);
}

extern "C" FENK_EXPORT int run_CopyFileDlg(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent, const wchar_t* source,
                                           const wchar_t* target, bool fromReceiver) {
    return RunLauncher<CCopyFileDlg>(receiver, parent, source, target, fromReceiver);
}

extern "C" FENK_EXPORT int run_ProgressDlg(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent, PROGRESS_INFO info) {
    return RunLauncher<CProgressDlg>(receiver, parent, std::move(info));
}
