#pragma once
#include <optional>

#include "fenklib/frame/CDialogControls.h"
#include "fenklib/frame/CFenkDialog.h"

// The raw-data interval, the static carrier-phase clock option and the code and carrier
// multipath corrections: read when the dialog opens, the changed ones written on OK.
class CRawMeasurementDlg : public CFenkDialog {
public:
    struct RAW_SETTINGS {
        int intervalMs = 0;
        bool clpStatic = false;
        bool codeMultipath = false;
        bool carrierMultipath = false;
    };

    CRawMeasurementDlg(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent);
    ~CRawMeasurementDlg() override;

    bool OnInitDialog() override;
    void UpdateControls() override;
    void accept() override;

    // What the controls say now; nothing while the reading has not ended well.
    std::optional<RAW_SETTINGS> Shown() const;
    void Show(const RAW_SETTINGS& settings);
    bool IsOkEnabled() const;

private:
    CDialogControls m_controls;
    std::optional<RAW_SETTINGS> m_read;   // as the receiver had them when the dialog opened
};
