#pragma once
#include <cstdint>
#include <string>

#include "platform/basekit/CEvent.h"
#include "platform/devio/IReceiver.h"

namespace devio {

struct COPY_PROGRESS {
    std::uint64_t done = 0;
    std::uint64_t total = 0;   // 0 until the file's size is known
};

// Where a copy's bytes come from: the command layer reads a receiver file in blocks. Each call
// gives up with basekit::CWinException 1223 once cancel is set; a refusal of the receiver is
// basekit::CCommException.
struct IFileBlockReader : basekit::IRefCounted {
    virtual std::uint64_t FileSize(const ustring& path, basekit::CEvent& cancel) = 0;
    virtual std::string ReadBlock(const ustring& path, std::uint64_t offset, std::uint64_t length, basekit::CEvent& cancel) = 0;

protected:
    ~IFileBlockReader() = default;
};

// Copies one receiver file into memory or into a local file, on a thread of its own, in pieces
// so that a large file shows progress and can be cancelled between pieces. A local file is
// written piece by piece into "<target>.part" and takes the target's name only when whole; a
// cancel or a failure removes the part, so memory holds one piece whatever the file's size.
struct IFileCopier : basekit::IRefCounted {
    static CSmartPtr<IFileCopier> CreateInstance(const CSmartPtr<IFileBlockReader>& source);

    // Starts a copy; a copy still running is cancelled first. An empty local path keeps the
    // bytes in memory (Data()).
    virtual void Start(const ustring& receiverPath, const ustring& localPath) = 0;
    // Signalled after every piece.
    virtual void SetProgressNotice(const CSmartPtr<INotice>& notice) = 0;
    virtual void Cancel() = 0;
    // Set (manual reset) when the copy has ended, whether it worked, failed or was cancelled.
    virtual const basekit::CEvent& DoneEvent() const = 0;
    virtual COPY_PROGRESS Progress() const = 0;
    // 0 when the copy worked; otherwise a system code (1223 cancelled, 1460 time-out, 1236 link
    // lost, an errno for the local file) or 13 when the receiver refused.
    virtual unsigned Error() const = 0;
    virtual ustring ErrorText() const = 0;
    virtual std::string Data() const = 0;

protected:
    ~IFileCopier() = default;
};

}  // namespace devio
