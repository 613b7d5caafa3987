#pragma once
#include "fenklib/frame/CDialogControls.h"
#include "fenklib/frame/CFenkDialog.h"

// Receiver maintenance: initialise the parameters, initialise the NVRAM, reset the receiver.
// Each is confirmed first and runs on the worker; the receiver restarts after each, so the
// dialog then ends with 4 and the host opens its connection again.
class CToolsDlg : public CFenkDialog {
public:
    enum class Operation { InitParameters, InitNvram, ResetReceiver };
    static constexpr int kReconnect = 4;

    CToolsDlg(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent);
    ~CToolsDlg() override;

    bool OnInitDialog() override;
    void UpdateControls() override;

    // A button's work: asks, then runs the operation; false when the user said no.
    bool Run(Operation operation);
    bool IsOperationEnabled(Operation operation) const;

private:
    CDialogControls m_controls;
};
