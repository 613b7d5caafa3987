#pragma once
#include <memory>
#include <string>

#include "platform/hwctl/IControllerBackend.h"

namespace hwctl {

// The controller as the port hooks ask it: which model it is, which ports lead to its own
// receiver and modem, and their power. Made anew for each decision.
class CUniversalZed {
public:
    CUniversalZed() : m_backend(CreateBackend()) {}
    explicit CUniversalZed(std::unique_ptr<IControllerBackend> backend) : m_backend(std::move(backend)) {}

    bool IsZed() const;     // a controller of the family
    bool IsPad7() const;
    bool IsInternalReceiverPort(const std::string& portName) const;
    bool IsInternalModemPort(const std::string& portName) const;

    bool GPS_GetPowerState() const { return m_backend->GetPower("receiver"); }
    // wait: let the receiver finish starting before returning (a file switch is immediate).
    void GPS_SetPowerState(bool on, bool wait) { (void)wait; m_backend->SetPower("receiver", on); }
    bool Modem_GetPowerState() const { return m_backend->GetPower("modem"); }
    void Modem_SetPowerState(bool on) { m_backend->SetPower("modem", on); }

private:
    static bool SamePort(const std::string& configured, const std::string& portName);
    std::unique_ptr<IControllerBackend> m_backend;
};

}  // namespace hwctl
