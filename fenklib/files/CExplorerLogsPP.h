#pragma once
#include "fenklib/frame/CDialogControls.h"
#include "fenklib/frame/CFenkPropertyPage.h"

// The file explorer's "Logs" page: which files the receiver logs into on channels A and B and
// how large they are, how often it logs and its two logging flags; starts and stops logging.
// The files are read again on every activation (they grow while it logs); the period and the
// flags are written on Apply; "Write Site Events" puts the stored site into the log.
class CExplorerLogsPP : public CFenkPropertyPage {
public:
    enum : unsigned { IDC_FILE_A = 100, IDC_FILE_B, IDC_PERIOD, IDC_IMP_FIRST, IDC_IMP_SECOND, IDC_START, IDC_STOP, IDC_SITE_EVENTS };

    explicit CExplorerLogsPP(basekit::CSmartPtr<devio::IReceiver> receiver);
    ~CExplorerLogsPP() override;

    bool OnSetActive() override;
    bool OnApply() override;
    void UpdateControls() override;

    void OnStartLogging();
    void OnStopLogging();
    // Writes the stored site description into the receiver's log; false after the error box.
    bool OnWriteSiteEvents();

    const CDialogControls& Controls() const { return m_controls; }

private:
    void ReadReceiver();

    CDialogControls m_controls;
    bool m_logging = false;
    bool m_settingsRead = false;
};
