#include "platform/devio/CListenerHost.h"

#include <algorithm>

#include "platform/basekit/CWinException.h"

namespace devio {

void CListenerHost::AddListener(const CSmartPtr<IListener>& listener) {
    // Only this library's listeners can be fed; a foreign object is refused, not ignored.
    auto* sink = dynamic_cast<ILiveRecordSink*>(listener.Get());
    if (!sink) throw basekit::CWinException("ListenerHost", __LINE__, L"devio::IListenerHost::AddListener", basekit::kErrorInternal);
    const std::lock_guard lock(m_mutex);
    const bool present = std::any_of(m_listeners.begin(), m_listeners.end(),
                                     [&](const Entry& e) { return e.listener == listener; });
    if (!present) m_listeners.push_back(Entry{listener, sink});
}

void CListenerHost::RemoveListener(const CSmartPtr<IListener>& listener) {
    const std::lock_guard lock(m_mutex);
    std::erase_if(m_listeners, [&](const Entry& e) { return e.listener == listener; });
}

size_t CListenerHost::Count() const {
    const std::lock_guard lock(m_mutex);
    return m_listeners.size();
}

}  // namespace devio
