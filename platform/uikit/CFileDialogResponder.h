#pragma once
#include <vector>

#include "platform/uikit/FileDialogTypes.h"

namespace uikit {

// Answers the file dialogs shown during its lifetime and records them; the previous
// responder comes back when it ends.
class CFileDialogResponder {
public:
    explicit CFileDialogResponder(FileDialogResponder answer);
    ~CFileDialogResponder();
    CFileDialogResponder(const CFileDialogResponder&) = delete;
    CFileDialogResponder& operator=(const CFileDialogResponder&) = delete;

    const std::vector<FileDialogRequest>& Requests() const { return m_requests; }

private:
    FileDialogResponder m_answer;
    FileDialogResponder m_previous;
    std::vector<FileDialogRequest> m_requests;
};

}  // namespace uikit
