#pragma once
#include "fenklib/config/CExtBoardDlg.h"

// The overall volume of the extension board's audio on one slider (it sets every channel),
// and a test sound. A receiver without audio says so instead of failing.
class CTivar_MasterVolumeDlg : public CExtBoardDlg {
public:
    CTivar_MasterVolumeDlg(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent);

protected:
    void UpdateOwnControls(bool usable) override;
};
