#include <cstdio>
#include <fstream>
#include <mutex>
#include <thread>

#include "platform/basekit/CWinException.h"
#include "platform/devio/IFileCopier.h"

namespace devio {

namespace {

constexpr std::uint64_t kPieceBytes = 32 * 1024;
constexpr unsigned kRefused = basekit::kErrorInvalidData;   // the receiver answered with an error reply

class CFileCopier final : public basekit::CRefCounted<IFileCopier> {
public:
    explicit CFileCopier(CSmartPtr<IFileBlockReader> source) : m_source(std::move(source)) { m_done.Set(); }
    ~CFileCopier() override { Stop(); }

    void Start(const ustring& receiverPath, const ustring& localPath) override {
        Stop();
        {
            const std::lock_guard lock(m_mutex);
            m_progress = {};
            m_error = 0;
            m_errorText.clear();
            m_data.clear();
        }
        m_cancel.Reset();
        m_done.Reset();
        m_thread = std::thread([this, receiverPath, localPath] { Run(receiverPath, localPath); });
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
    std::string Data() const override {
        const std::lock_guard lock(m_mutex);
        return m_data;
    }

private:
    void Stop() {
        m_cancel.Set();
        if (m_thread.joinable()) m_thread.join();
    }

    void Run(const ustring& path, const ustring& localPath) {
        try {
            const std::uint64_t total = m_source->FileSize(path, m_cancel);
            {
                const std::lock_guard lock(m_mutex);
                m_progress.total = total;
            }
            std::string bytes;
            bytes.reserve(total);
            while (bytes.size() < total) {
                const std::uint64_t piece = std::min(kPieceBytes, total - bytes.size());
                const std::string got = m_source->ReadBlock(path, bytes.size(), piece, m_cancel);
                if (got.empty()) break;   // the file shrank while being read
                bytes += got;
                Report(bytes.size());
            }
            Finish(bytes, localPath);
        } catch (const basekit::CWinException& e) {
            Fail(e.Code(), e.GetMessage());
        } catch (const basekit::CStdException& e) {
            Fail(kRefused, e.GetMessage());
        } catch (const std::exception& e) {
            Fail(kRefused, ustring::FromUtf8(e.what()));
        }
        m_done.Set();
    }

    void Report(std::uint64_t done) {
        CSmartPtr<INotice> notice;
        {
            const std::lock_guard lock(m_mutex);
            m_progress.done = done;
            notice = m_notice;
        }
        if (notice) notice->Signal();
    }

    void Finish(std::string& bytes, const ustring& localPath) {
        if (!localPath.empty()) {
            const std::string target = localPath.ToUtf8();
            const std::string partial = target + ".part";
            {
                std::ofstream out(partial, std::ios::binary | std::ios::trunc);
                out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
                if (!out) throw basekit::CWinException("FileCopier", __LINE__, localPath, basekit::kErrorIoDevice);
            }
            if (std::rename(partial.c_str(), target.c_str()) != 0)
                throw basekit::CWinException("FileCopier", __LINE__, localPath, basekit::SystemErrorFromErrno(errno));
            return;
        }
        const std::lock_guard lock(m_mutex);
        m_data = std::move(bytes);
    }

    void Fail(unsigned code, const ustring& text) {
        const std::lock_guard lock(m_mutex);
        m_error = code;
        m_errorText = text;
    }

    CSmartPtr<IFileBlockReader> m_source;
    mutable std::mutex m_mutex;
    COPY_PROGRESS m_progress;
    unsigned m_error = 0;
    ustring m_errorText;
    std::string m_data;
    CSmartPtr<INotice> m_notice;
    basekit::CEvent m_cancel{basekit::CEvent::Mode::Manual};
    basekit::CEvent m_done{basekit::CEvent::Mode::Manual};
    std::thread m_thread;
};

}  // namespace

CSmartPtr<IFileCopier> IFileCopier::CreateInstance(const CSmartPtr<IFileBlockReader>& source) {
    return CSmartPtr<IFileCopier>(new CFileCopier(source));
}

}  // namespace devio
