#pragma once
#include "fenklib/frame/CFenkBaseWnd.h"
#include "fenklib/resources/FenkImages.h"
#include "platform/uikit/CResizableDialog.h"

class CFenkDialog : public CFenkBaseWnd<uikit::CResizableDialog> {
public:
    // name: the dialog's class name, under which its placement is kept; iconGroup: 0 for none.
    CFenkDialog(basekit::CSmartPtr<devio::IReceiver> receiver, unsigned templateId, QWidget* parent,
                const basekit::ustring& name, unsigned iconGroup = 0)
        : CFenkBaseWnd(std::move(receiver), parent, name, iconGroup ? FenkIcon(iconGroup) : QIcon()),
          m_templateId(templateId) {}
    unsigned GetTemplateId() const { return m_templateId; }

private:
    unsigned m_templateId;
};
