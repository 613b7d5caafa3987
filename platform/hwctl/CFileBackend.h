#pragma once
#include "platform/hwctl/IControllerBackend.h"

namespace hwctl {

// Hardware exposed as files, the way Linux exposes GPIO and rfkill switches (the layout is
// described in docs/hwctl-file-backend.md):
//   <root>/model              model name ("Zed2", "Pad7" ...)
//   <root>/receiver/port      device path of the internal receiver's serial port
//   <root>/receiver/power     "1" powered, "0" not
//   <root>/modem/port, <root>/modem/power   the same for the internal modem
//   <root>/laser/distance     the last distance in metres ("12.345")
//   <root>/camera/still       the image a capture delivers (copied to the chosen file)
//   <root>/compass/heading    the raw heading in degrees; compass/correction is written
// A device is present when its folder exists. Every switch, capture and stored correction is
// also appended to <root>/actions.log ("receiver on"), so that a test or a service engineer
// can see what was done.
class CFileBackend final : public IControllerBackend {
public:
    explicit CFileBackend(std::string root) : m_root(std::move(root)) {}
    std::string ModelName() const override { return Read("model"); }
    std::string ReceiverPort() const override { return Read("receiver/port"); }
    std::string ModemPort() const override { return Read("modem/port"); }
    bool GetPower(const std::string& device) const override { return Read(device + "/power") == "1"; }
    void SetPower(const std::string& device, bool on) override;

    bool HasDevice(const std::string& device) const override;
    double ReadDistance() override { return ReadNumber("laser", "distance"); }
    std::string CaptureStill(const std::string& path) override;
    double ReadHeading() override;
    double HeadingCorrection() const override;
    void StoreHeadingCorrection(double degrees) override;

private:
    std::string Read(const std::string& name) const;
    double ReadNumber(const std::string& device, const std::string& name) const;
    void Log(const std::string& action) const;
    std::string m_root;
};

// Not a controller of the family: no model, no internal ports, nothing to switch, no devices.
class CNullBackend final : public IControllerBackend {
public:
    std::string ModelName() const override { return {}; }
    std::string ReceiverPort() const override { return {}; }
    std::string ModemPort() const override { return {}; }
    bool GetPower(const std::string&) const override { return false; }
    void SetPower(const std::string&, bool) override {}
    bool HasDevice(const std::string&) const override { return false; }
    double ReadDistance() override { Absent("laser"); }
    std::string CaptureStill(const std::string&) override { Absent("camera"); }
    double ReadHeading() override { Absent("compass"); }
    double HeadingCorrection() const override { return 0; }
    void StoreHeadingCorrection(double) override { Absent("compass"); }

private:
    [[noreturn]] static void Absent(const char* device);
};

}  // namespace hwctl
