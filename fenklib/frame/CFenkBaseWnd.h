#pragma once
#include <type_traits>

#include "platform/basekit/CCriticalSection.h"
#include "platform/basekit/CEvent.h"
#include "platform/basekit/CLocker.h"
#include "platform/basekit/CStdException.h"
#include "platform/basekit/CThread.h"
#include "platform/basekit/CWinException.h"
#include "platform/devio/IReceiver.h"
#include "platform/uikit/CBusyCursor.h"
#include "platform/uikit/CMessageBoxService.h"
#include "platform/uikit/CResizablePropertyPage.h"
#include "platform/uikit/CResizablePropertySheet.h"

// Window messages of the receiver windows.
enum FenkWindowMessage : unsigned {
    WM_FENK_NOTIFY = basekit::WM_USER + 2,            // 1026: a window's own notice (rows waiting ...)
    WM_FENK_RECEIVER_EVENT7 = basekit::WM_USER + 3,   // 1027: receiver event 7
    WM_FENK_RECEIVER_EVENT8 = basekit::WM_USER + 4,   // 1028: receiver event 8
};

// What every receiver window adds to its resizable base: it holds the open receiver, turns
// receiver events 7 and 8 into window messages for its lifetime, and owns one worker thread
// with a stop event for slow receiver work.
template <typename Base>
class CFenkBaseWnd : public Base {
public:
    template <typename... BaseArgs>
    explicit CFenkBaseWnd(basekit::CSmartPtr<devio::IReceiver> receiver, BaseArgs&&... baseArgs)
        : Base(std::forward<BaseArgs>(baseArgs)...), m_receiver(std::move(receiver)) {}

    virtual void OnReceiverNotice(std::uintptr_t, std::intptr_t) {}
    virtual void OnReceiverError(std::uintptr_t, std::intptr_t) {}

    virtual void StartWorker() {
        try {
            StopWorker();
            m_stopEvent.Reset();
            m_worker.Start([this] { return WorkerProc(); });
        } catch (const basekit::CStdException& e) {
            uikit::CMessageBoxService::ReportError(this, e);
            EndWindow(2);
        }
    }

    // Blocks until the worker has returned; WorkerProc must watch the stop event.
    virtual void StopWorker() {
        try {
            const uikit::CBusyCursor busy;
            m_stopEvent.Set();
            m_worker.Close();
        } catch (const basekit::CStdException& e) {
            uikit::CMessageBoxService::ReportError(this, e);
            EndWindow(2);
        }
    }

    virtual unsigned WorkerProc() { return 0; }

    bool OnInitDialog() override {
        Base::OnInitDialog();
        this->update();
        try {
            m_notice7 = devio::INotice::CreateInstance(this->GetSafeHwnd(), WM_FENK_RECEIVER_EVENT7, devio::kEventStateChanged);
            m_notice8 = devio::INotice::CreateInstance(this->GetSafeHwnd(), WM_FENK_RECEIVER_EVENT8, devio::kEventPending);
            if (!m_receiver)
                throw basekit::CWinException("FenkBaseWnd", __LINE__, L"devio::IReceiver", basekit::kErrorInternal);
            m_receiver->Subscribe(m_notice7, devio::kEventStateChanged);
            m_receiver->Subscribe(m_notice8, devio::kEventPending);
        } catch (const basekit::CStdException& e) {
            uikit::CMessageBoxService::ReportError(this, e);
            EndWindow(3);
        }
        return true;
    }

    const basekit::CSmartPtr<devio::IReceiver>& GetReceiver() const { return m_receiver; }
    bool IsWorkerRunning() const { return m_worker.IsRunning(); }

protected:
    std::intptr_t OnWindowMessage(unsigned message, std::uintptr_t wParam, std::intptr_t lParam) override {
        if (message == WM_FENK_RECEIVER_EVENT7) {
            try {
                OnReceiverNotice(wParam, lParam);
            } catch (const basekit::CStdException&) {
                OnReceiverError(wParam, lParam);
            }
            return 0;
        }
        if (message == WM_FENK_RECEIVER_EVENT8) {
            if (m_receiver) m_receiver->DeliverEvents(0, 0);
            return 0;
        }
        return Base::OnWindowMessage(message, wParam, lParam);
    }

    // The worker is stopped before the notices go, and both before the base's own clean-up.
    void OnDestroy() override {
        StopWorker();
        if (m_receiver) {
            if (m_notice7) m_receiver->Unsubscribe(m_notice7);
            if (m_notice8) m_receiver->Unsubscribe(m_notice8);
        }
        Base::OnDestroy();
    }

    // A dialog or sheet ends itself; a page ends the sheet it is on.
    void EndWindow(int result) {
        if constexpr (std::is_base_of_v<uikit::CResizablePropertyPage, Base>) {
            if (this->GetSheet()) this->GetSheet()->EndDialog(result);
        } else {
            this->EndDialog(result);
        }
    }

    basekit::CCriticalSection m_lock;
    basekit::CSmartPtr<devio::IReceiver> m_receiver;
    basekit::CEvent m_stopEvent{basekit::CEvent::Mode::Manual};
    basekit::CThread m_worker;
    basekit::CStdException::CExInfo m_error;
    basekit::CSmartPtr<devio::INotice> m_notice7;
    basekit::CSmartPtr<devio::INotice> m_notice8;
};
