#include "platform/devio/DevioStrings.h"

namespace devio {

namespace {

constexpr basekit::StringEntry kTexts[] = {
    {kStrLinkUnknownKind, L"\"%s\" is not a link this program knows. Write sim:, serial:/dev/ttyUSB0?baud=115200 "
                          L"or tcp://192.168.0.10:4001."},
    {kStrLinkUnknownOption, L"The link \"%s\" has an unknown option \"%s\". Known options: baud, bits, parity, stops, "
                            L"rtscts, timeout, log."},
    {kStrLinkNoSerialPath, L"The link \"%s\" names no serial port. Write serial:/dev/ttyUSB0?baud=115200."},
    {kStrLinkBadNumber, L"In the link \"%s\", %s=\"%s\" is not a number."},
    {kStrLinkNoHostOrPort, L"The link \"%s\" needs a host and a port number. Write tcp://192.168.0.10:4001."},
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
