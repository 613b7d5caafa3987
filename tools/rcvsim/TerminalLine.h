#pragma once
#include <optional>

namespace rcvsim {

// The framing of a serial line: what both ends must agree on for bytes to get across.
struct LineSettings {
    int rate = 0;        // bit/s
    int bits = 8;        // 5..8
    char parity = 'N';   // 'N', 'O', 'E'
    int stops = 1;       // 1 or 2
    bool operator==(const LineSettings&) const = default;
};

// The settings the host put on the far side of a pseudo-terminal (read through either side);
// nothing when the descriptor is not a terminal.
std::optional<LineSettings> ReadTerminalLine(int fd);

}  // namespace rcvsim
