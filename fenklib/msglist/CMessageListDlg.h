#pragma once
#include <memory>

#include "fenklib/frame/CDialogControls.h"
#include "fenklib/frame/CFenkDialog.h"
#include "fenklib/msglist/CMessageListEditor.h"

// Edits a list of scheduled messages; the caller's list is replaced only on OK. The load the
// list puts on its port is shown, and a list above the line rate is kept only when confirmed.
class CMessageListDlg : public CFenkDialog {
public:
    CMessageListDlg(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent, fenkmsg::MessageList& list);
    ~CMessageListDlg() override;

    // The line rate (bit/s) of the port the list is for, for the load figure. Without it the
    // figure is in bytes per second: the rate of the host's own link says nothing of another port.
    void SetLineRate(int bitsPerSecond) { m_lineRate = bitsPerSecond; }

    bool OnInitDialog() override;
    void accept() override;

    CMessageListEditor& Editor() { return *m_editor; }

private:
    CDialogControls m_controls;
    fenkmsg::MessageList& m_result;
    CMessageListEditor* m_editor;
    int m_lineRate = 0;
};
