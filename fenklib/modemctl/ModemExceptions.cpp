#include "fenklib/modemctl/ModemExceptions.h"

#include "fenklib/resources/FenkResources.h"
#include "fenklib/resources/StringIds.h"

namespace devio {

namespace {

ustring Text(unsigned id) {
    ustring s;
    s.load(FenkResources(), id);
    return s;
}

ustring Joined(const std::vector<ustring>& items) {
    ustring out;
    for (const auto& i : items) out += (out.empty() ? L"" : L", ") + i;
    return out;
}

ustring NotFoundText(const ustring& port, unsigned rate, const std::vector<ustring>& tried) {
    return ustring::Format(Text(IDS_MODEM_NOT_FOUND).c_str(), port, rate, Joined(tried));
}

ustring WriteFailedText(const ustring& failed, const ustring& cause, const std::vector<ustring>& written) {
    ustring text = ustring::Format(Text(IDS_MODEM_WRITE_FAILED).c_str(), failed, cause);
    text += L"\n";
    text += written.empty() ? Text(IDS_MODEM_NOTHING_WRITTEN) : ustring::Format(Text(IDS_MODEM_WRITTEN).c_str(), Joined(written));
    return text;
}

}  // namespace

CModemNotFoundException::CModemNotFoundException(const char* source, int line, ustring port, unsigned rate,
                                                 std::vector<ustring> tried)
    : CStdException(NotFoundText(port, rate, tried), source, line), m_port(std::move(port)), m_rate(rate),
      m_tried(std::move(tried)) {}

CModemWriteException::CModemWriteException(const char* source, int line, ustring failed, ustring cause,
                                           std::vector<ustring> written, ustring failedKey, std::vector<ustring> writtenKeys)
    : CStdException(WriteFailedText(failed, cause, written), source, line), m_failed(std::move(failed)),
      m_cause(std::move(cause)), m_written(std::move(written)), m_failedKey(std::move(failedKey)),
      m_writtenKeys(std::move(writtenKeys)) {}

}  // namespace devio
