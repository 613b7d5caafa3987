#pragma once
#include "platform/basekit/CStdException.h"

namespace basekit {

// System error codes, numbered as the library has always numbered them. A failed system call's
// errno is turned into one of these by SystemErrorFromErrno, so every number has one meaning.
enum SystemError : unsigned {
    kErrorFileNotFound = 2,
    kErrorAccessDenied = 5,
    kErrorInvalidData = 13,          // the device refused the request or sent what makes no sense
    kErrorInvalidParameter = 87,
    kErrorBusy = 170,
    kErrorIoDevice = 1117,
    kErrorNotConnected = 1167,       // no device at that path
    kErrorCancelled = 1223,
    kErrorConnectionRefused = 1225,
    kErrorNetworkUnreachable = 1231,
    kErrorHostUnreachable = 1232,
    kErrorLinkLost = 1236,           // the connection was aborted by the local system
    kErrorInternal = 1359,
    kErrorTimeout = 1460,
    kErrorHostNotFound = 11001,
    kErrorFromErrno = 0x20000000,    // | errno: a system call failure with no code of its own
};

// The code for a failed system call's errno.
unsigned SystemErrorFromErrno(int error);

// No usable answer: cancelled, timed out, a failed wait or a missing object.
class CWinException : public CStdException {
public:
    CWinException(const char* source, int line, ustring text, unsigned code);
    ustring GetMessage() const override;
    const ustring& Text() const { return m_text; }
    unsigned Code() const { return m_code; }

    // The readable description of a system error code.
    static ustring SystemMessage(unsigned code);
    // What happened and what to check, in a sentence, for a code; empty when there is none.
    static ustring PlainMessage(unsigned code);
    ustring GetPlainMessage() const override { return PlainMessage(m_code); }

private:
    ustring m_text;
    unsigned m_code;
};

}  // namespace basekit
