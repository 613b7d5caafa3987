#pragma once
#include <cstdint>
#include <memory>

#include "platform/basekit/CEvent.h"
#include "platform/basekit/CSmartPtr.h"
#include "platform/basekit/CWindowMessage.h"

namespace devio {

using basekit::CSmartPtr;

// A completion record: the event that a completion notice sets.
class COverlapped {
public:
    COverlapped() : m_event(std::make_shared<basekit::CEvent>(basekit::CEvent::Mode::Manual)) {}
    basekit::CEvent& Event() const { return *m_event; }
    const std::shared_ptr<basekit::CEvent>& SharedEvent() const { return m_event; }

private:
    std::shared_ptr<basekit::CEvent> m_event;
};

// Signalled from any thread when something happened: posts a window message, or sets the event
// of a completion record.
struct INotice : basekit::IRefCounted {
    virtual void Signal() = 0;

    static CSmartPtr<INotice> CreateInstance(const basekit::HWND& window, unsigned message, std::intptr_t lParam);
    static CSmartPtr<INotice> CreateInstance(const COverlapped& overlapped);

protected:
    ~INotice() = default;
};

}  // namespace devio
