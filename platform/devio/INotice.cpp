#include "platform/devio/INotice.h"

namespace devio {

namespace {

class CWindowNotice final : public basekit::CRefCounted<INotice> {
public:
    CWindowNotice(basekit::HWND window, unsigned message, std::intptr_t lParam)
        : m_window(std::move(window)), m_message(message), m_lParam(lParam) {}
    void Signal() override { basekit::PostWindowMessage(m_window, m_message, 0, m_lParam); }

private:
    basekit::HWND m_window;
    unsigned m_message;
    std::intptr_t m_lParam;
};

class CEventNotice final : public basekit::CRefCounted<INotice> {
public:
    explicit CEventNotice(std::shared_ptr<basekit::CEvent> event) : m_event(std::move(event)) {}
    void Signal() override { m_event->Set(); }

private:
    std::shared_ptr<basekit::CEvent> m_event;   // shared: the notice may outlive the record
};

}  // namespace

CSmartPtr<INotice> INotice::CreateInstance(const basekit::HWND& window, unsigned message, std::intptr_t lParam) {
    return CSmartPtr<INotice>(new CWindowNotice(window, message, lParam));
}

CSmartPtr<INotice> INotice::CreateInstance(const COverlapped& overlapped) {
    return CSmartPtr<INotice>(new CEventNotice(overlapped.SharedEvent()));
}

}  // namespace devio
