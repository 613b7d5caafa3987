#pragma once
#include "fenklib/files/CExplorerAFRMPP.h"
#include "fenklib/files/CExplorerFilesPP.h"
#include "fenklib/files/CExplorerFrontPanelPP.h"
#include "fenklib/files/CExplorerLogsPP.h"
#include "fenklib/frame/CFenkPropertySheet.h"

// The receiver's files and logging in one sheet: its log files, what it logs where, the
// automatic file rotation and the front panel's settings.
class CReceiverFileExplorerPS : public CFenkPropertySheet {
public:
    CReceiverFileExplorerPS(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent);
    ~CReceiverFileExplorerPS() override;

    CExplorerFilesPP& FilesPage() { return m_files; }
    CExplorerLogsPP& LogsPage() { return m_logs; }
    CExplorerAFRMPP& AfrmPage() { return m_afrm; }
    CExplorerFrontPanelPP& FrontPanelPage() { return m_frontPanel; }

private:
    CExplorerFilesPP m_files;
    CExplorerLogsPP m_logs;
    CExplorerAFRMPP m_afrm;
    CExplorerFrontPanelPP m_frontPanel;
};
