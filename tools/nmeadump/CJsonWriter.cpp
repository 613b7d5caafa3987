#include "tools/nmeadump/CJsonWriter.h"

#include <array>
#include <charconv>
#include <cmath>

namespace {

constexpr std::size_t kWriteAt = 256 * 1024;

}  // namespace

CJsonWriter::CJsonWriter(std::FILE* out) : m_out(out) { m_buffer.reserve(kWriteAt + 4096); }

CJsonWriter::~CJsonWriter() { Flush(); }

void CJsonWriter::Key(std::string_view name, bool first)
{
    if (!first)
        m_buffer.push_back(',');
    m_buffer.push_back('"');
    m_buffer.append(name);
    m_buffer.append("\":", 2);
}

void CJsonWriter::Int(long long value)
{
    std::array<char, 24> text{};
    m_buffer.append(text.data(), std::to_chars(text.data(), text.data() + text.size(), value).ptr);
}

void CJsonWriter::Unsigned(unsigned long long value)
{
    std::array<char, 24> text{};
    m_buffer.append(text.data(), std::to_chars(text.data(), text.data() + text.size(), value).ptr);
}

void CJsonWriter::Fixed(double value, int decimals)
{
    if (!std::isfinite(value)) {
        m_buffer.append("null", 4);
        return;
    }
    std::array<char, 64> text{};
    const auto result = std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::fixed, decimals);
    if (result.ec != std::errc()) {
        m_buffer.append("null", 4);
        return;
    }
    m_buffer.append(text.data(), result.ptr);
}

void CJsonWriter::String(std::string_view text)
{
    m_buffer.push_back('"');
    m_buffer.append(text);
    m_buffer.push_back('"');
}

void CJsonWriter::EndLine()
{
    m_buffer.push_back('\n');
    if (m_buffer.size() >= kWriteAt)
        Flush();
}

void CJsonWriter::Flush()
{
    if (!m_buffer.empty())
        std::fwrite(m_buffer.data(), 1, m_buffer.size(), m_out);
    m_buffer.clear();
}
