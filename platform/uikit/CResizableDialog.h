#pragma once
#include <QDialog>
#include <QIcon>

#include "platform/basekit/ustring.h"
#include "platform/uikit/CModalRun.h"
#include "platform/uikit/CWindowFrame.h"

namespace uikit {

// A modal dialog whose size and place are kept under its name between runs.
//
// DoModal() runs one window life: OnInitDialog(), then (unless it ended the dialog already)
// the saved placement and the modal loop, then DestroyWindow() (OnDestroy() and the kit's
// clean-up), and returns the result given to EndDialog() (IDCANCEL when the window is closed).
class CResizableDialog : public CWindowFrame<QDialog> {
public:
    CResizableDialog(QWidget* parent, basekit::ustring windowName, const QIcon& icon = {});
    ~CResizableDialog() override;

    virtual int DoModal();
    // Ends the modal run with result; from OnInitDialog the dialog then never shows.
    void EndDialog(int result);

    const basekit::ustring& GetWindowName() const { return m_modal.WindowName(); }
    bool IsModalRunning() const { return m_modal.IsRunning(); }

    // OK ends with IDOK; Cancel, Escape and the window frame end with IDCANCEL through
    // reject(), so a dialog that must confirm closing overrides reject().
    void accept() override;
    void reject() override;
    void done(int result) override;

private:
    CModalRun m_modal;
};

}  // namespace uikit
