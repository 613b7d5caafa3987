#pragma once
#include "platform/basekit/CStdException.h"

namespace basekit {

// System error codes the command layer reports.
enum SystemError : unsigned {
    kErrorCancelled = 1223,
    kErrorTimeout = 1460,
    kErrorInternal = 1359,
    kErrorLinkLost = 1236,    // the connection was aborted by the local system
};
// Codes below 1000 are errno values of a failed system call.

// No usable answer: cancelled, timed out, a failed wait or a missing object.
class CWinException : public CStdException {
public:
    CWinException(const char* source, int line, ustring text, unsigned code);
    ustring GetMessage() const override;
    const ustring& Text() const { return m_text; }
    unsigned Code() const { return m_code; }

    // The readable description of a system error code.
    static ustring SystemMessage(unsigned code);

private:
    ustring m_text;
    unsigned m_code;
};

}  // namespace basekit
