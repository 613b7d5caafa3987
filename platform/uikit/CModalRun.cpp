#include "platform/uikit/CModalRun.h"

#include "platform/uikit/CScreenFit.h"
#include "platform/uikit/CWindowPlacement.h"

namespace uikit {

int CModalRun::Run(QDialog& window, const std::function<void()>& initialise) {
    m_earlyResult.reset();
    initialise();
    if (m_earlyResult) return *m_earlyResult;
    CWindowPlacement::Restore(window, m_windowName);
    // A placement kept on a larger screen, or a layout larger than this screen, is brought back.
    CScreenFit::Apply(window);
    m_running = true;
    const int result = window.exec();
    m_running = false;
    return result;
}

void CModalRun::End(QDialog& window, int result) {
    if (m_running) {
        window.done(result);
        return;
    }
    m_earlyResult = result;
}

void CModalRun::KeepPlacement(const QDialog& window) const {
    if (window.isVisible()) CWindowPlacement::Save(window, m_windowName);
}

}  // namespace uikit
