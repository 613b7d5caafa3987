#pragma once
// A simulated modem and the modem object connected to it over a pseudo-terminal at a line rate.
#include <condition_variable>
#include <memory>
#include <mutex>

#include "platform/devio/CModem.h"
#include "tools/rcvsim/ModemSim.h"

namespace fenktest {

struct ModemSimLink {
    std::shared_ptr<rcvsim::ManualClock> clock = std::make_shared<rcvsim::ManualClock>();
    std::unique_ptr<rcvsim::ModemSim> sim;
    basekit::CSmartPtr<devio::CModem> modem;
    std::mutex mutex;
    std::condition_variable replaced;
    int newPaths = 0;

    ModemSimLink(rcvsim::ModemOptions options, int rate) {
        options.lineRate = rate;
        options.throttle = true;
        sim = std::make_unique<rcvsim::ModemSim>(options, clock);
        const std::string path = sim->StartPty([this](const std::string&) {
            const std::lock_guard lock(mutex);
            ++newPaths;
            replaced.notify_all();
        });
        modem = devio::CModem::Open(devio::IPortAddr::Parse(
            basekit::ustring::FromUtf8("serial:" + path + "?baud=" + std::to_string(rate))));
        modem->WireLog().Enable(true);
    }
    basekit::CSmartPtr<devio::IModem> Modem() const { return basekit::CSmartPtr<devio::IModem>(modem.Get()); }
    // What the host wrote since the log was last cleared, one entry per write.
    std::vector<std::string> Written() const {
        std::vector<std::string> out;
        for (const auto& e : modem->WireLog().Entries())
            if (e.direction == devio::CWireLog::Direction::Out) out.push_back(e.bytes);
        return out;
    }
    // Drops the link and waits (bounded) until the simulator has put a new terminal in its place.
    bool DropAndWaitForReplacement() {
        sim->DropLinks(0);
        std::unique_lock lock(mutex);
        return replaced.wait_for(lock, std::chrono::seconds(10), [this] { return newPaths > 0; });
    }
};

}  // namespace fenktest
