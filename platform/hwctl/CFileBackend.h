#pragma once
#include "platform/hwctl/IControllerBackend.h"

namespace hwctl {

// Hardware exposed as files, the way Linux exposes GPIO and rfkill switches:
//   <root>/model              model name ("Zed2", "Pad7" ...)
//   <root>/receiver/port      device path of the internal receiver's serial port
//   <root>/receiver/power     "1" powered, "0" not
//   <root>/modem/port, <root>/modem/power   the same for the internal modem
// Every switch is also appended to <root>/actions.log ("receiver on"), so that a test or a
// service engineer can see what was done.
class CFileBackend final : public IControllerBackend {
public:
    explicit CFileBackend(std::string root) : m_root(std::move(root)) {}
    std::string ModelName() const override { return Read("model"); }
    std::string ReceiverPort() const override { return Read("receiver/port"); }
    std::string ModemPort() const override { return Read("modem/port"); }
    bool GetPower(const std::string& device) const override { return Read(device + "/power") == "1"; }
    void SetPower(const std::string& device, bool on) override;

private:
    std::string Read(const std::string& name) const;
    std::string m_root;
};

// Not a controller of the family: no model, no internal ports, nothing to switch.
class CNullBackend final : public IControllerBackend {
public:
    std::string ModelName() const override { return {}; }
    std::string ReceiverPort() const override { return {}; }
    std::string ModemPort() const override { return {}; }
    bool GetPower(const std::string&) const override { return false; }
    void SetPower(const std::string&, bool) override {}
};

}  // namespace hwctl
