#pragma once
#include "fenklib/config/CExtBoardDlg.h"

// The extension board's Bluetooth module: its power, the port multiplexer, firmware version,
// device address, name and PIN, and a reset of the module asked first. On models of the
// extension family the module is told "#OFF#" before it is switched off or reset
// (docs/bluetooth-and-audio.md).
class CBluetoothDlg : public CExtBoardDlg {
public:
    enum Field { POWER, MUX, VERSION, ADDRESS, NAME, PIN };

    CBluetoothDlg(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent);

    // The reset button's work: asks, then resets the module and reads the group again; false
    // when the user said no.
    bool OnResetModule();

protected:
    void Write(devio::CVokReceiverMate& mate, const CParamFields::Values& was, const CParamFields::Values& now) const override;
    void UpdateOwnControls(bool usable) override;
};
