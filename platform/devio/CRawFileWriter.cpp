#include "platform/devio/CRawFileWriter.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

#include "platform/basekit/CWinException.h"

namespace devio {

CRawFileWriter::CRawFileWriter(const basekit::ustring& path) {
    m_fd = ::open(path.ToUtf8().c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0644);
    if (m_fd < 0) throw basekit::CWinException("RawFileWriter", __LINE__, path, basekit::SystemErrorFromErrno(errno));
    m_writer = std::thread([this] { WriterLoop(); });
}

CRawFileWriter::~CRawFileWriter() { Stop(); }

void CRawFileWriter::OnRawBytes(std::string_view bytes) {
    {
        const std::lock_guard lock(m_mutex);
        if (m_stopping || m_state.error != 0 || m_backlog.size() + bytes.size() > kMaxBacklog) {
            m_state.dropped += bytes.size();
            return;
        }
        m_backlog.append(bytes);
    }
    m_wake.notify_one();
}

void CRawFileWriter::Stop() {
    {
        const std::lock_guard lock(m_mutex);
        m_stopping = true;
    }
    m_wake.notify_one();
    if (m_writer.joinable()) m_writer.join();
    if (m_fd >= 0) ::close(m_fd);
    m_fd = -1;
}

RAW_LOG_STATE CRawFileWriter::State() const {
    const std::lock_guard lock(m_mutex);
    return m_state;
}

void CRawFileWriter::WriterLoop() {
    std::string bytes;
    for (;;) {
        {
            std::unique_lock lock(m_mutex);
            m_wake.wait(lock, [this] { return m_stopping || !m_backlog.empty(); });
            if (m_backlog.empty()) return;   // stopping, and everything is out
            bytes.swap(m_backlog);
        }
        WriteOut(bytes);
        bytes.clear();
    }
}

void CRawFileWriter::WriteOut(const std::string& bytes) {
    std::string_view rest(bytes);
    while (!rest.empty()) {
        const ssize_t n = ::write(m_fd, rest.data(), rest.size());
        if (n < 0 && errno == EINTR) continue;
        const std::lock_guard lock(m_mutex);
        if (n <= 0) {
            // A full disk or a removed medium: what cannot be written is lost, and so is all after it.
            m_state.error = n < 0 ? errno : ENOSPC;
            m_state.dropped += rest.size() + m_backlog.size();
            m_backlog.clear();
            return;
        }
        m_state.written += static_cast<std::uint64_t>(n);
        rest.remove_prefix(static_cast<size_t>(n));
    }
}

}  // namespace devio
