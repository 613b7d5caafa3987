#include "platform/uikit/CResizableDialog.h"

#include "platform/uikit/CWindowPlacement.h"
#include "platform/uikit/MessageBoxTypes.h"

namespace uikit {

CResizableDialog::CResizableDialog(QWidget* parent, basekit::ustring windowName, const QIcon& icon)
    : CWindowFrame<QDialog>(parent), m_windowName(std::move(windowName)) {
    setSizeGripEnabled(true);
    if (!icon.isNull()) setWindowIcon(icon);
}

CResizableDialog::~CResizableDialog() { DestroyWindow(); }

int CResizableDialog::DoModal() {
    CreateWindowLife();
    m_earlyResult.reset();
    setResult(IDCANCEL);
    OnInitDialog();
    int result = 0;
    if (m_earlyResult) {
        result = *m_earlyResult;
    } else {
        CWindowPlacement::Restore(*this, m_windowName);
        m_running = true;
        result = exec();
        m_running = false;
    }
    DestroyWindow();
    return result;
}

void CResizableDialog::EndDialog(int result) {
    if (m_running) {
        done(result);
        return;
    }
    m_earlyResult = result;
}

void CResizableDialog::accept() { done(IDOK); }

void CResizableDialog::reject() { done(IDCANCEL); }

void CResizableDialog::done(int result) {
    // Kept while the window still has its final geometry, before it is hidden.
    if (isVisible()) CWindowPlacement::Save(*this, m_windowName);
    QDialog::done(result);
}

}  // namespace uikit
