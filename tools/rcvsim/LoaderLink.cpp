#include "tools/rcvsim/LoaderLink.h"

#include <algorithm>

namespace rcvsim {

using devio::ymodem::CYmodemReceiveMachine;

LoaderLink::LoaderLink(Receiver& receiver, bool socket)
    : receiver_(receiver),
      socket_(socket),
      machine_(CYmodemReceiveMachine::LIMITS{},
               [&receiver](const devio::ymodem::FILE_HEADER&, std::string_view data) { return receiver.CheckFirmware(data); }),
      nextTick_(Clock::now()) {}

bool LoaderLink::Deaf(Clock::time_point now) {
    if (!deafUntil_) return false;
    if (now < *deafUntil_) return true;
    // The cable is back. The loader gave up on the broken transfer long ago; it asks anew.
    deafUntil_.reset();
    machine_.Reset();
    nextTick_ = now;
    return false;
}

std::string LoaderLink::Feed(std::string_view bytes, Clock::time_point now) {
    if (drop_ || receiver_.Booting() || Deaf(now)) return {};
    const FaultPlan plan = receiver_.Faults();
    std::string line(bytes);
    if (plan.loaderNoiseEvery > 0) {
        for (char& c : line)
            if (++received_ % static_cast<std::uint64_t>(plan.loaderNoiseEvery) == 0) c = static_cast<char>(c ^ 0x5a);
    }
    std::string reply;
    machine_.Feed(line, reply);
    if (plan.loaderCutAfterBlocks > 0 && machine_.BlocksAccepted() >= static_cast<std::uint64_t>(plan.loaderCutAfterBlocks)) {
        // The cable comes out once; the next attempt finds it plugged in again.
        FaultPlan cleared = plan;
        cleared.loaderCutAfterBlocks = 0;
        receiver_.SetFaults(cleared);
        if (socket_) drop_ = true;
        else deafUntil_ = now + std::chrono::milliseconds(std::max(plan.loaderCutMs, 1));
        return {};
    }
    AfterFeed(now);
    return reply;
}

void LoaderLink::AfterFeed(Clock::time_point now) {
    nextTick_ = now + kRequestEvery;
    if (machine_.State() != CYmodemReceiveMachine::EState::Finished) return;
    if (machine_.FilesAccepted() > 0 && receiver_.InstallFirmware(machine_.Data())) {
        // The new firmware starts; like any restart it closes the network connections.
        drop_ = socket_;
        return;
    }
    // An empty batch installs nothing: keep asking.
    machine_.Reset();
}

std::string LoaderLink::Tick(Clock::time_point now) {
    if (drop_ || receiver_.Booting() || Deaf(now) || now < nextTick_) return {};
    nextTick_ = now + kRequestEvery;
    if (machine_.Done()) {
        // After a cancel or a refusal the loader starts over and waits for the next attempt.
        machine_.Reset();
    }
    std::string reply;
    machine_.OnSilence(reply);
    return reply;
}

int LoaderLink::MsUntilTick(Clock::time_point now) const {
    const auto until = deafUntil_ ? std::max(*deafUntil_, nextTick_) : nextTick_;
    if (until <= now) return 0;
    return static_cast<int>(std::chrono::ceil<std::chrono::milliseconds>(until - now).count());
}

}  // namespace rcvsim
