#pragma once
#include <vector>

#include "platform/basekit/CStdException.h"

namespace devio {

using basekit::ustring;

// No modem family answered its probe on a port.
class CModemNotFoundException : public basekit::CStdException {
public:
    CModemNotFoundException(const char* source, int line, ustring port, unsigned rate, std::vector<ustring> tried);
    const ustring& Port() const { return m_port; }
    unsigned Rate() const { return m_rate; }
    const std::vector<ustring>& Tried() const { return m_tried; }

private:
    ustring m_port;
    unsigned m_rate;
    std::vector<ustring> m_tried;
};

// Writing settings stopped at one: its name, why, and the names of those written before it
// (the modem holds them now).
class CModemWriteException : public basekit::CStdException {
public:
    CModemWriteException(const char* source, int line, ustring failed, ustring cause, std::vector<ustring> written,
                         ustring failedKey, std::vector<ustring> writtenKeys);
    const ustring& Failed() const { return m_failed; }
    const ustring& Cause() const { return m_cause; }
    const std::vector<ustring>& Written() const { return m_written; }
    const ustring& FailedKey() const { return m_failedKey; }
    const std::vector<ustring>& WrittenKeys() const { return m_writtenKeys; }

private:
    ustring m_failed, m_cause;
    std::vector<ustring> m_written;
    ustring m_failedKey;
    std::vector<ustring> m_writtenKeys;
};

// A request the modem layer refuses before sending anything (a PIN it must not send, a value
// out of range); the text says why.
class CModemRefusal : public basekit::CStdException {
public:
    CModemRefusal(const char* source, int line, unsigned reasonId, ustring reason)
        : CStdException(std::move(reason), source, line), m_reasonId(reasonId) {}
    unsigned ReasonId() const { return m_reasonId; }

private:
    unsigned m_reasonId;
};

}  // namespace devio
