#pragma once
#include "fenklib/frame/CFenkBaseWnd.h"
#include "platform/uikit/CResizablePropertyPage.h"

class CFenkPropertyPage : public CFenkBaseWnd<uikit::CResizablePropertyPage> {
public:
    CFenkPropertyPage(basekit::CSmartPtr<devio::IReceiver> receiver, unsigned templateId, const basekit::ustring& title)
        : CFenkBaseWnd(std::move(receiver), templateId, title) {}
};
