// Serial line settings reach the terminal: every rate of the receiver's table and every framing,
// read back from a pseudo-terminal.
#include <asm/termbits.h>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <stdlib.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <string>

#include "platform/basekit/CWinException.h"
#include "platform/devio/CLinkFactory.h"
#include "platform/devio/SerialLineTermios.h"

namespace {

struct Pty {
    int master = ::posix_openpt(O_RDWR | O_NOCTTY);
    std::string slave;
    Pty() {
        ::grantpt(master);
        ::unlockpt(master);
        slave = ::ptsname(master);
    }
    ~Pty() { ::close(master); }
};

struct termios2 Read(int fd) {
    struct termios2 t {};
    ::ioctl(fd, TCGETS2, &t);
    return t;
}

TEST(SerialSettings, EveryRateOfTheTable) {
    const Pty pty;
    for (const unsigned rate : {300u, 600u, 1200u, 2400u, 4800u, 9600u, 19200u, 38400u, 57600u, 115200u, 153600u,
                                230400u, 460800u, 921600u}) {
        const auto link = devio::CLinkFactory::Open(devio::IPortAddr::Parse(
            basekit::ustring::FromUtf8("serial:" + pty.slave + "?baud=" + std::to_string(rate))));
        EXPECT_EQ(Read(link->Fd()).c_ospeed, rate) << rate;
    }
}

TEST(SerialSettings, Framing) {
    struct Case { const char* legend; devio::SerialLineSettings line; tcflag_t size; tcflag_t parity; bool twoStops; bool rtsCts; };
    const Case cases[] = {
        {"8N1", {115200, 8, 'N', 1, false}, CS8, 0, false, false},
        {"7 bits, even parity, 2 stops", {9600, 7, 'E', 2, false}, CS7, PARENB, true, false},
        {"odd parity with RTS/CTS", {9600, 8, 'O', 1, true}, CS8, PARENB | PARODD, false, true},
        {"5 bits, mark parity", {9600, 5, 'M', 1, false}, CS5, PARENB | PARODD | CMSPAR, false, false},
        {"6 bits, space parity", {9600, 6, 'S', 1, false}, CS6, PARENB | CMSPAR, false, false},
    };
    for (const auto& c : cases) {
        struct termios2 t {};
        t.c_cflag = CSTOPB | CRTSCTS | PARENB | CS5;   // leftovers of a previous owner of the port
        t.c_lflag = ICANON | ECHO;
        devio::ComposeSerialLine(t, c.line);
        EXPECT_EQ(t.c_cflag & CSIZE, c.size) << c.legend;
        EXPECT_EQ(t.c_cflag & (PARENB | PARODD | CMSPAR), c.parity) << c.legend;
        EXPECT_EQ((t.c_cflag & CSTOPB) != 0, c.twoStops) << c.legend;
        EXPECT_EQ((t.c_cflag & CRTSCTS) != 0, c.rtsCts) << c.legend;
        EXPECT_EQ(t.c_ospeed, c.line.baudRate) << c.legend;
        EXPECT_EQ(t.c_lflag & (ICANON | ECHO), 0u) << c.legend << ": raw";
        EXPECT_EQ(t.c_cc[VMIN], 1) << c.legend << ": an idle line reads EAGAIN, not end of stream";
    }
}

TEST(SerialSettings, FramingReachesTheTerminal) {
    // A pseudo-terminal keeps stop bits and flow control (it forces 8 bits, no parity).
    const Pty pty;
    const auto link = devio::CLinkFactory::Open(devio::IPortAddr::Parse(
        basekit::ustring::FromUtf8("serial:" + pty.slave + "?baud=9600&stops=2&rtscts=on")));
    const struct termios2 t = Read(link->Fd());
    EXPECT_TRUE(t.c_cflag & CSTOPB);
    EXPECT_TRUE(t.c_cflag & CRTSCTS);
}

TEST(SerialSettings, ImpossibleSettingsAreRefusedBeforeOpening) {
    const Pty pty;
    for (const char* options : {"&bits=9", "&stops=3", "&parity=X", "&baud=10"}) {
        EXPECT_THROW(devio::CLinkFactory::Open(devio::IPortAddr::Parse(
                         basekit::ustring::FromUtf8("serial:" + pty.slave + "?baud=9600" + options))),
                     basekit::CWinException)
            << options;
    }
}

}  // namespace
