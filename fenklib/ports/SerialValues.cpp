#include "fenklib/ports/SerialValues.h"

#include <cwchar>

#include "fenklib/receiver/CReceiverEnumWrapper.h"

namespace vok = devio::vok;

SERIAL_VALUES WithDefaults(SERIAL_VALUES v) {
    v.rate = v.rate.value_or(vok::BAUD_115200);
    v.rts = v.rts.value_or(vok::RTS_OFF);
    v.stops = v.stops.value_or(vok::STOPS_1);
    v.parity = v.parity.value_or(vok::PARITY_N);
    v.bits = v.bits.value_or(vok::BITS_8);
    return v;
}

devio::SerialLineSettings LineOf(const SERIAL_VALUES& values) {
    static constexpr char kParityLetters[] = {'N', 'O', 'E', 'O', 'E'};   // in EParity's order
    const SERIAL_VALUES v = WithDefaults(values);
    devio::SerialLineSettings line;
    // The rate keywords are the numbers themselves ("9600").
    line.baudRate = static_cast<unsigned>(std::wcstoul(vok::ToKeyword(*v.rate).c_str(), nullptr, 10));
    line.byteSize = 5 + static_cast<unsigned>(*v.bits - vok::BITS_5);
    line.stopBits = *v.stops == vok::STOPS_2 ? 2 : 1;
    line.parity = kParityLetters[*v.parity];
    line.rtsCts = *v.rts == vok::RTS_ON;
    return line;
}
