#pragma once
#include <chrono>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

namespace devio {

// What crossed a link, kept so that a failure in the field can be replayed in a test.
// One line per chunk: "<ms since start> <'>' written | '<' read> <T|H> <text or hex>".
class CWireLog {
public:
    enum class Direction { Out, In };
    struct Entry {
        Direction direction;
        double ms;
        std::string bytes;
    };

    void Enable(bool on);
    bool IsEnabled() const;
    void Record(Direction direction, std::string_view bytes);
    std::vector<Entry> Entries() const;
    std::string ToText() const;
    void Clear();

    // Parses the text form back into entries (for replay); malformed lines are skipped.
    static std::vector<Entry> Parse(std::string_view text);
    static std::string FormatEntry(const Entry& entry);

private:
    mutable std::mutex m_mutex;
    bool m_enabled = false;
    std::chrono::steady_clock::time_point m_start = std::chrono::steady_clock::now();
    std::vector<Entry> m_entries;
};

}  // namespace devio
