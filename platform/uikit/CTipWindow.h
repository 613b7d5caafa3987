#pragma once
#include <memory>

#include "platform/basekit/ustring.h"

class QLabel;
class QWidget;

namespace uikit {

// A small frameless note shown for its lifetime while a long operation blocks the window,
// e.g. "Saving Receiver Settings": centred over owner (or the screen), painted at once.
class CTipWindow {
public:
    CTipWindow(QWidget* owner, const basekit::ustring& text);
    ~CTipWindow();
    CTipWindow(const CTipWindow&) = delete;
    CTipWindow& operator=(const CTipWindow&) = delete;

    const QLabel* GetLabel() const { return m_label.get(); }

private:
    std::unique_ptr<QLabel> m_label;   // a top-level window of its own, so no Qt parent
};

}  // namespace uikit
