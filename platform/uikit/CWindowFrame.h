#pragma once
#include <QEvent>
#include <QtGlobal>
#include <cstdint>
#include <memory>

#include "platform/basekit/CWindowMessage.h"
#include "platform/uikit/CMessageBoxService.h"

namespace uikit {

// What the three window kinds (dialog, property sheet, property page) share: the window handle
// that other threads post messages to, the dispatch of those messages, and the end of the
// window's life.
//
// A window is "created" when its initialisation is about to run and "destroyed" when
// DestroyWindow() runs: OnDestroy() first, while every control and every member of the derived
// classes still exists, then the kit's own clean-up, then the handle is detached so later
// posts are dropped. It runs once per creation. The kit calls DestroyWindow() at the end of a
// modal run; the destructor calls it too if the window was created and not yet destroyed, but
// by then the derived parts are gone and only this level's OnDestroy() runs, so a derived
// class whose window can die without a modal run calls DestroyWindow() in its own destructor.
template <typename QtBase>
class CWindowFrame : public QtBase {
public:
    explicit CWindowFrame(QWidget* parent) : QtBase(parent) {}
    ~CWindowFrame() override {
        if (m_created && !m_destroyed) DestroyWindow();
        m_hwnd->Detach();
    }
    CWindowFrame(const CWindowFrame&) = delete;
    CWindowFrame& operator=(const CWindowFrame&) = delete;

    // Where other threads post window messages (basekit::PostWindowMessage).
    const basekit::HWND& GetSafeHwnd() const { return m_hwnd; }

    // Runs when the window is first shown (dialog, sheet) or first activated (page).
    // The return value is kept for the framework's focus convention; the kit ignores it.
    virtual bool OnInitDialog() { return true; }

    bool IsWindowCreated() const { return m_created && !m_destroyed; }

    void DestroyWindow() {
        if (!m_created || m_destroyed) return;
        m_destroyed = true;   // first, so a hook that re-enters finds the work done
        RunGuarded([this] { OnDestroy(); });
        RunGuarded([this] { OnFrameDestroyed(); });
        m_hwnd->Detach();
    }

protected:
    // Messages posted to GetSafeHwnd(), on the window's thread.
    virtual std::intptr_t OnWindowMessage(unsigned message, std::uintptr_t wParam,
                                          std::intptr_t lParam) {
        Q_UNUSED(message);
        Q_UNUSED(wParam);
        Q_UNUSED(lParam);
        return 0;
    }

    // The window is ending: stop workers and release subscriptions here.
    virtual void OnDestroy() {}

    // The kit's own clean-up after OnDestroy (the sheet finishes its pages here).
    virtual void OnFrameDestroyed() {}

    // Marks the start of a window life; a window destroyed earlier gets a fresh handle, since
    // posts to the old one must stay dropped.
    void CreateWindowLife() {
        if (m_destroyed) m_hwnd = std::make_shared<basekit::CWindowTarget>(this);
        m_created = true;
        m_destroyed = false;
    }

    bool event(QEvent* e) override {
        if (e->type() != basekit::CWindowMessageEvent::EventType()) return QtBase::event(e);
        // A message queued before the window ended is dropped like one posted after.
        if (m_destroyed) return true;
        const auto* m = static_cast<const basekit::CWindowMessageEvent*>(e);
        // Nothing a window's code throws may reach Qt's event loop, which cannot carry it: the
        // user sees it and the window goes on.
        try {
            OnWindowMessage(m->Message(), m->WParam(), m->LParam());
        } catch (...) {
            CMessageBoxService::ReportCurrentError(this);
        }
        return true;
    }

private:
    // The end of a window must run to completion: a throwing hook is logged, not propagated
    // out of a destructor.
    template <typename F>
    static void RunGuarded(F&& f) {
        try {
            f();
        } catch (const std::exception& e) {
            qWarning("uikit: window clean-up failed: %s", e.what());
        } catch (...) {
            qWarning("uikit: window clean-up failed");
        }
    }

    basekit::HWND m_hwnd = std::make_shared<basekit::CWindowTarget>(this);
    bool m_created = false;
    bool m_destroyed = false;
};

}  // namespace uikit
