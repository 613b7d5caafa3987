#pragma once
#include <memory>
#include <mutex>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "tools/rcvsim/Receiver.h"
#include "tools/rcvsim/Session.h"

namespace rcvsim {

// The live connections of one receiver: hands each its share of the receiver's output and
// forgets the ones that have ended.
class SessionHub {
public:
    void Add(std::shared_ptr<Session> session);
    void Dispatch(const std::vector<Output>& outputs);
    void Reap();
    void DropAll(int afterMs);
    void Clear();
    std::size_t Count() const;
    // First of `candidates` that no live connection uses; empty when all are taken.
    std::string FreePort(std::span<const std::string_view> candidates) const;
    std::vector<std::shared_ptr<Session>> Sessions() const;

private:
    mutable std::mutex mutex_;
    std::vector<std::shared_ptr<Session>> sessions_;
};

}  // namespace rcvsim
