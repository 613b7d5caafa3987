#pragma once
#include <QWidget>

#include "platform/basekit/ustring.h"
#include "platform/uikit/CWindowFrame.h"

namespace uikit {

class CResizablePropertySheet;

// One page of a CResizablePropertySheet. The page is built from its layout number (the derived
// class lays out its controls for that number) and shows title on its tab. The sheet drives
// the page: OnInitDialog() on the first activation of each sheet run, OnSetActive() on every
// activation, OnKillActive() before another page takes over or before OK/Apply (false keeps
// this page), OnApply() on OK and Apply, OnOK() when the sheet closes with OK, OnCancel() when
// it is cancelled, OnDestroy() when the sheet's window ends (initialised pages only).
class CResizablePropertyPage : public CWindowFrame<QWidget> {
public:
    CResizablePropertyPage(unsigned templateId, basekit::ustring title);
    ~CResizablePropertyPage() override;

    // The wide-screen layout of a page is numbered one above its normal one.
    static unsigned ChooseTemplate(unsigned normalTemplateId);

    unsigned GetTemplateId() const { return m_templateId; }
    const basekit::ustring& GetTitle() const { return m_title; }
    CResizablePropertySheet* GetSheet() const { return m_sheet; }
    // Ends the sheet's modal run, so code shared by dialogs, sheets and pages can end "its"
    // window alike. Without a sheet it does nothing.
    void EndDialog(int result);

    // Marks the page as holding unapplied changes; the sheet's Apply button follows.
    void SetModified(bool modified = true);
    bool IsModified() const { return m_modified; }

    // A page whose write runs in the background calls ApplyLater() inside OnApply() and returns
    // true: the sheet waits, with OK and Apply disabled, until the page reports the write's end
    // with ApplyEnded(). Applied, the sheet goes on with the next page and closes (OK) or
    // finishes Apply; not applied, it stays open on this page with what the user entered.
    void ApplyLater() { m_applyLater = true; }
    void ApplyEnded(bool applied);

    virtual bool OnSetActive() { return true; }
    virtual bool OnKillActive() { return true; }
    virtual bool OnApply() { return true; }
    virtual void OnOK() {}
    virtual void OnCancel() {}

private:
    friend class CResizablePropertySheet;
    // Called by the sheet: the first activation in a sheet run creates the page's window.
    void EnsureInitialised();

    unsigned m_templateId;
    basekit::ustring m_title;
    CResizablePropertySheet* m_sheet = nullptr;
    bool m_modified = false;
    bool m_applyLater = false;
};

}  // namespace uikit
