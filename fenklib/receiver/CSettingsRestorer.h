#pragma once
#include <functional>
#include <vector>

#include "fenklib/receiver/CVokReceiverMateCore.h"

namespace devio {

// Saves a port's settings before a temporary change (a file transfer, a terminal session at
// another rate) and puts them back when it goes out of scope. Every restore step is tried even
// when an earlier one fails; nothing escapes the destructor.
template <typename Mate>
class CSettingsRestorer {
public:
    class CPortSettings {
    public:
        CPortSettings(Mate& mate, vok::EDev port)
            : m_mate(mate), m_port(port),
              m_echo(mate.Get(par::PortEcho, port)),
              m_dup(mate.Get(par::PortDup, port)),
              m_eoff(mate.Get(par::PortEoff, port)),
              m_imode(mate.Get(par::PortIMode, port)),
              m_messages(mate.GetPortMessages(port)) {}
        virtual ~CPortSettings() {
            Try([&] { m_mate.Set(par::PortEcho, m_echo, m_port); });
            Try([&] { m_mate.Set(par::PortDup, m_dup, m_port); });
            Try([&] { m_mate.Set(par::PortEoff, m_eoff, m_port); });
            Try([&] { m_mate.Set(par::PortIMode, m_imode, m_port); });
            Try([&] { m_mate.DisableMessages(m_port); });
            for (const vok::MSG& msg : m_messages) Try([&] { m_mate.EnableMessage(m_port, msg); });
        }
        CPortSettings(const CPortSettings&) = delete;
        CPortSettings& operator=(const CPortSettings&) = delete;

        size_t FailedSteps() const { return m_failed; }
        const std::vector<vok::MSG>& SavedMessages() const { return m_messages; }

    protected:
        void Try(const std::function<void()>& step) noexcept {
            try {
                step();
            } catch (...) {
                ++m_failed;
            }
        }
        Mate& m_mate;
        const vok::EDev m_port;

    private:
        const vok::EDev m_echo, m_dup;
        const ustring m_eoff;
        const vok::EIMode m_imode;
        const std::vector<vok::MSG> m_messages;
        size_t m_failed = 0;
    };

    class CSerialPortSettings : public CPortSettings {
    public:
        CSerialPortSettings(Mate& mate, vok::EDev port)
            : CPortSettings(mate, port),
              m_rate(mate.Get(par::PortRate, port)),
              m_rts(mate.Get(par::PortRtsCts, port)),
              m_stops(mate.Get(par::PortStops, port)),
              m_parity(mate.Get(par::PortParity, port)),
              m_bits(mate.Get(par::PortBits, port)) {}
        ~CSerialPortSettings() override {
            this->Try([&] { this->m_mate.Set(par::PortRate, m_rate, this->m_port); });
            this->Try([&] { this->m_mate.Set(par::PortRtsCts, m_rts, this->m_port); });
            this->Try([&] { this->m_mate.Set(par::PortStops, m_stops, this->m_port); });
            this->Try([&] { this->m_mate.Set(par::PortParity, m_parity, this->m_port); });
            this->Try([&] { this->m_mate.Set(par::PortBits, m_bits, this->m_port); });
        }

    private:
        const vok::EBaudRate m_rate;
        const vok::ERtsControl m_rts;
        const vok::EStopBits m_stops;
        const vok::EParity m_parity;
        const vok::EByteSize m_bits;
    };
};

}  // namespace devio
