#include "tools/rcvsim/Keywords.h"

#include <algorithm>
#include <array>

namespace rcvsim {
namespace {
using namespace std::string_view_literals;
constexpr std::array kBaud{"300"sv, "600"sv, "1200"sv, "2400"sv, "4800"sv, "9600"sv, "19200"sv,
                           "38400"sv, "57600"sv, "115200"sv, "153600"sv, "230400"sv, "460800"sv,
                           "921600"sv};
constexpr std::array kBits{"5"sv, "6"sv, "7"sv, "8"sv};
constexpr std::array kParity{"N"sv, "odd"sv, "even"sv, "fodd"sv, "feven"sv};
constexpr std::array kStops{"1"sv, "2"sv};
constexpr std::array kOnOff{"on"sv, "off"sv};
constexpr std::array kIMode{"none"sv, "cmd"sv, "echo"sv, "rtcm"sv, "rtcm3"sv, "cmr"sv, "qls"sv,
                            "omni"sv, "dtp"sv, "term"sv};
constexpr std::array kPorts{"dev/null"sv, "cur/term"sv, "dev/ser/a"sv, "dev/ser/b"sv,
                            "dev/ser/c"sv, "dev/ser/d"sv, "dev/usb/a"sv, "dev/tcp/a"sv,
                            "dev/tcp/b"sv, "dev/tcp/c"sv, "dev/tcp/d"sv, "dev/tcp/e"sv,
                            "dev/mvp/a"sv, "dev/mvp/b"sv, "dev/mvp/c"sv, "dev/mvp/d"sv,
                            "cur/file/a"sv, "cur/file/b"sv};
constexpr std::array kDevicePorts{"dev/ser/a"sv, "dev/ser/b"sv, "dev/ser/c"sv, "dev/ser/d"sv,
                                  "dev/usb/a"sv, "dev/tcp/a"sv, "dev/tcp/b"sv, "dev/tcp/c"sv,
                                  "dev/tcp/d"sv, "dev/tcp/e"sv, "dev/mvp/a"sv};
constexpr std::array kPosModes{"sp"sv, "cd"sv, "pf"sv, "pd"sv};
constexpr std::array kDion{"off"sv, "local"sv, "smooth"sv};
constexpr std::array kRtkDyn{"static"sv, "kinematic"sv, "stopandgo"sv};
constexpr std::array kAfLevel{"low"sv, "medium"sv, "high"sv};
constexpr std::array kOutMode{"extrap"sv, "delay"sv};
constexpr std::array kAjm{"gps"sv, "glo"sv, "l1"sv, "l2"sv, "auto"sv, "off"sv, "manual"sv};
constexpr std::array kAnt{"int"sv, "ext"sv, "auto"sv};
constexpr std::array kBtnDyn{"static"sv, "dynamic"sv};
constexpr std::array kBtnAction{"none"sv, "log"sv, "event"sv, "reset"sv};
constexpr std::array kBtnAuto{"off"sv, "log"sv, "static"sv};
constexpr std::array kPwrSwitch{"on"sv, "off"sv, "auto"sv};
constexpr std::array kIono{"0"sv, "1"sv, "2"sv};
constexpr std::array kStartup{"off"sv, "on"sv, "always"sv};
constexpr std::array kYesNo{"y"sv, "n"sv};
}  // namespace

std::span<const std::string_view> Keywords::BaudRates() { return kBaud; }
std::span<const std::string_view> Keywords::ByteSizes() { return kBits; }
std::span<const std::string_view> Keywords::Parities() { return kParity; }
std::span<const std::string_view> Keywords::StopBits() { return kStops; }
std::span<const std::string_view> Keywords::OnOff() { return kOnOff; }
std::span<const std::string_view> Keywords::InputModes() { return kIMode; }
std::span<const std::string_view> Keywords::Ports() { return kPorts; }
std::span<const std::string_view> Keywords::DevicePorts() { return kDevicePorts; }
std::span<const std::string_view> Keywords::PosModes() { return kPosModes; }
std::span<const std::string_view> Keywords::DionModes() { return kDion; }
std::span<const std::string_view> Keywords::RtkDynamics() { return kRtkDyn; }
std::span<const std::string_view> Keywords::FixingLevels() { return kAfLevel; }
std::span<const std::string_view> Keywords::OutputModes() { return kOutMode; }
std::span<const std::string_view> Keywords::AntiJamming() { return kAjm; }
std::span<const std::string_view> Keywords::Antennas() { return kAnt; }
std::span<const std::string_view> Keywords::ButtonDynamics() { return kBtnDyn; }
std::span<const std::string_view> Keywords::ButtonActions() { return kBtnAction; }
std::span<const std::string_view> Keywords::ButtonAuto() { return kBtnAuto; }
std::span<const std::string_view> Keywords::PowerSwitch() { return kPwrSwitch; }
std::span<const std::string_view> Keywords::IonoCorrections() { return kIono; }
std::span<const std::string_view> Keywords::Startup() { return kStartup; }
std::span<const std::string_view> Keywords::YesNo() { return kYesNo; }

bool Keywords::Contains(std::span<const std::string_view> set, std::string_view word) {
    return std::find(set.begin(), set.end(), word) != set.end();
}

}  // namespace rcvsim
