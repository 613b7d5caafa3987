#pragma once
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace rcvsim {

// One command line from the host: "%<tag>%<command>", a bare "<command>" (empty tag), or
// the abort of the reply to a tagged command, CAN (0x18) followed by the tag.
struct HostLine {
    std::string tag;
    std::string command;
    bool tagged = false;
    bool abort = false;   // "\x18<tag>": stop the reply to that command now
};

// Cuts the host's byte stream into command lines. A line ends at CR or LF; lines with
// control or non-ASCII bytes, a malformed tag or more than kMaxLine bytes are garbage and
// are dropped, as the receiver drops whatever it cannot parse.
class HostLineReader {
public:
    static constexpr std::size_t kMaxLine = 65536;

    std::vector<HostLine> Feed(std::string_view bytes);
    std::size_t Dropped() const { return dropped_; }
    static std::optional<HostLine> Parse(std::string_view line);

private:
    std::string pending_;
    bool overlong_ = false;
    std::size_t dropped_ = 0;
};

}  // namespace rcvsim
