#pragma once
#include <cstdint>

#include "platform/devio/CCommandReply.h"
#include "platform/devio/INotice.h"

namespace devio {

using CommandId = std::uint64_t;

// The receiver's command channel. Issue returns at once; when the reply arrives (or the link
// fails, or the time-out passes) the reply buffer is filled and the notice signalled.
struct ICommandChannel : basekit::IRefCounted {
    // sendFlag: a reply is expected (false: the command completes once written, with an empty
    // reply; for settings after which the receiver answers at another line rate).
    // sendOption: the reply is binary and is given as Latin-1 text byte for byte.
    virtual CommandId IssueCommand(const basekit::ustring& command, bool sendFlag,
                                   const CSmartPtr<CCommandReply>& reply, const CSmartPtr<INotice>& notice,
                                   unsigned timeoutMs, bool sendOption) = 0;
    // Gives up the command: after this returns, its buffer and notice are not touched again.
    virtual void Cancel(CommandId id) = 0;
    // Characters written to the link without command framing.
    virtual void WriteRaw(const basekit::ustring& text) = 0;

protected:
    ~ICommandChannel() = default;
};

}  // namespace devio
