// Kept apart: <asm/termbits.h> (for arbitrary rates) cannot share a unit with <termios.h>.
#include <sys/ioctl.h>

#include "platform/devio/SerialLineTermios.h"

#include <cerrno>

namespace devio {

void ComposeSerialLine(struct termios2& t, const SerialLineSettings& s) {
    // Raw mode: no echo, no line editing, no translation of CR/LF, no signals.
    t.c_iflag &= ~(IGNBRK | BRKINT | PARMRK | ISTRIP | INLCR | IGNCR | ICRNL | IXON | IXOFF | IXANY | INPCK);
    t.c_oflag &= ~OPOST;
    t.c_lflag &= ~(ECHO | ECHONL | ICANON | ISIG | IEXTEN);
    t.c_cflag &= ~(CSIZE | PARENB | PARODD | CMSPAR | CSTOPB | CRTSCTS | CBAUD | (CBAUD << IBSHIFT));
    t.c_cflag |= CLOCAL | CREAD | BOTHER | (BOTHER << IBSHIFT);
    switch (s.byteSize) {
        case 5: t.c_cflag |= CS5; break;
        case 6: t.c_cflag |= CS6; break;
        case 7: t.c_cflag |= CS7; break;
        default: t.c_cflag |= CS8; break;
    }
    switch (s.parity) {
        case 'O': t.c_cflag |= PARENB | PARODD; break;
        case 'E': t.c_cflag |= PARENB; break;
        case 'M': t.c_cflag |= PARENB | PARODD | CMSPAR; break;
        case 'S': t.c_cflag |= PARENB | CMSPAR; break;
        default: break;
    }
    if (s.parity != 'N') t.c_iflag |= INPCK;
    if (s.stopBits == 2) t.c_cflag |= CSTOPB;
    if (s.rtsCts) t.c_cflag |= CRTSCTS;
    t.c_ispeed = t.c_ospeed = s.baudRate;
    // With VMIN 0 a non-blocking read of an idle line returns 0, which reads as end of stream;
    // with VMIN 1 it returns EAGAIN, and a hang-up shows as EIO.
    t.c_cc[VMIN] = 1;
    t.c_cc[VTIME] = 0;
}

int ApplySerialLineSettings(int fd, const SerialLineSettings& settings) {
    struct termios2 t {};
    if (::ioctl(fd, TCGETS2, &t) < 0) return errno;
    ComposeSerialLine(t, settings);
    if (::ioctl(fd, TCSETS2, &t) < 0) return errno;
    return 0;
}

}  // namespace devio
