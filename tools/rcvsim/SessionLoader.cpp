// The boot loader's hooks in a connection: while the receiver is in its loader, what the host
// sends goes to YMODEM instead of the command reader.
#include "tools/rcvsim/LoaderLink.h"
#include "tools/rcvsim/Session.h"

namespace rcvsim {

void Session::LoaderInput(std::string_view bytes, Clock::time_point now) {
    if (!loader_) loader_ = std::make_unique<LoaderLink>(receiver_, isSocket_);
    Post(loader_->Feed(bytes, now), false);
    if (loader_->WantsDrop()) Drop(50);
}

void Session::LoaderTick(Clock::time_point now) {
    if (!receiver_.InLoader()) {
        loader_.reset();
        return;
    }
    if (!loader_) loader_ = std::make_unique<LoaderLink>(receiver_, isSocket_);
    const std::string request = loader_->Tick(now);
    if (!request.empty()) Post(request, false);
}

int Session::LoaderWaitMs(Clock::time_point now) const { return loader_ ? loader_->MsUntilTick(now) : 1 << 30; }

}  // namespace rcvsim
