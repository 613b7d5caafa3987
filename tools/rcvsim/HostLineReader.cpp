#include "tools/rcvsim/HostLineReader.h"

namespace rcvsim {

namespace {
constexpr char kAbort = '\x18';

bool IsTag(std::string_view tag) {
    if (tag.empty() || tag.size() > 9) return false;
    for (const char c : tag)
        if (c < '0' || c > '9') return false;
    return true;
}
}  // namespace

std::optional<HostLine> HostLineReader::Parse(std::string_view line) {
    if (!line.empty() && line.front() == kAbort) {
        const auto tag = line.substr(1);
        if (!IsTag(tag)) return std::nullopt;
        return HostLine{std::string(tag), {}, true, true};
    }
    // Names and texts travel as UTF-8; only control characters make a line garbage.
    for (const unsigned char c : line)
        if (c < 0x20 || c == 0x7f) return std::nullopt;
    HostLine out;
    if (!line.empty() && line.front() == '%') {
        const auto close = line.find('%', 1);
        if (close == std::string_view::npos) return std::nullopt;
        const auto tag = line.substr(1, close - 1);
        if (!IsTag(tag)) return std::nullopt;
        out.tag = std::string(tag);
        out.tagged = true;
        line.remove_prefix(close + 1);
    }
    const auto first = line.find_first_not_of(' ');
    if (first == std::string_view::npos) return std::nullopt;
    out.command = std::string(line.substr(first));
    return out;
}

std::vector<HostLine> HostLineReader::Feed(std::string_view bytes) {
    std::vector<HostLine> lines;
    for (const char c : bytes) {
        if (c != '\r' && c != '\n') {
            if (pending_.size() >= kMaxLine) {
                overlong_ = true;
                pending_.clear();
            }
            pending_.push_back(c);
            continue;
        }
        if (overlong_ || !pending_.empty()) {
            auto parsed = overlong_ ? std::nullopt : Parse(pending_);
            if (parsed)
                lines.push_back(std::move(*parsed));
            else
                ++dropped_;
        }
        pending_.clear();
        overlong_ = false;
    }
    return lines;
}

}  // namespace rcvsim
