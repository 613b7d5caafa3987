#pragma once
#include "fenklib/frame/CDialogControls.h"
#include "fenklib/frame/CFenkPropertyPage.h"

// The file explorer's "Front Panel" page: what the receiver's button does (its dynamics, its
// action, what starts by itself) and whether it powers up with external power. Read on the
// first activation, written, all four, on Apply; both as jobs of the page.
class CExplorerFrontPanelPP : public CFenkPropertyPage {
public:
    enum : unsigned { IDC_DYNAMICS = 100, IDC_ACTION, IDC_AUTO, IDC_POWERUP };

    explicit CExplorerFrontPanelPP(basekit::CSmartPtr<devio::IReceiver> receiver);
    ~CExplorerFrontPanelPP() override;

    bool OnSetActive() override;
    bool OnApply() override;
    void UpdateControls() override;

    const CDialogControls& Controls() const { return m_controls; }

private:
    void Read();

    CDialogControls m_controls;
    bool m_read = false;
};
