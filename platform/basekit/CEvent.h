#pragma once
#include <cstddef>
#include <initializer_list>
#include <span>

namespace basekit {

constexpr unsigned kInfinite = 0xFFFFFFFFu;

// Outcome of a wait on one or several events.
struct WaitResult {
    enum Kind { Signalled, Timeout, Failed };
    Kind kind = Failed;
    std::size_t index = 0;   // which event fired, when Signalled (lowest index wins)
    int error = 0;           // errno when Failed
};

// An event over eventfd: manual reset stays set until Reset(); auto reset is consumed by the
// one waiter that it releases.
class CEvent {
public:
    enum class Mode { Manual, Auto };
    explicit CEvent(Mode mode = Mode::Auto, bool initiallySet = false);
    ~CEvent();
    CEvent(const CEvent&) = delete;
    CEvent& operator=(const CEvent&) = delete;

    void Set();
    void Reset();
    bool IsSet() const;   // does not consume an auto-reset event
    WaitResult Wait(unsigned timeoutMs) const;
    Mode GetMode() const { return m_mode; }
    int Handle() const { return m_fd; }

    // Waits until any of the events is set or the time-out passes.
    static WaitResult WaitAny(std::span<const CEvent* const> events, unsigned timeoutMs);
    static WaitResult WaitAny(std::initializer_list<const CEvent*> events, unsigned timeoutMs) {
        return WaitAny(std::span<const CEvent* const>(events.begin(), events.size()), timeoutMs);
    }

private:
    bool TryConsume() const;
    int m_fd = -1;
    Mode m_mode;
};

}  // namespace basekit
