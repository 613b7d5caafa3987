#pragma once
#include <cstdint>
#include <optional>

#include "fenklib/frame/CDialogControls.h"
#include "fenklib/ports/CReceiverPortBasePP.h"
#include "fenklib/ports/SerialValues.h"
#include "platform/basekit/CStdException.h"

namespace devio {
class CVokReceiverMate;
}

// A serial port's line settings, written all five in one command on every Apply. When the port
// is the controller's own and a value changed, the page raises the sheet's flag and records the
// change for the host: the receiver switched on the spot and the host must follow it.
class CReceiverPortSerialPP : public CReceiverPortBasePP {
public:
    enum : unsigned { IDC_BAUD_RATE = 3418, IDC_BYTE_SIZE = 3419, IDC_STOP_BITS = 3420, IDC_PARITY = 3421, IDC_RTS_CTS = 3422 };

    using SERIAL_VALUES = ::SERIAL_VALUES;

    CReceiverPortSerialPP(basekit::CSmartPtr<devio::IReceiver> receiver, devio::vok::EDev port, std::uint8_t* portChanged);
    ~CReceiverPortSerialPP() override;

    bool OnInitDialog() override;
    bool OnApply() override;

    const CDialogControls& Controls() const { return m_controls; }

    struct READING {
        SERIAL_VALUES values;
        basekit::CStdException::CExInfo firstError;
    };
    static READING Read(devio::CVokReceiverMate& mate, devio::vok::EDev port);
    // True when a setting that was read differs from its choice.
    static bool Changed(const SERIAL_VALUES& read, const SERIAL_VALUES& chosen);

private:
    void ShowValues();
    // What the controls hold, a choice left empty taking its default.
    SERIAL_VALUES ChosenValues() const;

    CDialogControls m_controls;
    SERIAL_VALUES m_read;
    bool m_readDone = false;
    std::uint8_t* m_portChanged;
};
