#pragma once
#include "platform/hwctl/IControllerBackend.h"

namespace hwctl {

// A Linux handheld without the controller folder: no model and no power switches, but the
// laser distance meter and the compass are read where the kernel's Industrial I/O subsystem
// exposes them (<iio>/iio:deviceN/in_distance_raw and in_rot_from_north_magnetic_tilt_comp_raw,
// each times its _scale, plus _offset when there is one), and the camera is the first video
// capture device (<dev>/video*) that delivers a still. The compass correction is kept in a
// folder of the user's own laid out as the file backend's (<state>/compass/correction).
class CIioBackend final : public IControllerBackend {
public:
    explicit CIioBackend(std::string iioRoot = "/sys/bus/iio/devices", std::string devRoot = "/dev",
                         std::string stateRoot = DefaultStateRoot())
        : m_iio(std::move(iioRoot)), m_dev(std::move(devRoot)), m_state(std::move(stateRoot)) {}
    // $XDG_CONFIG_HOME/fenk/hwctl, or ~/.config/fenk/hwctl.
    static std::string DefaultStateRoot();
    std::string ModelName() const override { return {}; }
    std::string ReceiverPort() const override { return {}; }
    std::string ModemPort() const override { return {}; }
    bool GetPower(const std::string&) const override { return false; }
    void SetPower(const std::string&, bool) override {}

    bool HasDevice(const std::string& device) const override;
    double ReadDistance() override;
    std::string CaptureStill(const std::string& path) override;
    double ReadHeading() override;
    double HeadingCorrection() const override;
    void StoreHeadingCorrection(double degrees) override;

private:
    // The folder of the first IIO device with that channel; empty when none has it.
    std::string Find(const std::string& channel) const;
    double ReadChannel(const std::string& channel) const;
    std::string m_iio, m_dev, m_state;
};

}  // namespace hwctl
