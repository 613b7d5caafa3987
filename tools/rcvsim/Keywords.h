#pragma once
#include <span>
#include <string>
#include <string_view>

namespace rcvsim {

// The receiver's keyword sets: every value of a keyword parameter is one of these words,
// compared exactly (case-sensitive) as the firmware does.
struct Keywords {
    static std::span<const std::string_view> BaudRates();
    static std::span<const std::string_view> ByteSizes();
    static std::span<const std::string_view> Parities();
    static std::span<const std::string_view> StopBits();
    static std::span<const std::string_view> OnOff();
    static std::span<const std::string_view> InputModes();
    static std::span<const std::string_view> Ports();        // dev/null ... cur/file/b
    static std::span<const std::string_view> PosModes();
    static std::span<const std::string_view> DionModes();
    static std::span<const std::string_view> RtkDynamics();
    static std::span<const std::string_view> FixingLevels();
    static std::span<const std::string_view> OutputModes();
    static std::span<const std::string_view> AntiJamming();
    static std::span<const std::string_view> Antennas();
    static std::span<const std::string_view> ButtonDynamics();
    static std::span<const std::string_view> ButtonActions();
    static std::span<const std::string_view> ButtonAuto();
    static std::span<const std::string_view> PowerSwitch();
    static std::span<const std::string_view> IonoCorrections();
    static std::span<const std::string_view> Startup();
    static std::span<const std::string_view> YesNo();

    static bool Contains(std::span<const std::string_view> set, std::string_view word);
    // Serial ports the receiver has as physical lines plus its USB, TCP and modem ports.
    static std::span<const std::string_view> DevicePorts();
    static bool IsDevicePort(std::string_view port) { return Contains(DevicePorts(), port); }
};

}  // namespace rcvsim
