#pragma once
#include <cstddef>
#include <string_view>

#include "platform/basekit/CEvent.h"
#include "platform/devio/LinkStatus.h"

namespace devio {

// The bytes of a link as a file transfer sees them, below any command framing.
struct IByteStream {
    virtual ~IByteStream() = default;
    // Waits up to timeoutMs for bytes and returns what is there (Success with got > 0),
    // Timeout, Closed, IoError, or Cancelled once `abort` is set.
    virtual LinkStatus Read(char* buffer, std::size_t capacity, std::size_t& got, unsigned timeoutMs,
                            const basekit::CEvent* abort) = 0;
    // Writes everything within timeoutMs.
    virtual LinkStatus Write(std::string_view bytes, unsigned timeoutMs) = 0;
};

}  // namespace devio
