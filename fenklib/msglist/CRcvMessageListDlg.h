#pragma once
#include "fenklib/frame/CDialogControls.h"
#include "fenklib/frame/CFenkDialog.h"

class QTreeWidget;

// Picks one message name from the receiver's catalogue; OK only on a message node.
class CRcvMessageListDlg : public CFenkDialog {
public:
    CRcvMessageListDlg(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent, basekit::ustring& name);
    ~CRcvMessageListDlg() override;

    bool OnInitDialog() override;
    void UpdateControls() override;
    void accept() override;

    QTreeWidget* Tree() const { return m_tree; }
    bool IsOkEnabled() const;

private:
    CDialogControls m_controls;
    QTreeWidget* m_tree;
    basekit::ustring& m_name;
};
