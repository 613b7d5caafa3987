#pragma once
#include "platform/basekit/CStdException.h"

namespace basekit {

// The device answered, but with an error reply.
class CCommException : public CStdException {
public:
    CCommException(const char* source, int line, ustring command, ustring reply, ustring device);
    ustring GetMessage() const override;
    ustring GetPlainMessage() const override;
    const ustring& Command() const { return m_command; }
    const ustring& Reply() const { return m_reply; }
    const ustring& Device() const { return m_device; }

private:
    ustring m_command, m_reply, m_device;
};

}  // namespace basekit
