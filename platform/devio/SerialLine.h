#pragma once

namespace devio {

// Line settings of a serial port, as its address properties give them.
struct SerialLineSettings {
    unsigned baudRate = 115200;
    unsigned byteSize = 8;      // 5..8
    char parity = 'N';          // 'N' none, 'O' odd, 'E' even, 'M' mark, 'S' space
    unsigned stopBits = 1;      // 1 or 2
    bool rtsCts = false;
};

// Applies the settings to an open terminal; any rate (153600 included) through the kernel's
// arbitrary-rate call. Returns 0 or the errno of the failure.
int ApplySerialLineSettings(int fd, const SerialLineSettings& settings);

}  // namespace devio
