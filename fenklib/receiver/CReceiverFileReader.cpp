#include "fenklib/receiver/CReceiverFileReader.h"

#include "fenklib/receiver/CVokReceiverMate.h"

namespace devio {

// A mate per call: each is bound to the copier's cancel event, so a cancel ends the wait at once.
std::uint64_t CReceiverFileReader::FileSize(const ustring& path, basekit::CEvent& cancel) {
    CVokReceiverMate mate(m_receiver, &cancel);
    return mate.GetFileSize(path);
}

std::string CReceiverFileReader::ReadBlock(const ustring& path, std::uint64_t offset, std::uint64_t length, basekit::CEvent& cancel) {
    CVokReceiverMate mate(m_receiver, &cancel);
    return mate.ReadFileBlock(path, offset, length);
}

CSmartPtr<IFileCopier> CReceiverFileReader::CreateCopier(const CSmartPtr<IReceiver>& receiver) {
    return IFileCopier::CreateInstance(CSmartPtr<IFileBlockReader>(new CReceiverFileReader(receiver)));
}

}  // namespace devio
