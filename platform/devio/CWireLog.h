#pragma once
#include <chrono>
#include <cstdio>
#include <memory>
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
    // Writes every entry, as it is recorded, to this file instead of memory (appending, flushed per entry),
    // so a field problem can be sent as it happened; logging is enabled too. False when the
    // file cannot be opened. An empty path stops writing to the file.
    bool WriteTo(const std::string& path);
    std::string FilePath() const;
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
    std::string m_filePath;
    std::unique_ptr<std::FILE, int (*)(std::FILE*)> m_file{nullptr, &std::fclose};
};

}  // namespace devio
