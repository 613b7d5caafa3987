#pragma once
#include <string_view>

#include "platform/basekit/CSmartPtr.h"

namespace devio {

// Gets the link's bytes exactly as they arrived, before anything decodes them, on the
// receiver's reader thread: it must return at once, the reader waits for nothing.
struct IRawTap : basekit::IRefCounted {
    virtual void OnRawBytes(std::string_view bytes) = 0;

protected:
    ~IRawTap() = default;
};

}  // namespace devio
