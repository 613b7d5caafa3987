#pragma once

// How long the host waits before each attempt to bring a lost link back: 1 s, then doubling up
// to 30 s, and back to 1 s once a link works again.
class CBackoff {
public:
    static constexpr int kFirstSeconds = 1;
    static constexpr int kLongestSeconds = 30;

    int Next() {
        const int wait = m_next;
        m_next = m_next * 2 > kLongestSeconds ? kLongestSeconds : m_next * 2;
        return wait;
    }
    void Reset() { m_next = kFirstSeconds; }

private:
    int m_next = kFirstSeconds;
};
