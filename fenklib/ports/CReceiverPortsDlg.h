#pragma once
#include "fenklib/frame/CDialogControls.h"
#include "fenklib/frame/CFenkDialog.h"
#include "platform/basekit/CStdException.h"

class CPortList;
struct PORT_GROUP;
class QTreeWidgetItem;

// Every communication port of the receiver in a tree by group; activating a port opens its
// sheet. When a serial sheet reports that the controller's own port was reconfigured the
// dialog ends with 4 at once, so the host reconnects at the new settings.
class CReceiverPortsDlg : public CFenkDialog {
public:
    static constexpr int kResultReconnect = 4;
    enum : unsigned { IDC_PORT_TREE = 3370 };

    CReceiverPortsDlg(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent);
    ~CReceiverPortsDlg() override;

    bool OnInitDialog() override;
    // A port item opens its port's sheet; a group item does nothing.
    void OnOpenPort(QTreeWidgetItem* item);
    // Lists the ports again (F5); the tree stays as it was when the listing fails.
    void Refresh();

    CPortList* PortList() const { return m_list; }

    // The ports of every group that could be listed, and the first failure of one that could not.
    struct LISTING {
        std::vector<std::pair<const PORT_GROUP*, std::vector<basekit::ustring>>> groups;
        basekit::CStdException::CExInfo firstError;
    };
    static LISTING ListGroups(devio::CVokReceiverMate& mate);

private:
    void List(bool again);
    void FillTree(const LISTING& listing);
    int RunSheet(int kind, const basekit::ustring& keyword);

    CDialogControls m_controls;
    CPortList* m_list = nullptr;
};
