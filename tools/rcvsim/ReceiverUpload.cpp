// Files written to the receiver in blocks. The blocks of a file are staged apart from the file
// store and move in under the file's name only when the host's size check agrees, so a host
// that gives up (or loses the link) half way leaves no half file behind.
#include <cstdlib>

#include "tools/rcvsim/Receiver.h"

namespace rcvsim {
namespace {

bool WritableFilePath(std::string_view path) {
    std::string_view name;
    for (const std::string_view dir : {"/log/", "/com/a/script/", "/com/a/profile/"})
        if (CommandLine::StartsWith(path, dir)) name = path.substr(dir.size());
    if (name.empty() || name.size() > 64) return false;
    for (const char c : name)
        if (c == '/' || c == '"' || c == ',' || c == '&' || c == ':' || c < 0x21 || c > 0x7e) return false;
    return true;
}

bool ParseCount(std::string_view text, unsigned long long& out) {
    const std::string s = CommandLine::Trim(text);
    if (s.empty() || s.find_first_not_of("0123456789") != std::string::npos || s.size() > 12) return false;
    out = std::strtoull(s.c_str(), nullptr, 10);
    return true;
}

int HexDigit(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

bool DecodeHex(std::string_view hex, std::string& out) {
    if (hex.size() % 2 != 0) return false;
    out.resize(hex.size() / 2);
    for (std::size_t i = 0; i < out.size(); ++i) {
        const int hi = HexDigit(hex[2 * i]), lo = HexDigit(hex[2 * i + 1]);
        if (hi < 0 || lo < 0) return false;
        out[i] = static_cast<char>(hi * 16 + lo);
    }
    return true;
}

}  // namespace

Reply Receiver::SetFileAttribute(const Target& t, const std::string& value, const Context& ctx) {
    const std::string path = "/" + t.path;
    if (!WritableFilePath(path)) return Reply::WrongFirst();
    if (t.attribute == "upload") return UploadBlock(path, t.option, value);
    if (t.attribute == "commit") return CommitUpload(path, value, ctx);
    if (t.attribute == "discard") {
        if (value != "y") return Reply::WrongSecond();
        uploads_.erase(path);
        return Reply::Success();
    }
    return Reply::WrongFirst();
}

Reply Receiver::UploadBlock(const std::string& path, std::string_view option, const std::string& hex) {
    unsigned long long offset = 0;
    if (!ParseCount(CommandLine::StripBraces(option), offset)) return Reply::WrongFirst();
    const auto staged = uploads_.find(path);
    // Blocks come in order: offset 0 starts the file afresh, any other must follow the last.
    if (offset != 0 && (staged == uploads_.end() || staged->second.size() != offset)) return Reply::WrongFirst();
    std::string bytes;
    if (!DecodeHex(hex, bytes) || offset + bytes.size() > FileStore::kMaxFileBytes) return Reply::WrongSecond();
    if (offset == 0) uploads_[path] = std::move(bytes);
    else staged->second += bytes;
    return Reply::Success();
}

Reply Receiver::CommitUpload(const std::string& path, const std::string& size, const Context& ctx) {
    const auto staged = uploads_.find(path);
    if (staged == uploads_.end()) return Reply::WrongFirst();
    unsigned long long expected = 0;
    const bool whole = ParseCount(size, expected) && expected == staged->second.size();
    std::string bytes = std::move(staged->second);
    uploads_.erase(staged);
    if (!whole) return Reply::WrongSecond();
    if (CommandLine::StartsWith(path, "/log/") && Value("dev/blk/a/removed") == "on") return Reply::Error("no medium");
    files_.Put(path, std::move(bytes), ctx.now);
    RefreshDerived();
    return Reply::Success();
}

}  // namespace rcvsim
