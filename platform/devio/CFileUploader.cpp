#include <algorithm>
#include <fstream>
#include <iterator>

#include "platform/basekit/CWinException.h"
#include "platform/devio/CCopyJob.h"
#include "platform/devio/IFileUploader.h"

namespace devio {

namespace {

// Small enough that a block's command line costs a slow serial line no more than a reply.
constexpr std::uint64_t kPieceBytes = 2048;

std::string ReadLocalFile(const ustring& path) {
    std::ifstream in(path.ToUtf8(), std::ios::binary);
    if (!in) throw basekit::CWinException("FileUploader", __LINE__, path, basekit::kErrorFileNotFound);
    std::string bytes{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
    if (in.bad()) throw basekit::CWinException("FileUploader", __LINE__, path, basekit::kErrorIoDevice);
    return bytes;
}

class CFileUploader final : public CCopyJob {
public:
    explicit CFileUploader(CSmartPtr<IFileBlockWriter> target) : m_target(std::move(target)) {}
    ~CFileUploader() override { Stop(); }

    std::string Data() const override { return {}; }

private:
    void Transfer(const ustring& localPath, const ustring& path) override {
        const std::string bytes = ReadLocalFile(localPath);
        Report(0, bytes.size());
        try {
            std::uint64_t done = 0;
            do {   // an empty file still sends its one (empty) block
                const std::uint64_t piece = std::min<std::uint64_t>(kPieceBytes, bytes.size() - done);
                if (m_cancel.IsSet()) throw basekit::CWinException("FileUploader", __LINE__, path, basekit::kErrorCancelled);
                m_target->WriteBlock(path, done, bytes.substr(done, piece), m_cancel);
                done += piece;
                Report(done, bytes.size());
            } while (done < bytes.size());
            m_target->Commit(path, bytes.size(), m_cancel);
        } catch (...) {
            Discard(path);
            throw;
        }
    }

    // The staged blocks go, so the receiver keeps the file it had; a discard that fails too
    // (the link is gone) changes nothing, the receiver never shows uncommitted blocks.
    void Discard(const ustring& staged) noexcept {
        try {
            m_target->Discard(staged);
        } catch (const basekit::CStdException&) {
        }
    }

    CSmartPtr<IFileBlockWriter> m_target;
};

}  // namespace

CSmartPtr<IFileCopier> CreateFileUploader(const CSmartPtr<IFileBlockWriter>& target) {
    return CSmartPtr<IFileCopier>(new CFileUploader(target));
}

}  // namespace devio
