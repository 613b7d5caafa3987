// The receiver's boot loader: entered with "init,/dev/boot", left by an image that passes its
// checks (docs/simulator.md, "Boot loader").
#include "platform/devio/firmware/FirmwareImage.h"
#include "tools/rcvsim/Receiver.h"

namespace rcvsim {

Reply Receiver::EnterLoader() {
    inLoader_ = true;
    return Reply::Success();
}

namespace {
// From the loader's last ACK to the first answer of the new firmware.
constexpr auto kBootTime = std::chrono::milliseconds(500);
}  // namespace

bool Receiver::InLoader() const {
    const std::lock_guard lock(mutex_);
    return inLoader_ || std::chrono::steady_clock::now() < bootUntil_;
}

bool Receiver::Booting() const {
    const std::lock_guard lock(mutex_);
    return std::chrono::steady_clock::now() < bootUntil_;
}

bool Receiver::CheckFirmware(std::string_view image) const {
    const auto check = devio::firmware::CheckImage(image);
    const std::lock_guard lock(mutex_);
    return check.Ok() && check.info.model == Value("rcv/model");
}

bool Receiver::InstallFirmware(std::string_view image) {
    if (!CheckFirmware(image)) return false;
    const auto check = devio::firmware::CheckImage(image);
    const std::lock_guard lock(mutex_);
    firmwareVersion_ = check.info.version;
    inLoader_ = false;
    bootUntil_ = std::chrono::steady_clock::now() + kBootTime;
    Restart();
    return true;
}

std::string Receiver::FirmwareVersion() const {
    const std::lock_guard lock(mutex_);
    return Value("rcv/ver/main");
}

void Receiver::ApplyFirmware() {
    if (firmwareVersion_.empty()) return;
    if (Param* p = params_.Find("rcv/ver/main")) p->value = firmwareVersion_;
}

}  // namespace rcvsim
