#pragma once
#include "fenklib/controller/CompassCalibration.h"
#include "fenklib/frame/CDialogControls.h"
#include "fenklib/frame/CFenkDialog.h"

// The guided compass calibration: the person points the controller to each heading shown and
// presses Next; after the last one the correction is shown, and Store keeps it in the compass
// and ends the dialog with 1. Every reading and the store run as jobs of the dialog. A
// controller without a compass says so and offers only Cancel.
class CCompassCalibrationDlg : public CFenkDialog {
public:
    enum : unsigned { IDC_STEP = 100, IDC_PROGRESS, IDC_NEXT, IDC_STORE };
    explicit CCompassCalibrationDlg(QWidget* parent);
    ~CCompassCalibrationDlg() override;

    const CDialogControls& Controls() const { return m_controls; }
    bool OnInitDialog() override;
    bool NeedsReceiver() const override { return false; }
    void UpdateControls() override;

private:
    void Next();
    void Store();
    void ShowStep();

    CDialogControls m_controls;
    CompassCalibration m_calibration;
    bool m_present = false;
    double m_previousCorrection = 0;
};
