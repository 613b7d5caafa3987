#pragma once
#include <atomic>
#include <memory>
#include <mutex>
#include <string>

#include "platform/devio/CLink.h"
#include "platform/devio/IModem.h"

namespace devio {

// A modem on an open link. Unlike the receiver it has no reader thread: the caller's thread
// writes one line and reads the answer itself, so nothing is read while nobody asks.
class CModem final : public basekit::CRefCounted<IModem, IPort> {
public:
    // Opens the link the address names ("serial:...", "tcp://...", "sim:"); throws
    // basekit::CWinException when it cannot. "log=1" turns the wire log on.
    static CSmartPtr<CModem> Open(const CSmartPtr<IPortAddr>& address);
    explicit CModem(std::unique_ptr<CLink> link);

    void AddRef() const noexcept override { CRefCounted::AddRef(); }
    void Release() const noexcept override { CRefCounted::Release(); }

    // IModem
    CSmartPtr<IPort> GetPort() const override;
    ustring GetModelName() const override;
    void SetModelName(const ustring& name) override;
    unsigned GetLineRate() const override { return m_lineRate; }
    MODEM_REPLY Exchange(const ustring& line, EModemReply shape, unsigned timeoutMs,
                         const basekit::CEvent* abort) override;
    std::string ReadRaw(unsigned timeoutMs, const basekit::CEvent* abort) override;
    CWireLog& WireLog() override { return m_link->WireLog(); }
    unsigned NoiseLines() const override { return m_noise.load(); }

    // IPort
    CSmartPtr<IPortAddr> GetAddress() const override { return m_link->Address(); }
    bool IsOpen() const override { return !m_lost.load(); }
    void WriteRaw(std::string_view bytes) override;

    // The final result lines of the command family that ends its answers with one.
    static bool IsFinalResult(std::wstring_view line);
    static bool IsErrorResult(std::wstring_view line);

private:
    enum class Wait { Data, Timeout, Aborted };
    Wait WaitForData(int timeoutMs, const basekit::CEvent* abort);
    // Reads what is waiting into m_pending; false at end of stream or on failure.
    void ReadWaiting(const ustring& command);
    bool TakeLine(std::string& line);
    void DropStale(const ustring& command);
    [[noreturn]] void Fail(const ustring& command, unsigned code);

    std::unique_ptr<CLink> m_link;
    unsigned m_lineRate;
    mutable std::mutex m_nameMutex;
    ustring m_modelName;
    std::mutex m_exchangeMutex;
    std::string m_pending;
    std::atomic<unsigned> m_noise{0};
    std::atomic<bool> m_lost{false};
};

}  // namespace devio
