#include "fenklib/files/CReceiverFileExplorerPS.h"

#include "fenklib/frame/LibraryHelpers.h"
#include "fenklib/resources/StringIds.h"

CReceiverFileExplorerPS::CReceiverFileExplorerPS(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent)
    : CFenkPropertySheet(receiver, LoadResString(IDS_RECEIVER_FILE_EXPLORER), parent, L"CReceiverFileExplorerPS"),
      m_files(receiver),
      m_logs(receiver),
      m_afrm(receiver),
      m_frontPanel(receiver) {
    AddPage(&m_files);
    AddPage(&m_logs);
    AddPage(&m_afrm);
    AddPage(&m_frontPanel);
}

CReceiverFileExplorerPS::~CReceiverFileExplorerPS() { DestroyWindow(); }
