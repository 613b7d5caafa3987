#include "platform/basekit/CStdException.h"

#include "platform/basekit/CCommException.h"
#include "platform/basekit/CWinException.h"
#include "platform/basekit/BaseStrings.h"

#include <cerrno>
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

std::exception_ptr CurrentAsStdException() {
    try {
        throw;
    } catch (const CStdException&) {
        return std::current_exception();
    } catch (const std::exception& e) {
        return std::make_exception_ptr(CWinException("foreign", 0, ustring::FromUtf8(e.what()), kErrorInternal));
    } catch (...) {
        return std::make_exception_ptr(CWinException("unknown", 0, BaseText(kStrUnknownError), kErrorInternal));
    }
}

void CStdException::CExInfo::Capture() {
    m_exception = CurrentAsStdException();
    try {
        std::rethrow_exception(m_exception);
    } catch (const CStdException& e) {
        m_message = e.GetMessage();
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

namespace {

// Every system error code the library reports, with its technical text and its plain sentence,
// in one place.
struct ErrorText {
    unsigned code;
    unsigned technical;
    unsigned plain;
};
constexpr ErrorText kErrorTexts[] = {
    {kErrorFileNotFound, kStrFileNotFound, kStrPlainFileNotFound},
    {kErrorInvalidData, kStrInvalidData, kStrPlainInvalidData},
    {kErrorAccessDenied, kStrAccessDenied, kStrPlainAccessDenied},
    {kErrorInvalidParameter, kStrInvalidParameter, kStrPlainInvalidParameter},
    {kErrorBusy, kStrBusy, kStrPlainBusy},
    {kErrorIoDevice, kStrIoDevice, kStrPlainIoDevice},
    {kErrorNotConnected, kStrNotConnected, kStrPlainFileNotFound},
    {kErrorCancelled, kStrCancelled, kStrPlainCancelled},
    {kErrorConnectionRefused, kStrConnectionRefused, kStrPlainConnectionRefused},
    {kErrorNetworkUnreachable, kStrNetworkUnreachable, kStrPlainUnreachable},
    {kErrorHostUnreachable, kStrHostUnreachable, kStrPlainUnreachable},
    {kErrorLinkLost, kStrLinkLost, kStrPlainLinkLost},
    {kErrorInternal, kStrInternal, kStrPlainInternal},
    {kErrorTimeout, kStrTimeout, kStrPlainTimeout},
    {kErrorHostNotFound, kStrHostNotFound, kStrPlainHostNotFound},
};

const ErrorText* FindErrorText(unsigned code) {
    for (const ErrorText& e : kErrorTexts)
        if (e.code == code) return &e;
    return nullptr;
}

struct ErrnoCode {
    int error;
    unsigned code;
};
constexpr ErrnoCode kErrnoCodes[] = {
    {ENOENT, kErrorFileNotFound},        {EACCES, kErrorAccessDenied},     {EPERM, kErrorAccessDenied},
    {EINVAL, kErrorInvalidParameter},    {EBUSY, kErrorBusy},              {EIO, kErrorIoDevice},
    {ENODEV, kErrorNotConnected},        {ENXIO, kErrorNotConnected},      {ECONNREFUSED, kErrorConnectionRefused},
    {ENETUNREACH, kErrorNetworkUnreachable}, {EHOSTUNREACH, kErrorHostUnreachable},
    {ECONNRESET, kErrorLinkLost},        {EPIPE, kErrorLinkLost},          {ECONNABORTED, kErrorLinkLost},
    {ETIMEDOUT, kErrorTimeout},          {ECANCELED, kErrorCancelled},
};

}  // namespace

unsigned SystemErrorFromErrno(int error) {
    for (const ErrnoCode& e : kErrnoCodes)
        if (e.error == error) return e.code;
    return kErrorFromErrno | static_cast<unsigned>(error);
}

ustring CWinException::SystemMessage(unsigned code) {
    if (const ErrorText* e = FindErrorText(code)) return BaseText(e->technical);
    if (code & kErrorFromErrno) return ustring::FromUtf8(std::strerror(static_cast<int>(code & ~kErrorFromErrno)));
    return BaseText(kStrUnknownError);
}

ustring CWinException::PlainMessage(unsigned code) {
    const ErrorText* e = FindErrorText(code);
    return e ? BaseText(e->plain) : ustring();
}

ustring CCommException::GetPlainMessage() const { return BaseText(kStrPlainCommError); }

}  // namespace basekit
