#include <cerrno>
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

// "<target>.part" beside the target, written block by block and renamed to the target only by
// Commit(); destroyed without it (cancel, failure) it removes itself, so no half file remains
// under either name and a target that existed before is left as it was.
class CPartFile {
public:
    explicit CPartFile(const ustring& target)
        : m_name(target), m_target(target.ToUtf8()), m_partial(m_target + ".part"),
          m_out(m_partial, std::ios::binary | std::ios::trunc) {
        if (!m_out) throw basekit::CWinException("FileCopier", __LINE__, m_name, basekit::SystemErrorFromErrno(errno));
    }
    CPartFile(const CPartFile&) = delete;
    CPartFile& operator=(const CPartFile&) = delete;
    ~CPartFile() {
        if (m_committed) return;
        m_out.close();
        std::remove(m_partial.c_str());
    }

    void Write(const std::string& block) {
        m_out.write(block.data(), static_cast<std::streamsize>(block.size()));
        if (!m_out) throw basekit::CWinException("FileCopier", __LINE__, m_name, basekit::kErrorIoDevice);
    }
    void Commit() {
        m_out.close();
        if (!m_out) throw basekit::CWinException("FileCopier", __LINE__, m_name, basekit::kErrorIoDevice);
        if (std::rename(m_partial.c_str(), m_target.c_str()) != 0)
            throw basekit::CWinException("FileCopier", __LINE__, m_name, basekit::SystemErrorFromErrno(errno));
        m_committed = true;
    }

private:
    ustring m_name;
    std::string m_target, m_partial;
    std::ofstream m_out;
    bool m_committed = false;
};

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
            if (localPath.empty()) {
                std::string bytes;
                bytes.reserve(total);
                Copy(path, total, [&](const std::string& block) { bytes += block; });
                const std::lock_guard lock(m_mutex);
                m_data = std::move(bytes);
            } else {
                CPartFile part(localPath);
                Copy(path, total, [&](const std::string& block) { part.Write(block); });
                part.Commit();
            }
        } catch (const basekit::CWinException& e) {
            Fail(e.Code(), e.GetMessage());
        } catch (const basekit::CStdException& e) {
            Fail(kRefused, e.GetMessage());
        } catch (const std::exception& e) {
            Fail(kRefused, ustring::FromUtf8(e.what()));
        }
        m_done.Set();
    }

    // Hands each block on as it arrives, so that only one block is ever held.
    template <class Sink>
    void Copy(const ustring& path, std::uint64_t total, Sink&& sink) {
        std::uint64_t done = 0;
        while (done < total) {
            if (m_cancel.IsSet()) throw basekit::CWinException("FileCopier", __LINE__, path, basekit::kErrorCancelled);
            const std::uint64_t piece = std::min(kPieceBytes, total - done);
            const std::string got = m_source->ReadBlock(path, done, piece, m_cancel);
            if (got.empty()) break;   // the file shrank while being read
            sink(got);
            done += got.size();
            Report(done);
        }
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
