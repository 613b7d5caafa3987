#pragma once
#include <QEvent>
#include <QObject>
#include <cstdint>
#include <memory>
#include <mutex>

namespace basekit {

constexpr unsigned WM_USER = 1024;

// A window message posted across threads: its number and two parameters.
class CWindowMessageEvent : public QEvent {
public:
    static QEvent::Type EventType();
    CWindowMessageEvent(unsigned message, std::uintptr_t wParam, std::intptr_t lParam)
        : QEvent(EventType()), m_message(message), m_wParam(wParam), m_lParam(lParam) {}
    unsigned Message() const { return m_message; }
    std::uintptr_t WParam() const { return m_wParam; }
    std::intptr_t LParam() const { return m_lParam; }

private:
    unsigned m_message;
    std::uintptr_t m_wParam;
    std::intptr_t m_lParam;
};

// Where posted messages go. A window owns one and detaches it before it is destroyed, so a
// message posted from another thread afterwards is dropped instead of reaching a dead object.
class CWindowTarget {
public:
    explicit CWindowTarget(QObject* window) : m_window(window) {}
    void Detach();
    bool Post(unsigned message, std::uintptr_t wParam = 0, std::intptr_t lParam = 0);
    bool IsAttached() const;

private:
    mutable std::mutex m_mutex;
    QObject* m_window;
};

using HWND = std::shared_ptr<CWindowTarget>;

inline bool PostWindowMessage(const HWND& window, unsigned message, std::uintptr_t wParam = 0,
                              std::intptr_t lParam = 0) {
    return window && window->Post(message, wParam, lParam);
}

}  // namespace basekit
