#pragma once
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <memory>
#include <string_view>

// Builds JSON text into one large buffer and writes it out in big blocks: a line costs a few
// copies into the buffer, not a formatted print and a write. Numbers go through
// std::to_chars, so the output is the same under any locale.
class CJsonWriter {
public:
    explicit CJsonWriter(std::FILE* out);
    ~CJsonWriter();
    CJsonWriter(const CJsonWriter&) = delete;
    CJsonWriter& operator=(const CJsonWriter&) = delete;

    void Raw(std::string_view text)
    {
        Reserve(text.size());
        std::memcpy(m_pos, text.data(), text.size());
        m_pos += text.size();
    }
    void Char(char c)
    {
        Reserve(1);
        *m_pos++ = c;
    }
    // ,"name": (the comma left out when first is set). Inline, so that the names' lengths
    // are known where they are copied.
    void Key(std::string_view name, bool first = false)
    {
        Reserve(name.size() + 4);
        if (!first)
            *m_pos++ = ',';
        *m_pos++ = '"';
        std::memcpy(m_pos, name.data(), name.size());
        m_pos += name.size();
        *m_pos++ = '"';
        *m_pos++ = ':';
    }
    void Int(long long value);
    void Unsigned(unsigned long long value);
    // Fixed decimals; a value that is not finite is written as null (JSON has no NaN).
    void Fixed(double value, int decimals);
    void String(std::string_view text)    // callers pass plain ASCII names
    {
        Reserve(text.size() + 2);
        *m_pos++ = '"';
        std::memcpy(m_pos, text.data(), text.size());
        m_pos += text.size();
        *m_pos++ = '"';
    }
    void Bool(bool value) { Raw(value ? std::string_view("true") : std::string_view("false")); }
    // Ends a line, and writes the buffer out once it holds enough.
    void EndLine();
    void Flush();

private:
    static constexpr std::size_t kSize = 512 * 1024;
    static constexpr std::size_t kWriteAt = 256 * 1024;

    // Room for n more bytes; a piece larger than the buffer is never asked for.
    void Reserve(std::size_t n)
    {
        if (static_cast<std::size_t>(m_end - m_pos) < n)
            Flush();
    }

    std::FILE* m_out;
    std::unique_ptr<char[]> m_buffer;
    char* m_pos;
    char* m_end;
};
