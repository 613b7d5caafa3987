#include "platform/basekit/CWindowMessage.h"

#include <QCoreApplication>

namespace basekit {

QEvent::Type CWindowMessageEvent::EventType() {
    static const auto type = static_cast<QEvent::Type>(QEvent::registerEventType());
    return type;
}

void CWindowTarget::Detach() {
    const std::lock_guard lock(m_mutex);
    m_window = nullptr;
}

bool CWindowTarget::IsAttached() const {
    const std::lock_guard lock(m_mutex);
    return m_window != nullptr;
}

bool CWindowTarget::Post(unsigned message, std::uintptr_t wParam, std::intptr_t lParam) {
    const std::lock_guard lock(m_mutex);
    if (!m_window) return false;
    QCoreApplication::postEvent(m_window, new CWindowMessageEvent(message, wParam, lParam));
    return true;
}

}  // namespace basekit
