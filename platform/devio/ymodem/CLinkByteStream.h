#pragma once
#include "platform/devio/CLink.h"
#include "platform/devio/ymodem/IByteStream.h"

namespace devio {

// A link that nothing else reads: a serial line or socket given over to one transfer.
class CLinkByteStream final : public IByteStream {
public:
    explicit CLinkByteStream(CLink& link) : m_link(link) {}
    LinkStatus Read(char* buffer, std::size_t capacity, std::size_t& got, unsigned timeoutMs,
                    const basekit::CEvent* abort) override;
    LinkStatus Write(std::string_view bytes, unsigned timeoutMs) override { return m_link.Write(bytes, timeoutMs); }

private:
    CLink& m_link;
};

}  // namespace devio
