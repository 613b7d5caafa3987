#pragma once
#include <mutex>
#include <thread>

#include "platform/basekit/CWinException.h"
#include "platform/devio/IFileCopier.h"

namespace devio {

// What a download and an upload share: one worker thread per transfer with its progress, its
// error, its notice, cancel and the done event. A transfer supplies Transfer() and throws to
// fail; a derived class calls Stop() in its own destructor, before its members go.
class CCopyJob : public basekit::CRefCounted<IFileCopier> {
public:
    CCopyJob() { m_done.Set(); }

    void Start(const ustring& from, const ustring& to) override {
        Stop();
        {
            const std::lock_guard lock(m_mutex);
            m_progress = {};
            m_error = 0;
            m_errorText.clear();
        }
        m_cancel.Reset();
        m_done.Reset();
        m_thread = std::thread([this, from, to] { Run(from, to); });
    }
    void SetProgressNotice(const CSmartPtr<INotice>& notice) override {
        const std::lock_guard lock(m_mutex);
        m_notice = notice;
    }
    void Cancel() override { m_cancel.Set(); }
    const basekit::CEvent& DoneEvent() const override { return m_done; }
    COPY_PROGRESS Progress() const override {
        const std::lock_guard lock(m_mutex);
        return m_progress;
    }
    unsigned Error() const override {
        const std::lock_guard lock(m_mutex);
        return m_error;
    }
    ustring ErrorText() const override {
        const std::lock_guard lock(m_mutex);
        return m_errorText;
    }

protected:
    static constexpr unsigned kRefused = basekit::kErrorInvalidData;   // the receiver answered with an error reply

    virtual void Transfer(const ustring& from, const ustring& to) = 0;

    void Stop() {
        m_cancel.Set();
        if (m_thread.joinable()) m_thread.join();
    }
    void Report(std::uint64_t done, std::uint64_t total) {
        CSmartPtr<INotice> notice;
        {
            const std::lock_guard lock(m_mutex);
            m_progress = {done, total};
            notice = m_notice;
        }
        if (notice) notice->Signal();
    }

    mutable std::mutex m_mutex;   // also guards what a derived class hands out (a download's bytes)
    basekit::CEvent m_cancel{basekit::CEvent::Mode::Manual};

private:
    void Run(const ustring& from, const ustring& to) {
        try {
            Transfer(from, to);
        } catch (const basekit::CWinException& e) {
            Fail(e.Code(), e.GetMessage());
        } catch (const basekit::CStdException& e) {
            Fail(kRefused, e.GetMessage());
        } catch (const std::exception& e) {
            Fail(kRefused, ustring::FromUtf8(e.what()));
        }
        m_done.Set();
    }
    void Fail(unsigned code, const ustring& text) {
        const std::lock_guard lock(m_mutex);
        m_error = code;
        m_errorText = text;
    }

    COPY_PROGRESS m_progress;
    unsigned m_error = 0;
    ustring m_errorText;
    CSmartPtr<INotice> m_notice;
    basekit::CEvent m_done{basekit::CEvent::Mode::Manual};
    std::thread m_thread;
};

}  // namespace devio
