#pragma once
#include "fenklib/frame/CDialogControls.h"
#include "fenklib/frame/CFenkDialog.h"
#include "fenklib/msglist/CMessageListEditor.h"

// The messages recorded into the two current log files ("cur/file/a", "cur/file/b"): read
// when it opens, written back with "dm" and "em" on OK.
class CLoggingMessagesDlg : public CFenkDialog {
public:
    CLoggingMessagesDlg(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent);
    ~CLoggingMessagesDlg() override;

    bool OnInitDialog() override;
    void UpdateControls() override;
    void accept() override;

    CMessageListEditor& EditorA() { return *m_fileA; }
    CMessageListEditor& EditorB() { return *m_fileB; }

private:
    CDialogControls m_controls;
    CMessageListEditor* m_fileA;
    CMessageListEditor* m_fileB;
    bool m_read = false;
};
