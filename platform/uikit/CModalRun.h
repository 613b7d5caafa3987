#pragma once
#include <QDialog>
#include <functional>
#include <optional>

#include "platform/basekit/ustring.h"

namespace uikit {

// One modal run of a dialog or sheet: its placement kept under its name, and a result that may
// be given before the window is shown (EndDialog from initialisation), when it is never shown.
class CModalRun {
public:
    explicit CModalRun(basekit::ustring windowName) : m_windowName(std::move(windowName)) {}

    // Runs initialise, then the modal loop unless initialise already ended the run.
    int Run(QDialog& window, const std::function<void()>& initialise);
    void End(QDialog& window, int result);
    // Keeps the placement while the window still has its final geometry, before it is hidden.
    void KeepPlacement(const QDialog& window) const;

    bool IsRunning() const { return m_running; }
    bool EndedEarly() const { return m_earlyResult.has_value(); }
    const basekit::ustring& WindowName() const { return m_windowName; }

private:
    basekit::ustring m_windowName;
    std::optional<int> m_earlyResult;
    bool m_running = false;
};

}  // namespace uikit
