#pragma once
#include "platform/basekit/CSmartPtr.h"
#include "platform/devio/IReceiver.h"
#include "platform/devio/ymodem/IByteStream.h"

namespace devio {

// The link under an open receiver, borrowed for a transfer while the receiver object stays
// open: what arrives is taken from a raw tap, what goes out is written raw. The receiver's
// reader still sees the bytes; a boot loader's few control bytes are mere noise to it.
class CReceiverByteStream final : public IByteStream {
public:
    // Throws basekit::CWinException (1359) when the receiver has no link to tap.
    explicit CReceiverByteStream(CSmartPtr<IReceiver> receiver);
    ~CReceiverByteStream() override;
    CReceiverByteStream(const CReceiverByteStream&) = delete;
    CReceiverByteStream& operator=(const CReceiverByteStream&) = delete;

    LinkStatus Read(char* buffer, std::size_t capacity, std::size_t& got, unsigned timeoutMs,
                    const basekit::CEvent* abort) override;
    LinkStatus Write(std::string_view bytes, unsigned timeoutMs) override;
    // Forgets what arrived and was not read yet.
    void Discard();

private:
    class CTap;
    CSmartPtr<IReceiver> m_receiver;
    CSmartPtr<CTap> m_tap;
};

}  // namespace devio
