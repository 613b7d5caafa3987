#pragma once
#include <functional>
#include <memory>
#include <optional>

#include "platform/devio/CReceiver.h"
#include "platform/devio/SerialLine.h"
#include "tools/lyn-utility/CFenkBinding.h"

namespace rcvsim {
class RcvSim;
}

// The host's one open receiver: opened through the library's port hooks, probed so that the
// host can say what answered, and the built-in simulated receiver behind "sim:".
class CConnection {
public:
    // Reads the receiver's identity within timeoutMs; 0 or the system error code of the failure.
    using Probe = std::function<unsigned(const basekit::CSmartPtr<devio::IReceiver>&, unsigned timeoutMs,
                                         CFenkBinding::Identity& identity)>;
    static constexpr unsigned kProbeTimeoutMs = 3000;

    // Probes with the library's probe when it exports one.
    explicit CConnection(const CFenkBinding& library);
    ~CConnection();

    void SetProbe(Probe probe) { m_probe = std::move(probe); }
    // Opens the link the text names and probes it. On failure the link that was open stays open
    // and a CStdException with a plain sentence (GetPlainMessage) and the details is thrown.
    void Open(const basekit::ustring& url);
    void Close();
    void Reopen();

    // What became of the link after the receiver's end of it was reconfigured.
    enum class EFollow { Followed, WentBack, Closed };
    struct FOLLOW_RESULT {
        EFollow outcome = EFollow::Followed;
        basekit::ustring tried;          // the link at the new settings
        basekit::ustring kept;           // the link as it was
        basekit::ustring details;        // why the new settings (and the old) did not answer
        bool restored = false;           // went back, and the receiver's port has its old settings again
    };
    // The receiver's end of the link was switched to `line` (nothing: a link without line
    // settings, reopened as it was). Reopens the link there and proves it with the probe. When
    // nothing answers, goes back to the link as it was and has the library write the port's
    // old settings back; when the receiver answers neither way, the link is left closed. So
    // the link is whole at one of the two, or closed, never half-way.
    FOLLOW_RESULT Follow(const std::optional<devio::SerialLineSettings>& line);
    // The serial link text at other line settings, its other options kept; other links unchanged.
    static basekit::ustring WithLine(const basekit::ustring& url, const devio::SerialLineSettings& line);
    bool IsOpen() const { return static_cast<bool>(m_receiver); }
    basekit::CSmartPtr<devio::IReceiver> Receiver() const { return basekit::CSmartPtr<devio::IReceiver>(m_receiver.Get()); }
    basekit::ustring Url() const { return m_url; }
    // Where the link leads, in words ("TCP 127.0.0.1:4001").
    basekit::ustring Description() const;
    // What answered the probe; empty when there was no probe.
    const std::optional<CFenkBinding::Identity>& Identity() const { return m_identity; }
    // Records the bytes of this and every later link into the file (empty: stop). False when
    // the file cannot be written.
    bool SetWireLog(const std::string& path);
    const std::string& WireLogPath() const { return m_wireLog; }

private:
    const CFenkBinding& m_library;
    Probe m_probe;
    std::unique_ptr<rcvsim::RcvSim> m_simulator;
    basekit::CSmartPtr<devio::IPortAddr> m_address;
    basekit::CSmartPtr<devio::CReceiver> m_receiver;
    basekit::ustring m_url;
    std::optional<CFenkBinding::Identity> m_identity;
    std::string m_wireLog;
};
