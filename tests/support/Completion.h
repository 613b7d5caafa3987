#pragma once
// A command's completion as a caller of the command channel waits for it.
#include "platform/devio/CCommandReply.h"
#include "platform/devio/INotice.h"

namespace fenktest {

struct Completion {
    devio::COverlapped overlapped;
    basekit::CSmartPtr<devio::CCommandReply> reply{new devio::CCommandReply()};
    basekit::CSmartPtr<devio::INotice> notice = devio::INotice::CreateInstance(overlapped);
    bool Wait(unsigned ms) { return overlapped.Event().Wait(ms).kind == basekit::WaitResult::Signalled; }
};

}  // namespace fenktest
