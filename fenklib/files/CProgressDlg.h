#pragma once
#include "fenklib/files/ProgressInfo.h"
#include "fenklib/frame/CDialogControls.h"
#include "fenklib/frame/CFenkDialog.h"

// Runs a PROGRESS_INFO's work on the worker with a caption, a text, a bar over the run's range
// and, when the run allows it, Cancel. Ends with 1 when the work ran to its end, 2 when it was
// cancelled or failed (after the error box).
class CProgressDlg : public CFenkDialog {
public:
    CProgressDlg(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent, PROGRESS_INFO info);
    ~CProgressDlg() override;

    bool OnInitDialog() override;
    void UpdateControls() override;
    void reject() override;

    int BarValue() const;
    basekit::ustring Text() const;

private:
    void ShowProgress(const JOB_PROGRESS& p);

    CDialogControls m_controls;
    PROGRESS_INFO m_info;
};
