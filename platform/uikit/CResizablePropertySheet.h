#pragma once
#include <QDialog>
#include <QIcon>
#include <optional>
#include <vector>

#include "platform/basekit/ustring.h"
#include "platform/uikit/CModalRun.h"
#include "platform/uikit/CWindowFrame.h"

class QDialogButtonBox;
class QPushButton;
class QTabWidget;

namespace uikit {

class CResizablePropertyPage;

// A modal dialog with one tab per page and OK / Cancel / Apply, kept in place by its name.
//
// The page protocol: switching tabs asks the old page OnKillActive() (false keeps it) and
// activates the new one (OnInitDialog() the first time, then OnSetActive()). OK asks the
// current page OnKillActive(), then OnApply() of every initialised page in order (the first
// false stops and shows that page), then OnOK() of each, and ends with IDOK. Apply does the
// same without OnOK() and without closing; it is enabled while a page is marked modified.
// A page whose write runs in the background (ApplyLater) holds the sequence until its write
// has ended; meanwhile OK and Apply are disabled and Cancel still closes the sheet.
// Cancel (also Escape and the window frame) calls OnCancel() of each initialised page and
// ends with IDCANCEL; a sheet that must confirm closing overrides reject().
//
// Pages belong to the caller (usually members of the derived sheet); the sheet never deletes
// one, and a page destroyed first leaves the sheet by itself.
class CResizablePropertySheet : public CWindowFrame<QDialog> {
public:
    enum class ApplyButton { Shown, Hidden };
    static constexpr int ID_APPLY_NOW = 0x3021;

    CResizablePropertySheet(QWidget* parent, const basekit::ustring& caption,
                            basekit::ustring windowName = {},
                            ApplyButton applyButton = ApplyButton::Shown, const QIcon& icon = {});
    ~CResizablePropertySheet() override;

    void AddPage(CResizablePropertyPage* page);
    int GetPageCount() const { return static_cast<int>(m_pages.size()); }
    CResizablePropertyPage* GetPage(int index) const;
    int GetPageIndex(const CResizablePropertyPage* page) const;
    CResizablePropertyPage* GetActivePage() const { return m_activePage; }
    // While the sheet runs, switches with the page protocol and returns whether the page is now
    // active; before the run, chooses the page shown first.
    bool SetActivePage(int index);

    void SetCaption(const basekit::ustring& caption);
    const basekit::ustring& GetWindowName() const { return m_modal.WindowName(); }
    // IDOK, IDCANCEL or ID_APPLY_NOW; nullptr for a button the sheet does not have.
    QPushButton* GetButton(int id) const;
    QTabWidget* GetTabControl() const { return m_tabs; }

    // Activates the first page; a derived sheet calls it first from its own.
    bool OnInitDialog() override;
    virtual int DoModal();
    // Ends the modal run with result; during initialisation the sheet then never shows.
    void EndDialog(int result);
    bool IsModalRunning() const { return m_modal.IsRunning(); }
    // The Apply button's work; false when a page refused at once. A page writing in the
    // background leaves the outcome to IsApplying() and LastApplySucceeded().
    bool ApplyNow();
    // A page's background write holds OK or Apply.
    bool IsApplying() const { return m_waitingFor != nullptr; }
    // How the last OK or Apply that has come to an end ended.
    bool LastApplySucceeded() const { return m_lastApplyOk; }

    void accept() override;
    void reject() override;
    void done(int result) override;
    // Wide enough for every tab title: a new sheet opens with no tab scrolled out of sight (the
    // screen fit still narrows it on a small screen).
    QSize sizeHint() const override;

protected:
    // The pages' windows end after the sheet's own OnDestroy().
    void OnFrameDestroyed() override;

private:
    friend class CResizablePropertyPage;
    void ForgetPage(CResizablePropertyPage* page);
    void UpdateApplyButton();
    void PageApplyEnded(CResizablePropertyPage* page, bool applied);

    void OnTabChanged(int index);
    bool SwitchTo(CResizablePropertyPage* next);
    void ShowTabOf(CResizablePropertyPage* page);
    void ActivateStartPage();
    enum class ApplyStep { Applied, Refused, Waiting };
    ApplyStep StartApply(bool thenClose);
    ApplyStep ApplyFrom(size_t first);
    void ShowRefusingPage(CResizablePropertyPage* page);
    void FinishApply(bool applied);
    void SetApplying(CResizablePropertyPage* page);
    template <typename F>
    void ForEachInitialisedPage(F&& f);

    CModalRun m_modal;
    QTabWidget* m_tabs;
    QDialogButtonBox* m_buttons;
    std::vector<CResizablePropertyPage*> m_pages;
    CResizablePropertyPage* m_activePage = nullptr;
    int m_startPage = 0;
    bool m_switching = false;
    CResizablePropertyPage* m_waitingFor = nullptr;   // the page whose background write runs
    size_t m_resumeAt = 0;                             // the page after it
    bool m_closeAfterApply = false;                    // OK, not Apply, started the sequence
    bool m_lastApplyOk = false;
};

}  // namespace uikit
