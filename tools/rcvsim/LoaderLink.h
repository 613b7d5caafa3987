#pragma once
#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/devio/ymodem/CYmodemReceiveMachine.h"
#include "tools/rcvsim/Receiver.h"

namespace rcvsim {

// One connection's side of the boot loader (docs/simulator.md, "Boot loader"): asks for an
// image with 'C' once a second, takes it over YMODEM, has the receiver check it at the last EOT
// and install it at the end of the batch. A failed or broken-off transfer leaves the loader
// waiting for the next attempt: the receiver never ends up without firmware.
class LoaderLink {
public:
    using Clock = std::chrono::steady_clock;
    static constexpr auto kRequestEvery = std::chrono::milliseconds(1000);

    LoaderLink(Receiver& receiver, bool socket);
    // What goes to the host: answers to its bytes, requests when the line is quiet.
    std::string Feed(std::string_view bytes, Clock::time_point now);
    std::string Tick(Clock::time_point now);
    int MsUntilTick(Clock::time_point now) const;
    // The connection is to close: a pulled cable on a socket, or the restart after an install.
    bool WantsDrop() const { return drop_; }

private:
    bool Deaf(Clock::time_point now);
    void AfterFeed(Clock::time_point now);

    Receiver& receiver_;
    const bool socket_;
    devio::ymodem::CYmodemReceiveMachine machine_;
    Clock::time_point nextTick_;
    std::optional<Clock::time_point> deafUntil_;
    std::uint64_t received_ = 0;   // bytes taken off the line, for the noise fault
    bool drop_ = false;
};

}  // namespace rcvsim
