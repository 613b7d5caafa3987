#include <algorithm>
#include <fstream>
#include <iterator>
#include <mutex>
#include <thread>

#include "platform/basekit/CWinException.h"
#include "platform/devio/IFileUploader.h"

namespace devio {

namespace {

// Small enough that a block's command line costs a slow serial line no more than a reply.
constexpr std::uint64_t kPieceBytes = 2048;
constexpr unsigned kRefused = basekit::kErrorInvalidData;

std::string ReadLocalFile(const ustring& path) {
    std::ifstream in(path.ToUtf8(), std::ios::binary);
    if (!in) throw basekit::CWinException("FileUploader", __LINE__, path, basekit::kErrorFileNotFound);
    std::string bytes{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
    if (in.bad()) throw basekit::CWinException("FileUploader", __LINE__, path, basekit::kErrorIoDevice);
    return bytes;
}

class CFileUploader final : public basekit::CRefCounted<IFileCopier> {
public:
    explicit CFileUploader(CSmartPtr<IFileBlockWriter> target) : m_target(std::move(target)) { m_done.Set(); }
    ~CFileUploader() override { Stop(); }

    void Start(const ustring& localPath, const ustring& receiverPath) override {
        Stop();
        {
            const std::lock_guard lock(m_mutex);
            m_progress = {};
            m_error = 0;
            m_errorText.clear();
        }
        m_cancel.Reset();
        m_done.Reset();
        m_thread = std::thread([this, localPath, receiverPath] { Run(localPath, receiverPath); });
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
    std::string Data() const override { return {}; }

private:
    void Stop() {
        m_cancel.Set();
        if (m_thread.joinable()) m_thread.join();
    }

    void Run(const ustring& localPath, const ustring& path) {
        bool started = false;
        try {
            const std::string bytes = ReadLocalFile(localPath);
            Report(0, bytes.size());
            started = true;
            std::uint64_t done = 0;
            do {   // an empty file still sends its one (empty) block
                const std::uint64_t piece = std::min<std::uint64_t>(kPieceBytes, bytes.size() - done);
                if (m_cancel.IsSet()) throw basekit::CWinException("FileUploader", __LINE__, path, basekit::kErrorCancelled);
                m_target->WriteBlock(path, done, bytes.substr(done, piece), m_cancel);
                done += piece;
                Report(done, bytes.size());
            } while (done < bytes.size());
            m_target->Commit(path, bytes.size(), m_cancel);
        } catch (const basekit::CWinException& e) {
            Fail(e.Code(), e.GetMessage(), started ? path : ustring());
        } catch (const basekit::CStdException& e) {
            Fail(kRefused, e.GetMessage(), started ? path : ustring());
        } catch (const std::exception& e) {
            Fail(kRefused, ustring::FromUtf8(e.what()), started ? path : ustring());
        }
        m_done.Set();
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

    // The staged blocks go, so the receiver keeps the file it had; a discard that fails too
    // (the link is gone) changes nothing, the receiver never shows uncommitted blocks.
    void Fail(unsigned code, const ustring& text, const ustring& staged) {
        if (!staged.empty()) {
            try {
                m_target->Discard(staged);
            } catch (const basekit::CStdException&) {
            }
        }
        const std::lock_guard lock(m_mutex);
        m_error = code;
        m_errorText = text;
    }

    CSmartPtr<IFileBlockWriter> m_target;
    mutable std::mutex m_mutex;
    COPY_PROGRESS m_progress;
    unsigned m_error = 0;
    ustring m_errorText;
    CSmartPtr<INotice> m_notice;
    basekit::CEvent m_cancel{basekit::CEvent::Mode::Manual};
    basekit::CEvent m_done{basekit::CEvent::Mode::Manual};
    std::thread m_thread;
};

}  // namespace

CSmartPtr<IFileCopier> CreateFileUploader(const CSmartPtr<IFileBlockWriter>& target) {
    return CSmartPtr<IFileCopier>(new CFileUploader(target));
}

}  // namespace devio
