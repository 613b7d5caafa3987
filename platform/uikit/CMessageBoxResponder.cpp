#include "platform/uikit/CMessageBoxResponder.h"

#include "platform/uikit/CMessageBoxService.h"

namespace uikit {

CMessageBoxResponder::CMessageBoxResponder(MessageBoxResponder answer) : m_answer(std::move(answer)) {
    // Installed only once every member exists: another thread may show a box at once.
    m_previous = CMessageBoxService::SetResponder(
        [this](const MessageBoxRequest& request) { return Answer(request); });
}

CMessageBoxResponder::~CMessageBoxResponder() { CMessageBoxService::SetResponder(std::move(m_previous)); }

std::vector<MessageBoxRequest> CMessageBoxResponder::Requests() const {
    const std::lock_guard lock(m_mutex);
    return m_requests;
}

int CMessageBoxResponder::Answer(const MessageBoxRequest& request) {
    {
        const std::lock_guard lock(m_mutex);
        m_requests.push_back(request);
    }
    return m_answer ? m_answer(request) : NegativeAnswer(request.flags);
}

int CMessageBoxResponder::NegativeAnswer(unsigned flags) {
    switch (flags & MB_TYPEMASK) {
        case MB_OK: return IDOK;
        case MB_YESNO: return IDNO;
        default: return IDCANCEL;
    }
}

}  // namespace uikit
