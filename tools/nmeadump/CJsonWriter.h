#pragma once
#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>

// Builds JSON text into one large buffer and writes it out in big blocks: a line costs a few
// appends, not a formatted print and a write. Numbers go through std::to_chars, so the
// output is the same under any locale.
class CJsonWriter {
public:
    explicit CJsonWriter(std::FILE* out);
    ~CJsonWriter();
    CJsonWriter(const CJsonWriter&) = delete;
    CJsonWriter& operator=(const CJsonWriter&) = delete;

    void Raw(std::string_view text) { m_buffer.append(text); }
    void Char(char c) { m_buffer.push_back(c); }
    // ,"name": (the comma left out when first is set)
    void Key(std::string_view name, bool first = false);
    void Int(long long value);
    void Unsigned(unsigned long long value);
    // Fixed decimals; a value that is not finite is written as null (JSON has no NaN).
    void Fixed(double value, int decimals);
    void String(std::string_view text);   // callers pass plain ASCII names
    void Bool(bool value) { Raw(value ? "true" : "false"); }
    // Ends a line, and writes the buffer out once it holds enough.
    void EndLine();
    void Flush();

private:
    std::FILE* m_out;
    std::string m_buffer;
};
