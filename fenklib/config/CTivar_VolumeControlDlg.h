#pragma once
#include "fenklib/config/CExtBoardDlg.h"

// The volume of each audio channel of the extension board, on sliders, and a test sound.
// A receiver without audio says so instead of failing.
class CTivar_VolumeControlDlg : public CExtBoardDlg {
public:
    static constexpr int kChannels = 3;   // channels 1..3

    CTivar_VolumeControlDlg(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent);

protected:
    void UpdateOwnControls(bool usable) override;
};
