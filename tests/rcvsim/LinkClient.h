#pragma once
#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <optional>
#include <string>

#include "tools/rcvsim/UniqueFd.h"

namespace rcvsim::test {

struct ParsedReply {
    int status = 0;
    std::string payload;
};

// The host side of a link in tests: writes command lines, reads whatever comes, and finds
// replies among NMEA, messages, events and garbage. Every wait is bounded.
class LinkClient {
public:
    using Ms = std::chrono::milliseconds;
    explicit LinkClient(int fd) : fd_(fd) {}

    int Fd() const { return fd_.Get(); }
    bool Send(const std::string& line) {
        const std::string bytes = line + "\r\n";
        return ::write(fd_.Get(), bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size());
    }
    // Reads until `done` holds, the stream ends or `limit` passes; returns `done` at the end.
    template <class Done>
    bool WaitUntil(Done done, Ms limit = Ms(5000)) {
        const auto end = std::chrono::steady_clock::now() + limit;
        for (int i = 0; i < 10000 && !done() && !closed_ && std::chrono::steady_clock::now() < end; ++i) {
            pollfd p{fd_.Get(), POLLIN, 0};
            if (::poll(&p, 1, 20) <= 0) continue;
            char buf[8192];
            const ssize_t n = ::read(fd_.Get(), buf, sizeof buf);
            if (n <= 0) closed_ = true;
            else seen_.append(buf, static_cast<std::size_t>(n));
        }
        return done();
    }
    // The reply frame carrying `tag`, once it has fully arrived.
    std::optional<ParsedReply> WaitReply(const std::string& tag, Ms limit = Ms(5000)) {
        WaitUntil([&] { return FindReply(tag).has_value(); }, limit);
        return FindReply(tag);
    }
    bool WaitFor(const std::string& text) {
        return WaitUntil([&] { return seen_.find(text) != std::string::npos; });
    }
    bool WaitClosed() { return WaitUntil([&] { return closed_; }); }
    bool Saw(const std::string& text) const { return seen_.find(text) != std::string::npos; }
    const std::string& Seen() const { return seen_; }

private:
    std::optional<ParsedReply> FindReply(const std::string& tag) const {
        const std::string head = "@R" + tag + ",";
        for (auto at = seen_.find(head); at != std::string::npos; at = seen_.find(head, at + 1)) {
            const char* p = seen_.c_str() + at + head.size();
            char* end = nullptr;
            const long status = std::strtol(p, &end, 10);
            if (*end != ',') continue;
            const long length = std::strtol(end + 1, &end, 10);
            if (*end != ':') continue;
            const std::size_t start = static_cast<std::size_t>(end + 1 - seen_.c_str());
            if (seen_.size() < start + static_cast<std::size_t>(length) + 7) return std::nullopt;
            if (seen_.compare(start + static_cast<std::size_t>(length), 1, "*") != 0) continue;
            return ParsedReply{static_cast<int>(status), seen_.substr(start, static_cast<std::size_t>(length))};
        }
        return std::nullopt;
    }

    UniqueFd fd_;
    std::string seen_;
    bool closed_ = false;
};

}  // namespace rcvsim::test
