#pragma once
#include "platform/basekit/CCommException.h"
#include "platform/basekit/CEvent.h"
#include "platform/basekit/CWinException.h"
#include "platform/devio/IModem.h"

namespace devio {

// The command channel over an open modem: one command line, its answer, a time-out derived from
// the line rate (or the abort event), and failures as exceptions: basekit::CCommException with
// the modem's own words when it answers "ERROR" or "+CME ERROR: n", basekit::CWinException
// (1460 time-out, 1223 cancelled, 1236 link lost) when it does not answer.
class CModemChannel {
public:
    CModemChannel(CSmartPtr<IModem> modem, basekit::CEvent* abortEvent);
    explicit CModemChannel(CSmartPtr<IModem> modem) : CModemChannel(std::move(modem), nullptr) {}
    CModemChannel(const CModemChannel&) = delete;
    CModemChannel& operator=(const CModemChannel&) = delete;

    // One command and its answer; timeoutMs 0 takes CommandTimeout(). An error answer throws.
    MODEM_REPLY Execute(const ustring& command, EModemReply shape, unsigned timeoutMs = 0);
    // The same, but an error answer is returned, not thrown (a query the model lacks).
    MODEM_REPLY Ask(const ustring& command, EModemReply shape, unsigned timeoutMs = 0);

    // Five times what a command and a 256-byte answer take at sixteen bit-times per byte, plus
    // half a second for the modem to think; a fixed value overrides it (0: computed again).
    unsigned CommandTimeout() const;
    // What a probe may wait: the probe's bytes and half a second.
    unsigned ProbeTimeout() const;
    void SetCommandTimeout(unsigned ms) { m_fixedTimeoutMs = ms; }
    unsigned LineRate() const { return m_modem->GetLineRate(); }
    basekit::CEvent& AbortEvent() const { return *m_abort; }
    const CSmartPtr<IModem>& Modem() const { return m_modem; }

private:
    CSmartPtr<IModem> m_modem;
    basekit::CEvent m_ownEvent{basekit::CEvent::Mode::Auto};
    basekit::CEvent* m_abort;
    unsigned m_fixedTimeoutMs = 0;
};

}  // namespace devio
