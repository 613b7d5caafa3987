#pragma once
#include <atomic>
#include <cstdint>
#include <memory>
#include <mutex>
#include <string_view>

#include "platform/devio/CWireLog.h"
#include "platform/devio/IPortAddr.h"
#include "platform/devio/LinkStatus.h"

namespace devio {

// A byte stream over a non-blocking descriptor: a serial line, a TCP connection or a socket to
// the in-process simulator. One reader polls it; writers serialise on the write lock.
class CLink {
public:
    // NmeaOnly: a feed of sentences (a replayed capture, gpsd) with no receiver behind it to
    // answer commands.
    enum class Traffic { Commands, NmeaOnly };

    CLink(CSmartPtr<IPortAddr> address, int fd, Traffic traffic = Traffic::Commands);
    virtual ~CLink();
    CLink(const CLink&) = delete;
    CLink& operator=(const CLink&) = delete;

    int Fd() const { return m_fd; }
    const CSmartPtr<IPortAddr>& Address() const { return m_address; }
    bool TakesCommands() const { return m_traffic == Traffic::Commands; }
    CWireLog& WireLog() { return m_log; }

    // Reads what is there without waiting: Success with got > 0, Timeout when nothing is
    // waiting, Closed at end of stream, IoError on failure.
    LinkStatus ReadSome(char* buffer, size_t capacity, size_t& got);
    // Writes everything within timeoutMs; the deadline holds across partial writes.
    LinkStatus Write(std::string_view bytes, unsigned timeoutMs);

    std::uint64_t BytesIn() const { return m_bytesIn.load(std::memory_order_relaxed); }
    std::uint64_t BytesOut() const { return m_bytesOut.load(std::memory_order_relaxed); }

private:
    CSmartPtr<IPortAddr> m_address;
    int m_fd;
    Traffic m_traffic;
    bool m_isSocket;
    std::mutex m_writeMutex;
    CWireLog m_log;
    std::atomic<std::uint64_t> m_bytesIn{0};
    std::atomic<std::uint64_t> m_bytesOut{0};
};

}  // namespace devio
