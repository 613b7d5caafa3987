#pragma once
#include <QButtonGroup>

#include "fenklib/frame/CDialogControls.h"
#include "fenklib/frame/DialogTemplate.h"
#include "platform/uikit/CResizablePropertyPage.h"

// A settings page that is one group of two radio choices (ids first and first + 1). A stored
// value that matches neither choice shows none checked and is kept until the user picks one.
class CChoicePage : public uikit::CResizablePropertyPage {
public:
    CChoicePage(const DLG_TEMPLATE& layout, const DLG_TEMPLATE& wide, unsigned title, unsigned firstRadio);

    // The checked choice (0, 1 ...), or -1 while none is.
    int Choice() const;
    const CDialogControls& Controls() const { return m_controls; }

protected:
    // Checks choice; any value outside the choices checks none.
    void ShowChoice(int choice);

private:
    CDialogControls m_controls;
    unsigned m_firstRadio;
};
