#pragma once
#include "fenklib/frame/CFenkBaseWnd.h"
#include "platform/uikit/CResizablePropertySheet.h"

class CFenkPropertySheet : public CFenkBaseWnd<uikit::CResizablePropertySheet> {
public:
    CFenkPropertySheet(basekit::CSmartPtr<devio::IReceiver> receiver, const basekit::ustring& caption, QWidget* parent,
                       const basekit::ustring& name = {},
                       uikit::CResizablePropertySheet::ApplyButton apply = uikit::CResizablePropertySheet::ApplyButton::Shown)
        : CFenkBaseWnd(std::move(receiver), parent, caption, name, apply) {}
};
