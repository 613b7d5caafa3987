#include "fenklib/receiver/CReceiverFileWriter.h"

#include "fenklib/receiver/CVokReceiverMate.h"

namespace devio {

// A mate per call, bound to the uploader's cancel event, so a cancel ends the wait at once.
void CReceiverFileWriter::WriteBlock(const ustring& path, std::uint64_t offset, const std::string& bytes, basekit::CEvent& cancel) {
    CVokReceiverMate mate(m_receiver, &cancel);
    mate.WriteFileBlock(path, offset, bytes);
}

void CReceiverFileWriter::Commit(const ustring& path, std::uint64_t size, basekit::CEvent& cancel) {
    CVokReceiverMate mate(m_receiver, &cancel);
    mate.CommitFileUpload(path, size);
}

void CReceiverFileWriter::Discard(const ustring& path) {
    CVokReceiverMate mate(m_receiver);
    mate.DiscardFileUpload(path);
}

CSmartPtr<IFileCopier> CReceiverFileWriter::CreateUploader(const CSmartPtr<IReceiver>& receiver) {
    return CreateFileUploader(CSmartPtr<IFileBlockWriter>(new CReceiverFileWriter(receiver)));
}

}  // namespace devio
