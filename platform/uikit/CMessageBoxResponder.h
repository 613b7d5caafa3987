#pragma once
#include <mutex>
#include <vector>

#include "platform/uikit/MessageBoxTypes.h"

namespace uikit {

// Answers the message boxes shown during its lifetime and records them; the previous
// responder (or the real boxes) comes back when it ends. Without an answer function every
// box gets its "negative" answer (IDOK for MB_OK, IDNO for MB_YESNO, else IDCANCEL).
class CMessageBoxResponder {
public:
    explicit CMessageBoxResponder(MessageBoxResponder answer = {});
    ~CMessageBoxResponder();
    CMessageBoxResponder(const CMessageBoxResponder&) = delete;
    CMessageBoxResponder& operator=(const CMessageBoxResponder&) = delete;

    std::vector<MessageBoxRequest> Requests() const;

    static int NegativeAnswer(unsigned flags);

private:
    int Answer(const MessageBoxRequest& request);

    MessageBoxResponder m_answer;
    MessageBoxResponder m_previous;
    mutable std::mutex m_mutex;
    std::vector<MessageBoxRequest> m_requests;
};

}  // namespace uikit
