#pragma once
#include "platform/basekit/CCriticalSection.h"

namespace basekit {

class CLocker {
public:
    explicit CLocker(CCriticalSection& cs) : m_cs(cs) { m_cs.Lock(); }
    ~CLocker() { m_cs.Unlock(); }
    CLocker(const CLocker&) = delete;
    CLocker& operator=(const CLocker&) = delete;

private:
    CCriticalSection& m_cs;
};

}  // namespace basekit
