#include "fenklib/files/CReceiverFileExplorerPS.h"

#include "fenklib/frame/LibraryHelpers.h"
#include "fenklib/resources/StringIds.h"

CReceiverFileExplorerPS::CReceiverFileExplorerPS(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent)
    : CFenkPropertySheet(receiver, LoadResString(IDS_RECEIVER_FILE_EXPLORER), parent, L"CReceiverFileExplorerPS"),
      m_files(receiver),
      m_afrm(receiver) {
    AddPage(&m_files);
    AddPage(&m_afrm);
}

CReceiverFileExplorerPS::~CReceiverFileExplorerPS() { DestroyWindow(); }
