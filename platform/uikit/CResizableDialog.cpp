#include "platform/uikit/CResizableDialog.h"

#include "platform/uikit/MessageBoxTypes.h"

namespace uikit {

CResizableDialog::CResizableDialog(QWidget* parent, basekit::ustring windowName, const QIcon& icon)
    : CWindowFrame<QDialog>(parent), m_modal(std::move(windowName)) {
    setSizeGripEnabled(true);
    if (!icon.isNull()) setWindowIcon(icon);
}

CResizableDialog::~CResizableDialog() { DestroyWindow(); }

int CResizableDialog::DoModal() {
    CreateWindowLife();
    setResult(IDCANCEL);
    const int result = m_modal.Run(*this, [this] { OnInitDialog(); });
    DestroyWindow();
    return result;
}

void CResizableDialog::EndDialog(int result) { m_modal.End(*this, result); }

void CResizableDialog::accept() { done(IDOK); }

void CResizableDialog::reject() { done(IDCANCEL); }

void CResizableDialog::done(int result) {
    m_modal.KeepPlacement(*this);
    QDialog::done(result);
}

}  // namespace uikit
