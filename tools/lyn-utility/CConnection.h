#pragma once
#include <memory>

#include "platform/devio/CReceiver.h"
#include "tools/lyn-utility/CFenkBinding.h"

namespace rcvsim {
class RcvSim;
}

// The host's one open receiver: opened through the library's port hooks, and the built-in
// simulated receiver behind "sim:".
class CConnection {
public:
    explicit CConnection(const CFenkBinding& library);
    ~CConnection();

    // Throws basekit::CStdException when the link cannot be opened or a hook refuses it.
    void Open(const basekit::ustring& url);
    void Close();
    void Reopen();
    bool IsOpen() const { return static_cast<bool>(m_receiver); }
    basekit::CSmartPtr<devio::IReceiver> Receiver() const { return basekit::CSmartPtr<devio::IReceiver>(m_receiver.Get()); }
    basekit::ustring Url() const { return m_url; }

private:
    const CFenkBinding& m_library;
    std::unique_ptr<rcvsim::RcvSim> m_simulator;
    basekit::CSmartPtr<devio::IPortAddr> m_address;
    basekit::CSmartPtr<devio::CReceiver> m_receiver;
    basekit::ustring m_url;
};
