#pragma once
#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <string>
#include <thread>

#include "platform/basekit/ustring.h"
#include "platform/devio/IRawTap.h"

namespace devio {

// How a raw log stands: bytes on disk, bytes lost, and the system error that stopped writing.
struct RAW_LOG_STATE {
    std::uint64_t written = 0;   // bytes in the file since it was opened by this writer
    std::uint64_t dropped = 0;   // bytes that did not fit the backlog or came after a failure
    int error = 0;               // errno of the write or open that failed, 0 while all is well
};

// Writes what a receiver's link receives into a local file. The reader thread only appends to
// a backlog under a short lock; the writer's own thread empties it to the file. A disk slower
// than the line loses the bytes beyond the backlog (counted) instead of stalling the reader.
class CRawFileWriter final : public basekit::CRefCounted<IRawTap> {
public:
    static constexpr std::size_t kMaxBacklog = 8 * 1024 * 1024;

    // Creates the file or appends to it; throws basekit::CWinException when it cannot be opened.
    explicit CRawFileWriter(const basekit::ustring& path);
    ~CRawFileWriter() override;

    void OnRawBytes(std::string_view bytes) override;
    // Writes what is waiting and closes the file; later bytes are not written. Idempotent.
    void Stop();
    RAW_LOG_STATE State() const;

private:
    void WriterLoop();
    void WriteOut(const std::string& bytes);

    int m_fd = -1;
    mutable std::mutex m_mutex;
    std::condition_variable m_wake;
    std::string m_backlog;
    bool m_stopping = false;
    RAW_LOG_STATE m_state;
    std::thread m_writer;
};

}  // namespace devio
