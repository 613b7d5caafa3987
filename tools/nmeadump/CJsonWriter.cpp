#include "tools/nmeadump/CJsonWriter.h"

#include <charconv>
#include <cmath>

namespace {

constexpr std::size_t kNumberRoom = 64;   // the longest number to_chars writes here

}  // namespace

CJsonWriter::CJsonWriter(std::FILE* out)
    : m_out(out), m_buffer(std::make_unique<char[]>(kSize)), m_pos(m_buffer.get()), m_end(m_buffer.get() + kSize)
{
}

CJsonWriter::~CJsonWriter() { Flush(); }

void CJsonWriter::Int(long long value)
{
    Reserve(kNumberRoom);
    m_pos = std::to_chars(m_pos, m_end, value).ptr;
}

void CJsonWriter::Unsigned(unsigned long long value)
{
    Reserve(kNumberRoom);
    m_pos = std::to_chars(m_pos, m_end, value).ptr;
}

void CJsonWriter::Fixed(double value, int decimals)
{
    // Values past 1e15 have no place in these records; they would not fit the room either.
    if (!std::isfinite(value) || std::fabs(value) > 1e15) {
        Raw("null");
        return;
    }
    Reserve(kNumberRoom);
    const auto result = std::to_chars(m_pos, m_end, value, std::chars_format::fixed, decimals);
    if (result.ec != std::errc()) {
        Raw("null");
        return;
    }
    m_pos = result.ptr;
}

void CJsonWriter::EndLine()
{
    Char('\n');
    if (static_cast<std::size_t>(m_pos - m_buffer.get()) >= kWriteAt)
        Flush();
}

void CJsonWriter::Flush()
{
    const std::size_t size = static_cast<std::size_t>(m_pos - m_buffer.get());
    if (size > 0)
        std::fwrite(m_buffer.get(), 1, size, m_out);
    m_pos = m_buffer.get();
}
