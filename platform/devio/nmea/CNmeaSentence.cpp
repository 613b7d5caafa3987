#include "platform/devio/nmea/CNmeaSentence.h"

#include <cstdint>
#include <cstring>

namespace devio {

namespace {

int HexValue(char c)
{
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'A' && c <= 'F')
        return c - 'A' + 10;
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    return -1;
}

// XOR of all bytes, eight at a time: this loop is most of the cost of an ignored sentence.
unsigned XorBytes(std::string_view bytes)
{
    std::uint64_t wide = 0;
    std::size_t i = 0;
    for (; i + 8 <= bytes.size(); i += 8) {
        std::uint64_t word = 0;
        std::memcpy(&word, bytes.data() + i, sizeof word);
        wide ^= word;
    }
    unsigned result = 0;
    for (int shift = 0; shift < 64; shift += 8)
        result ^= static_cast<unsigned>(wide >> shift) & 0xFFu;
    for (; i < bytes.size(); ++i)
        result ^= static_cast<unsigned char>(bytes[i]);
    return result;
}

bool IsUpperLetter(char c) { return c >= 'A' && c <= 'Z'; }

}  // namespace

CNmeaSentence::Status CNmeaSentence::Parse(std::string_view text)
{
    m_fieldCount = 0;
    m_address = m_talker = m_type = m_data = {};
    if (text.empty() || (text[0] != '$' && text[0] != '!'))
        return Status::Malformed;
    // Some chipsets pad the line with NUL bytes before its end.
    while (text.size() > 1 && text.back() == '\0')
        text.remove_suffix(1);
    const std::size_t star = text.rfind('*');
    if (star == std::string_view::npos)
        return Status::NoChecksum;
    if (star + 3 != text.size())
        return Status::Malformed;
    const int high = HexValue(text[star + 1]);
    const int low = HexValue(text[star + 2]);
    if (high < 0 || low < 0)
        return Status::Malformed;
    const std::string_view body = text.substr(1, star - 1);
    if (XorBytes(body) != static_cast<unsigned>(high * 16 + low))
        return Status::BadChecksum;

    const std::size_t comma = body.find(',');
    m_address = body.substr(0, comma);
    m_data = comma == std::string_view::npos ? std::string_view() : body.substr(comma + 1);
    if (!m_address.empty() && m_address[0] == 'P') {
        m_type = m_address;              // proprietary: the maker's code, no talker
        return Status::Ok;
    }
    if (m_address.size() == 5 && IsUpperLetter(m_address[0]) && IsUpperLetter(m_address[1])) {
        m_talker = m_address.substr(0, 2);
        m_type = m_address.substr(2);
        return Status::Ok;
    }
    m_type = m_address;
    return Status::Ok;
}

bool CNmeaSentence::Split()
{
    // One pass over the bytes: fields are short, so a call per field to find the comma
    // costs more than looking at each byte here.
    m_fieldCount = 0;
    const char* const data = m_data.data();
    const std::size_t size = m_data.size();
    std::size_t start = 0;
    for (std::size_t i = 0; i < size; ++i) {
        if (data[i] != ',')
            continue;
        if (m_fieldCount == kMaxFields)
            return false;
        m_fields[m_fieldCount++] = std::string_view(data + start, i - start);
        start = i + 1;
    }
    if (m_fieldCount == kMaxFields)
        return false;
    m_fields[m_fieldCount++] = std::string_view(data + start, size - start);
    return true;
}

}  // namespace devio
