#pragma once
#include <mutex>

namespace basekit {

// Recursive, like the lock of the platform it stands in for: a window's handlers may re-enter.
class CCriticalSection {
public:
    void Lock() { m_mutex.lock(); }
    void Unlock() { m_mutex.unlock(); }
    bool TryLock() { return m_mutex.try_lock(); }

private:
    std::recursive_mutex m_mutex;
};

}  // namespace basekit
