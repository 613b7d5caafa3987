#pragma once
// A simulator and a receiver object connected to it over a real link.
#include <memory>

#include "platform/devio/CReceiver.h"
#include "tools/rcvsim/RcvSim.h"

namespace fenktest {

struct SimLink {
    std::unique_ptr<rcvsim::RcvSim> sim;
    basekit::CSmartPtr<devio::CReceiver> receiver;

    enum class Over { Tcp, Pty };
    explicit SimLink(Over over = Over::Tcp, rcvsim::SimOptions options = {}, int rate = 115200,
                     std::shared_ptr<const rcvsim::SimClock> clock = nullptr) {
        options.lineRate = rate;
        sim = std::make_unique<rcvsim::RcvSim>(options, std::move(clock));
        std::wstring url;
        if (over == Over::Tcp) {
            url = L"tcp://127.0.0.1:" + std::to_wstring(sim->StartTcp("127.0.0.1", 0));
        } else {
            url = basekit::ustring::FromUtf8("serial:" + sim->StartPty() + "?baud=" + std::to_string(rate));
        }
        receiver = devio::CReceiver::Open(devio::IPortAddr::Parse(url));
    }
    basekit::CSmartPtr<devio::IReceiver> Receiver() const { return basekit::CSmartPtr<devio::IReceiver>(receiver.Get()); }
};

}  // namespace fenktest
