#pragma once
#include <string>
#include <vector>

#include "platform/basekit/CEvent.h"
#include "platform/devio/CWireLog.h"
#include "platform/devio/IPort.h"

namespace devio {

// How the answer to one modem command line ends.
enum class EModemReply {
    Final,    // information lines up to a final result: "OK", "ERROR", "+CME ERROR: n", "+CMS ERROR: n"
    Single,   // one line: a radio's value, or its "OK" / "ERROR"
};

// A modem's answer to one command line, as its lines came.
struct MODEM_REPLY {
    std::vector<basekit::ustring> lines;   // the answer without echo, blank lines and noise; for Single, the one line
    basekit::ustring final;                // the final result (Final) or the one line (Single)
    bool error = false;                    // final is "ERROR", "+CME ERROR: n" or "+CMS ERROR: n"
};

// A radio or cellular modem reached through a port. Its command channel carries lines: one
// command line out, the answer's lines back. What the lines say is the modem command layer's
// business (fenklib/modemctl).
struct IModem : basekit::IRefCounted {
    virtual CSmartPtr<IPort> GetPort() const = 0;
    virtual ustring GetModelName() const = 0;
    // The command layer names the modem once it has identified it.
    virtual void SetModelName(const ustring& name) = 0;
    // Bit/s of the port, for time-outs; 9600 for a port that has no rate (network, in-process).
    virtual unsigned GetLineRate() const = 0;
    // Writes the line and CR, then collects the answer for at most timeoutMs; abort (may be
    // null) ends the wait. Bytes that were waiting before the line was written are stale and
    // dropped; the line's echo is tolerated. Throws basekit::CWinException: 1460 time-out,
    // 1223 aborted, 1236 link lost, 1117 I/O error. One exchange at a time per modem.
    virtual MODEM_REPLY Exchange(const ustring& line, EModemReply shape, unsigned timeoutMs,
                                 const basekit::CEvent* abort) = 0;
    // Whatever bytes arrive within timeoutMs (a terminal's view); empty on time-out or abort.
    virtual std::string ReadRaw(unsigned timeoutMs, const basekit::CEvent* abort) = 0;
    virtual CWireLog& WireLog() = 0;
    // Lines dropped as line noise (bytes no modem sends) since the port opened.
    virtual unsigned NoiseLines() const = 0;

protected:
    ~IModem() = default;
};

}  // namespace devio
