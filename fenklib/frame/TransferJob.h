#pragma once
#include <chrono>
#include <cstdint>
#include <string>

#include "fenklib/frame/CJobContext.h"
#include "platform/devio/IFileCopier.h"

// The files a window's job copies to or from the receiver, the way every copy, upload and
// download of the library runs: the copier works in pieces on its own thread and each piece
// wakes the job (nothing polls); the job's progress is the bytes of all its files so far, with
// the mean rate and the receiver file in hand. The window's Cancel (CancelJob, or closing it)
// stops the copy between pieces: a cancelled download leaves no local file, a cancelled upload
// leaves the receiver's file as it was, and the job ends as stopped. A failure throws with the
// file's name and the copier's text.
class CTransfer {
public:
    // total: the bytes of every file the job copies; 0 while unknown (each file's own size).
    explicit CTransfer(CJobContext& job, std::uint64_t total = 0);

    // localPath empty: the bytes come back in memory; else they go into that file.
    std::string Download(const basekit::ustring& receiverPath, const basekit::ustring& localPath = {});
    // A failure names the local file unless named says otherwise.
    void Upload(const basekit::ustring& localPath, const basekit::ustring& receiverPath, const basekit::ustring& named = {});
    std::uint64_t BytesDone() const { return m_before; }

private:
    std::string Run(devio::IFileCopier& copier, const basekit::ustring& source, const basekit::ustring& target,
                    const basekit::ustring& receiverPath, const basekit::ustring& named);
    void Report(const devio::IFileCopier& copier, const basekit::ustring& receiverPath) const;

    CJobContext& m_job;
    std::uint64_t m_total;
    std::uint64_t m_before = 0;   // bytes of the files already copied
    std::chrono::steady_clock::time_point m_started = std::chrono::steady_clock::now();
};
