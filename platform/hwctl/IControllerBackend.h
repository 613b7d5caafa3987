#pragma once
#include <memory>
#include <string>

namespace hwctl {

// Where the controller's hardware facts come from: its model and the power switches of its
// internal receiver and modem.
class IControllerBackend {
public:
    virtual ~IControllerBackend() = default;
    virtual std::string ModelName() const = 0;            // empty: not a controller of the family
    virtual std::string ReceiverPort() const = 0;         // device path of the internal receiver's port
    virtual std::string ModemPort() const = 0;
    virtual bool GetPower(const std::string& device) const = 0;   // device: "receiver" or "modem"
    virtual void SetPower(const std::string& device, bool on) = 0;
};

// The backend chosen at run time: FENK_HWCTL_ROOT names a folder for the file backend;
// otherwise the controller is not one of the family.
std::unique_ptr<IControllerBackend> CreateBackend();
// Tests and hosts may name the folder themselves; an empty path goes back to the environment.
void SetBackendRoot(const std::string& root);

}  // namespace hwctl
