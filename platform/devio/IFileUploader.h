#pragma once
#include "platform/devio/IFileCopier.h"

namespace devio {

// Where an upload's bytes go: the command layer writes a receiver file in blocks that the
// receiver keeps aside until Commit's size check moves them under the file's name. Calls give
// up with basekit::CWinException 1223 once cancel is set; a refusal is basekit::CCommException.
struct IFileBlockWriter : basekit::IRefCounted {
    virtual void WriteBlock(const ustring& path, std::uint64_t offset, const std::string& bytes, basekit::CEvent& cancel) = 0;
    virtual void Commit(const ustring& path, std::uint64_t size, basekit::CEvent& cancel) = 0;
    // Drops the blocks of an upload that will not be committed; it must go out even after a
    // cancel, so it takes no cancel event.
    virtual void Discard(const ustring& path) = 0;

protected:
    ~IFileBlockWriter() = default;
};

// A copier that goes the other way: Start(localPath, receiverPath) sends a local file to the
// receiver in pieces, with the same progress, cancel, done event and error codes as a
// download. A cancelled or failed upload is discarded, so the receiver keeps the file it had.
CSmartPtr<IFileCopier> CreateFileUploader(const CSmartPtr<IFileBlockWriter>& target);

}  // namespace devio
