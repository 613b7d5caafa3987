#include "platform/basekit/CStdException.h"

#include "platform/basekit/CCommException.h"
#include "platform/basekit/CWinException.h"
#include "platform/basekit/BaseStrings.h"

#include <cstring>

namespace basekit {

namespace {
ustring BaseText(unsigned id) {
    ustring s;
    s.load(BaseStrings(), id);
    return s;
}
}  // namespace

CStdException::CStdException(ustring message, const char* source, int line)
    : m_message(std::move(message)), m_source(source ? source : ""), m_line(line) {}

const char* CStdException::what() const noexcept {
    try {
        m_what = GetMessage().ToUtf8();
    } catch (...) {
        return "CStdException";
    }
    return m_what.c_str();
}

void CStdException::CExInfo::Capture() {
    m_exception = std::current_exception();
    try {
        std::rethrow_exception(m_exception);
    } catch (const CStdException& e) {
        m_message = e.GetMessage();
    } catch (const std::exception& e) {
        m_message = ustring::FromUtf8(e.what());
    } catch (...) {
        m_message = BaseText(kStrUnknownError);
    }
}

void CStdException::CExInfo::Capture(const CStdException& e) {
    m_exception = std::make_exception_ptr(e);
    m_message = e.GetMessage();
}

void CStdException::CExInfo::Rethrow() const {
    if (m_exception) std::rethrow_exception(m_exception);
    throw CStdException(m_message);
}

CCommException::CCommException(const char* source, int line, ustring command, ustring reply, ustring device)
    : CStdException(ustring(), source, line), m_command(std::move(command)), m_reply(std::move(reply)),
      m_device(std::move(device)) {}

ustring CCommException::GetMessage() const {
    return ustring::Format(BaseText(kStrCommError).c_str(), m_device, m_command, m_reply);
}

CWinException::CWinException(const char* source, int line, ustring text, unsigned code)
    : CStdException(ustring(), source, line), m_text(std::move(text)), m_code(code) {}

ustring CWinException::GetMessage() const {
    return ustring::Format(BaseText(kStrWinError).c_str(), m_text, SystemMessage(m_code), m_code);
}

ustring CWinException::SystemMessage(unsigned code) {
    switch (code) {
        case kErrorCancelled: return BaseText(kStrCancelled);
        case kErrorTimeout: return BaseText(kStrTimeout);
        case kErrorInternal: return BaseText(kStrInternal);
        case kErrorLinkLost: return BaseText(kStrLinkLost);
        default: break;
    }
    // Codes of failed system calls come as errno values.
    if (code < 1000) return ustring::FromUtf8(std::strerror(static_cast<int>(code)));
    return BaseText(kStrUnknownError);
}

}  // namespace basekit
