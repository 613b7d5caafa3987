#include "tools/rcvsim/SessionHub.h"

#include <algorithm>

namespace rcvsim {

void SessionHub::Add(std::shared_ptr<Session> session) {
    const std::lock_guard lock(mutex_);
    sessions_.push_back(std::move(session));
}

void SessionHub::Dispatch(const std::vector<Output>& outputs) {
    const auto live = Sessions();
    for (const auto& o : outputs)
        for (const auto& s : live)
            if (o.port.empty() || o.port == s->Port()) s->Post(o.bytes, true);
}

void SessionHub::Reap() {
    std::vector<std::shared_ptr<Session>> ended;
    {
        const std::lock_guard lock(mutex_);
        for (auto it = sessions_.begin(); it != sessions_.end();) {
            if ((*it)->Finished()) {
                ended.push_back(std::move(*it));
                it = sessions_.erase(it);
            } else {
                ++it;
            }
        }
    }
    // `ended` joins their threads here, outside the lock.
}

void SessionHub::DropAll(int afterMs) {
    for (const auto& s : Sessions()) s->Drop(afterMs);
}

void SessionHub::Clear() {
    std::vector<std::shared_ptr<Session>> all;
    {
        const std::lock_guard lock(mutex_);
        all.swap(sessions_);
    }
}

std::size_t SessionHub::Count() const {
    const std::lock_guard lock(mutex_);
    return static_cast<std::size_t>(std::count_if(sessions_.begin(), sessions_.end(),
                                                  [](const auto& s) { return !s->Finished(); }));
}

std::string SessionHub::FreePort(std::span<const std::string_view> candidates) const {
    const std::lock_guard lock(mutex_);
    for (const auto c : candidates) {
        const bool used = std::any_of(sessions_.begin(), sessions_.end(), [&](const auto& s) {
            return !s->Finished() && s->Port() == c;
        });
        if (!used) return std::string(c);
    }
    return {};
}

std::vector<std::shared_ptr<Session>> SessionHub::Sessions() const {
    const std::lock_guard lock(mutex_);
    return sessions_;
}

}  // namespace rcvsim
