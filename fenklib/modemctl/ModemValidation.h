#pragma once
// Checks of what a user typed for a modem, before anything is sent: a value that passes comes
// back as the library keeps it ("438.12500"), one that does not comes back with the reason.
#include <optional>

#include "fenklib/modemctl/ModemFamilies.h"

namespace devio {

struct MODEM_CHECK {
    bool ok = false;
    ustring value;        // ok: the value as written to the modem (C locale)
    unsigned reasonId = 0;
    ustring reason;       // not ok: why, from the string table
};

// The radio's band, as it reports it ("SL!D?", "SL!U?").
struct RADIO_BAND {
    double lowMHz = 0;
    double highMHz = 0;
    bool Known() const { return highMHz > lowMHz; }
};

// A value for a row: a number in range (the band for a frequency), with a decimal point; one of
// a choice row's values (a power the radio has); a hexadecimal address; an APN.
MODEM_CHECK CheckSettingValue(const MODEM_SETTING_ROW& row, const ustring& text, const RADIO_BAND& band = {});
MODEM_CHECK CheckFrequency(const ustring& text, const RADIO_BAND& band, unsigned labelId);
MODEM_CHECK CheckPin(const ustring& pin);
MODEM_CHECK CheckApn(const ustring& apn);
// One channel list entry and the list's size.
MODEM_CHECK CheckChannel(const RADIO_CHANNEL& channel, const RADIO_BAND& band);
MODEM_CHECK CheckChannelCount(std::size_t count);

}  // namespace devio
