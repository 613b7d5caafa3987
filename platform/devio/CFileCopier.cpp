#include <cerrno>
#include <cstdio>
#include <fstream>

#include "platform/basekit/CWinException.h"
#include "platform/devio/CCopyJob.h"

namespace devio {

namespace {

constexpr std::uint64_t kPieceBytes = 32 * 1024;

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

class CFileCopier final : public CCopyJob {
public:
    explicit CFileCopier(CSmartPtr<IFileBlockReader> source) : m_source(std::move(source)) {}
    ~CFileCopier() override { Stop(); }

    std::string Data() const override {
        const std::lock_guard lock(m_mutex);
        return m_data;
    }

private:
    void Transfer(const ustring& path, const ustring& localPath) override {
        {
            const std::lock_guard lock(m_mutex);
            m_data.clear();
        }
        const std::uint64_t total = m_source->FileSize(path, m_cancel);
        Report(0, total);
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
            Report(done, total);
        }
    }

    CSmartPtr<IFileBlockReader> m_source;
    std::string m_data;   // under m_mutex
};

}  // namespace

CSmartPtr<IFileCopier> IFileCopier::CreateInstance(const CSmartPtr<IFileBlockReader>& source) {
    return CSmartPtr<IFileCopier>(new CFileCopier(source));
}

}  // namespace devio
