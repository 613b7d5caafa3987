#pragma once
#include "platform/devio/IFileUploader.h"

namespace devio {

// Receiver files written in blocks through the command layer, for uploads.
class CReceiverFileWriter final : public basekit::CRefCounted<IFileBlockWriter> {
public:
    explicit CReceiverFileWriter(CSmartPtr<IReceiver> receiver) : m_receiver(std::move(receiver)) {}

    void WriteBlock(const ustring& path, std::uint64_t offset, const std::string& bytes, basekit::CEvent& cancel) override;
    void Commit(const ustring& path, std::uint64_t size, basekit::CEvent& cancel) override;
    void Discard(const ustring& path) override;

    // An uploader to this receiver: Start(localPath, receiverPath).
    static CSmartPtr<IFileCopier> CreateUploader(const CSmartPtr<IReceiver>& receiver);

private:
    CSmartPtr<IReceiver> m_receiver;
};

}  // namespace devio
