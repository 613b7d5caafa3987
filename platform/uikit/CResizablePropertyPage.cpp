#include "platform/uikit/CResizablePropertyPage.h"

#include "platform/uikit/CResizablePropertySheet.h"
#include "platform/uikit/WideScreen.h"

namespace uikit {

CResizablePropertyPage::CResizablePropertyPage(unsigned templateId, basekit::ustring title)
    : CWindowFrame<QWidget>(nullptr), m_templateId(templateId), m_title(std::move(title)) {}

CResizablePropertyPage::~CResizablePropertyPage() {
    DestroyWindow();
    if (m_sheet) m_sheet->ForgetPage(this);
}

unsigned CResizablePropertyPage::ChooseTemplate(unsigned normalTemplateId) {
    return IsWideScreen() ? normalTemplateId + 1 : normalTemplateId;
}

void CResizablePropertyPage::EndDialog(int result) {
    if (m_sheet) m_sheet->EndDialog(result);
}

void CResizablePropertyPage::SetModified(bool modified) {
    m_modified = modified;
    if (m_sheet) m_sheet->UpdateApplyButton();
}

void CResizablePropertyPage::ApplyEnded(bool applied) {
    if (m_sheet) m_sheet->PageApplyEnded(this, applied);
}

void CResizablePropertyPage::EnsureInitialised() {
    if (IsWindowCreated()) return;
    CreateWindowLife();
    m_modified = false;
    OnInitDialog();
}

}  // namespace uikit
