#pragma once
#include <cstdint>
#include <functional>

#include "fenklib/frame/CDialogControls.h"
#include "fenklib/frame/CFenkPropertyPage.h"

// The file explorer's "Logs" page: which files the receiver logs into on channels A and B and
// how large they are, how often it logs and its two logging flags; starts and stops logging.
// The files are read again on every activation (they grow while it logs); the period and the
// flags are written on Apply; "Write Site Events" puts the stored site into the log. Every
// exchange runs as a job of the page.
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
    // Writes the stored site description into the receiver's log, as a job of the page.
    void OnWriteSiteEvents();

    const CDialogControls& Controls() const { return m_controls; }

private:
    void ReadReceiver();
    void ShowFiles(const basekit::ustring& a, std::uint64_t sizeA, const basekit::ustring& b, std::uint64_t sizeB);
    void ChangeThenRead(std::function<void(CJobContext&)> change);

    CDialogControls m_controls;
    bool m_logging = false;
    bool m_settingsRead = false;
};
