#pragma once

namespace uikit {

// Shows the wait cursor for its lifetime. Guards nest: the cursor comes back when the last one
// ends. Without a GUI application it does nothing.
class CBusyCursor {
public:
    CBusyCursor();
    ~CBusyCursor();
    CBusyCursor(const CBusyCursor&) = delete;
    CBusyCursor& operator=(const CBusyCursor&) = delete;

private:
    bool m_active;
};

}  // namespace uikit
