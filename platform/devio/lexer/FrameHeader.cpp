#include "platform/devio/lexer/FrameHeader.h"

#include <algorithm>
#include <charconv>

namespace devio {

namespace {

bool IsDigit(char c) { return c >= '0' && c <= '9'; }
bool IsAlnum(char c) { return IsDigit(c) || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }

bool IsValidId(char kind, std::string_view id)
{
    switch (kind) {
    case 'R':
    case 'C':
        return id.size() <= 9 && std::all_of(id.begin(), id.end(), IsDigit);
    case 'M':
        return !id.empty() && id.size() <= 16 && std::all_of(id.begin(), id.end(), IsAlnum);
    case 'E':
        return !id.empty() && id.size() <= 9 && std::all_of(id.begin(), id.end(), IsDigit);
    default:
        return false;
    }
}

// A whole-field decimal: no sign (except a leading '-' when allowed), no spaces, no empty text.
template <typename T>
bool ParseDecimal(std::string_view text, T& value, bool allowMinus)
{
    if (text.empty() || (text[0] == '-' && !allowMinus) || text[0] == '+')
        return false;
    const std::string_view digits = text[0] == '-' ? text.substr(1) : text;
    if (digits.empty() || !std::all_of(digits.begin(), digits.end(), IsDigit))
        return false;
    const auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(), value);
    return ec == std::errc() && end == text.data() + text.size();
}

}  // namespace

bool ParseFrameHeader(std::string_view text, FRAME_HEADER& header)
{
    if (text.empty())
        return false;
    const char kind = text[0];
    const std::size_t comma1 = text.find(',');
    if (comma1 == std::string_view::npos)
        return false;
    const std::size_t comma2 = text.find(',', comma1 + 1);
    if (comma2 == std::string_view::npos)
        return false;
    const std::string_view id = text.substr(1, comma1 - 1);
    if (!IsValidId(kind, id))
        return false;
    std::int32_t status = 0;
    if (!ParseDecimal(text.substr(comma1 + 1, comma2 - comma1 - 1), status, true))
        return false;
    if (kind != 'R' && status != 0)
        return false;
    std::size_t length = 0;
    const std::string_view lengthText = text.substr(comma2 + 1);
    if (lengthText.size() > 8 || !ParseDecimal(lengthText, length, false) || length > kMaxFramePayload)
        return false;
    header = FRAME_HEADER{kind, id, status, length};
    return true;
}

}  // namespace devio
