#include "platform/uikit/CFileDialogResponder.h"

#include "platform/uikit/CFileDialogService.h"

namespace uikit {

CFileDialogResponder::CFileDialogResponder(FileDialogResponder answer) : m_answer(std::move(answer)) {
    m_previous = CFileDialogService::SetResponder([this](const FileDialogRequest& request) {
        m_requests.push_back(request);
        return m_answer ? m_answer(request) : basekit::ustring();
    });
}

CFileDialogResponder::~CFileDialogResponder() { CFileDialogService::SetResponder(std::move(m_previous)); }

}  // namespace uikit
