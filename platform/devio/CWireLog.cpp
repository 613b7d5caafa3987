#include "platform/devio/CWireLog.h"

#include <charconv>
#include <cstdio>

namespace devio {

namespace {

bool IsPlainText(std::string_view bytes) {
    for (const unsigned char c : bytes)
        if ((c < 0x20 && c != '\r' && c != '\n' && c != '\t') || c >= 0x7F) return false;
    return true;
}

// Text entries escape CR, LF, TAB and backslash so that one entry stays one line.
std::string Escape(std::string_view bytes) {
    std::string out;
    out.reserve(bytes.size() + 8);
    for (const char c : bytes) {
        switch (c) {
            case '\r': out += "\\r"; break;
            case '\n': out += "\\n"; break;
            case '\t': out += "\\t"; break;
            case '\\': out += "\\\\"; break;
            default: out += c;
        }
    }
    return out;
}

std::string Unescape(std::string_view text) {
    std::string out;
    for (size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '\\' || i + 1 == text.size()) { out += text[i]; continue; }
        const char n = text[++i];
        out += n == 'r' ? '\r' : n == 'n' ? '\n' : n == 't' ? '\t' : n;
    }
    return out;
}

std::string Hex(std::string_view bytes) {
    static const char* digits = "0123456789abcdef";
    std::string out;
    out.reserve(bytes.size() * 2);
    for (const unsigned char c : bytes) {
        out += digits[c >> 4];
        out += digits[c & 15];
    }
    return out;
}

bool Unhex(std::string_view text, std::string& out) {
    if (text.size() % 2) return false;
    out.clear();
    for (size_t i = 0; i < text.size(); i += 2) {
        unsigned v = 0;
        const auto r = std::from_chars(text.data() + i, text.data() + i + 2, v, 16);
        if (r.ec != std::errc() || r.ptr != text.data() + i + 2) return false;
        out += static_cast<char>(v);
    }
    return true;
}

}  // namespace

void CWireLog::Enable(bool on) {
    const std::lock_guard lock(m_mutex);
    m_enabled = on;
}

bool CWireLog::IsEnabled() const {
    const std::lock_guard lock(m_mutex);
    return m_enabled;
}

void CWireLog::Record(Direction direction, std::string_view bytes) {
    const std::lock_guard lock(m_mutex);
    if (!m_enabled || bytes.empty()) return;
    const double ms = std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - m_start).count();
    Entry entry{direction, ms, std::string(bytes)};
    if (!m_file) {
        m_entries.push_back(std::move(entry));
        return;
    }
    // A long session in the field goes to the file only, not into memory as well.
    const std::string line = FormatEntry(entry) + '\n';
    std::fwrite(line.data(), 1, line.size(), m_file.get());
    std::fflush(m_file.get());
}

bool CWireLog::WriteTo(const std::string& path) {
    const std::lock_guard lock(m_mutex);
    m_file.reset();
    m_filePath.clear();
    if (path.empty()) return true;
    m_file.reset(std::fopen(path.c_str(), "a"));
    if (!m_file) return false;
    m_filePath = path;
    m_enabled = true;
    return true;
}

std::string CWireLog::FilePath() const {
    const std::lock_guard lock(m_mutex);
    return m_filePath;
}

std::vector<CWireLog::Entry> CWireLog::Entries() const {
    const std::lock_guard lock(m_mutex);
    return m_entries;
}

void CWireLog::Clear() {
    const std::lock_guard lock(m_mutex);
    m_entries.clear();
}

std::string CWireLog::FormatEntry(const Entry& entry) {
    char head[48];
    const bool text = IsPlainText(entry.bytes);
    std::snprintf(head, sizeof head, "%.3f %c %c ", entry.ms, entry.direction == Direction::Out ? '>' : '<',
                  text ? 'T' : 'H');
    return head + (text ? Escape(entry.bytes) : Hex(entry.bytes));
}

std::string CWireLog::ToText() const {
    std::string out;
    for (const auto& e : Entries()) out += FormatEntry(e) + '\n';
    return out;
}

std::vector<CWireLog::Entry> CWireLog::Parse(std::string_view text) {
    std::vector<Entry> entries;
    while (!text.empty()) {
        const size_t eol = text.find('\n');
        const std::string_view line = text.substr(0, eol);
        text = eol == std::string_view::npos ? std::string_view() : text.substr(eol + 1);
        Entry e{Direction::In, 0, {}};
        const auto r = std::from_chars(line.data(), line.data() + line.size(), e.ms);
        const size_t at = static_cast<size_t>(r.ptr - line.data());
        if (r.ec != std::errc() || line.size() < at + 5 || line[at] != ' ' || line[at + 2] != ' ' || line[at + 4] != ' ')
            continue;
        const char dir = line[at + 1], kind = line[at + 3];
        if ((dir != '>' && dir != '<') || (kind != 'T' && kind != 'H')) continue;
        e.direction = dir == '>' ? Direction::Out : Direction::In;
        const std::string_view body = line.substr(at + 5);
        if (kind == 'T') e.bytes = Unescape(body);
        else if (!Unhex(body, e.bytes)) continue;
        entries.push_back(std::move(e));
    }
    return entries;
}

}  // namespace devio
