#pragma once
#include "fenklib/controller/CompassCalibration.h"
#include "fenklib/frame/CDialogControls.h"
#include "platform/uikit/CResizableDialog.h"

// The guided compass calibration: the person points the controller to each heading shown and
// presses Next; after the last one the correction is shown, and Store keeps it in the compass
// and ends the dialog with 1. A controller without a compass says so and offers only Cancel.
class CCompassCalibrationDlg : public uikit::CResizableDialog {
public:
    enum : unsigned { IDC_STEP = 100, IDC_PROGRESS, IDC_NEXT, IDC_STORE };
    explicit CCompassCalibrationDlg(QWidget* parent);

    const CDialogControls& Controls() const { return m_controls; }
    bool OnInitDialog() override;

private:
    void Next();
    void Store();
    void ShowStep();
    void UpdateControls();

    CDialogControls m_controls;
    CompassCalibration m_calibration;
    bool m_present = false;
    double m_previousCorrection = 0;
};
