#include "fenklib/modemctl/CModemChannel.h"

#include <cmath>


namespace devio {

namespace {
constexpr const char* kSource = "ModemChannel";
constexpr unsigned kAnswerBytes = 256;
constexpr unsigned kProbeBytes = 64;
constexpr unsigned kThinkMs = 500;
constexpr unsigned kMargin = 3;

unsigned TransferMs(unsigned rate, unsigned bytes) {
    if (rate == 0) return 0;
    return static_cast<unsigned>(std::ceil(1000.0 * bytes * 8 * 2 / rate));
}
}  // namespace

CModemChannel::CModemChannel(CSmartPtr<IModem> modem, basekit::CEvent* abortEvent)
    : m_modem(std::move(modem)), m_abort(abortEvent ? abortEvent : &m_ownEvent) {
    if (!m_modem) throw basekit::CWinException(kSource, __LINE__, L"devio::CModemChannel", basekit::kErrorInternal);
}

unsigned CModemChannel::CommandTimeout() const {
    if (m_fixedTimeoutMs) return m_fixedTimeoutMs;
    return (TransferMs(LineRate(), kAnswerBytes) + kThinkMs) * kMargin;
}

unsigned CModemChannel::ProbeTimeout() const {
    if (m_fixedTimeoutMs) return m_fixedTimeoutMs;
    return TransferMs(LineRate(), kProbeBytes) + kThinkMs;
}

MODEM_REPLY CModemChannel::Ask(const ustring& command, EModemReply shape, unsigned timeoutMs) {
    // A value typed by the user must not end this command and start another.
    for (const wchar_t c : command)
        if (c < 0x20 || c == 0x7F) throw basekit::CWinException(kSource, __LINE__, command, basekit::kErrorInvalidParameter);
    return m_modem->Exchange(command, shape, timeoutMs ? timeoutMs : CommandTimeout(), m_abort);
}

MODEM_REPLY CModemChannel::Execute(const ustring& command, EModemReply shape, unsigned timeoutMs) {
    MODEM_REPLY reply = Ask(command, shape, timeoutMs);
    if (reply.error) throw basekit::CCommException(kSource, __LINE__, command, reply.final, L"Modem");
    return reply;
}

}  // namespace devio
