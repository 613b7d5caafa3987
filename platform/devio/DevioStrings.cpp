#include "platform/devio/DevioStrings.h"

namespace devio {

namespace {

constexpr basekit::StringEntry kTexts[] = {
    {kStrLinkUnknownKind, L"\"%s\" is not a link this program knows. Write sim:, serial:/dev/ttyUSB0?baud=115200, "
                          L"tcp://192.168.0.10:4001, file:/path/capture.log?rate=115200&loop=1 or gpsd://localhost:2947."},
    {kStrLinkUnknownOption, L"The link \"%s\" has an unknown option \"%s\". Known options: baud, bits, parity, stops, "
                            L"rtscts, timeout, log, rate, loop."},
    {kStrLinkNoSerialPath, L"The link \"%s\" names no serial port. Write serial:/dev/ttyUSB0?baud=115200."},
    {kStrLinkBadNumber, L"In the link \"%s\", %s=\"%s\" is not a number."},
    {kStrLinkNoHostOrPort, L"The link \"%s\" needs a host and a port number. Write tcp://192.168.0.10:4001."},
    {kStrLinkNoCapturePath, L"The link \"%s\" names no capture file. Write file:/path/capture.log?rate=115200."},
    {kStrLinkNoGpsdHost, L"The link \"%s\" needs a host. Write gpsd://localhost:2947."},
    {kStrLinkNmeaOnly, L"The link \"%s\" carries only NMEA sentences and takes no receiver commands, so \"%s\" "
                       L"cannot be sent. Connect to the receiver itself to read or change its settings."},
};

}  // namespace

const basekit::CResourceInstance& DevioStrings() {
    static const basekit::CResourceInstance instance("devio", kTexts);
    return instance;
}

basekit::ustring DevioText(unsigned id) {
    basekit::ustring s;
    s.load(DevioStrings(), id);
    return s;
}

}  // namespace devio
