#pragma once
#include "platform/devio/IFileCopier.h"

namespace devio {

// Receiver files read in blocks through the command layer, for the file copier.
class CReceiverFileReader final : public basekit::CRefCounted<IFileBlockReader> {
public:
    explicit CReceiverFileReader(CSmartPtr<IReceiver> receiver) : m_receiver(std::move(receiver)) {}

    std::uint64_t FileSize(const ustring& path, basekit::CEvent& cancel) override;
    std::string ReadBlock(const ustring& path, std::uint64_t offset, std::uint64_t length, basekit::CEvent& cancel) override;

    // A copier of this receiver's files.
    static CSmartPtr<IFileCopier> CreateCopier(const CSmartPtr<IReceiver>& receiver);

private:
    CSmartPtr<IReceiver> m_receiver;
};

}  // namespace devio
