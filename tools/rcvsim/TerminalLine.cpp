// Kept apart: <asm/termbits.h> (the exact rate of a line) cannot share a unit with <termios.h>.
#include "tools/rcvsim/TerminalLine.h"

#include <asm/termbits.h>
#include <sys/ioctl.h>

namespace rcvsim {

std::optional<LineSettings> ReadTerminalLine(int fd) {
    struct termios2 t {};
    if (::ioctl(fd, TCGETS2, &t) < 0) return std::nullopt;
    LineSettings line;
    line.rate = static_cast<int>(t.c_ospeed);
    switch (t.c_cflag & CSIZE) {
        case CS5: line.bits = 5; break;
        case CS6: line.bits = 6; break;
        case CS7: line.bits = 7; break;
        default: line.bits = 8; break;
    }
    line.parity = (t.c_cflag & PARENB) == 0 ? 'N' : (t.c_cflag & PARODD) != 0 ? 'O' : 'E';
    line.stops = (t.c_cflag & CSTOPB) != 0 ? 2 : 1;
    return line;
}

}  // namespace rcvsim
