#include "platform/devio/nmea/CDataLinkDecoder.h"

#include <array>
#include <charconv>

#include "platform/devio/nmea/NmeaFields.h"

namespace devio {

namespace {

constexpr std::string_view kPorts = "ABCDEFGHILU";
constexpr std::string_view kFormats = "CJRT";

bool ParseU32(std::string_view field, std::uint32_t& value)
{
    unsigned parsed = 0;
    if (!ParseUnsigned(field, parsed))
        return false;
    value = parsed;
    return true;
}

bool ParseLetter(std::string_view field, std::string_view allowed, char& letter)
{
    if (field.size() != 1 || allowed.find(field[0]) == std::string_view::npos)
        return false;
    letter = field[0];
    return true;
}

// "<digits>.<digit>" as the receiver writes the age.
bool ParseAge(std::string_view field, float& age)
{
    const std::size_t dot = field.find('.');
    if (dot == std::string_view::npos || dot == 0 || dot + 2 != field.size())
        return false;
    double value = 0;
    if (!ParseDecimal(field, value) || field[0] == '-' || field[0] == '+')
        return false;
    age = static_cast<float>(value);
    return true;
}

bool ParseLink(std::string_view text, DATALINK_RECORD& link)
{
    std::array<std::string_view, 7> fields;
    for (std::size_t i = 0; i < fields.size(); ++i) {
        const std::size_t comma = text.find(',');
        const bool last = i + 1 == fields.size();
        if (last != (comma == std::string_view::npos))
            return false;
        fields[i] = text.substr(0, comma);
        text.remove_prefix(last ? text.size() : comma + 1);
    }
    return ParseLetter(fields[0], kPorts, link.port) && ParseLetter(fields[1], kFormats, link.format)
        && ParseU32(fields[2], link.stationId) && ParseAge(fields[3], link.age)
        && ParseU32(fields[4], link.received) && ParseU32(fields[5], link.errors)
        && ParseU32(fields[6], link.rate);
}

}  // namespace

CDataLinkDecoder::CDataLinkDecoder(IDataLinkSink& sink) : m_sink(sink) {}

bool CDataLinkDecoder::Parse(std::string_view payload, std::vector<DATALINK_RECORD>& links)
{
    links.clear();
    // The payload is one line; a line end some firmware may append is not part of it.
    while (!payload.empty() && (payload.back() == '\n' || payload.back() == '\r'))
        payload.remove_suffix(1);
    const std::size_t semicolon = payload.find(';');
    unsigned count = 0;
    if (!ParseUnsigned(payload.substr(0, semicolon), count) || count > kMaxLinks)
        return false;
    std::string_view rest = semicolon == std::string_view::npos ? std::string_view() : payload.substr(semicolon + 1);
    if ((count == 0) != (semicolon == std::string_view::npos))
        return false;
    for (unsigned i = 0; i < count; ++i) {
        const std::size_t end = rest.find(';');
        const bool last = i + 1 == count;
        if (last != (end == std::string_view::npos))
            return false;
        DATALINK_RECORD link;
        if (!ParseLink(rest.substr(0, end), link))
            return false;
        links.push_back(link);
        rest.remove_prefix(last ? rest.size() : end + 1);
    }
    return true;
}

bool CDataLinkDecoder::Decode(std::string_view payload)
{
    if (!Parse(payload, m_links)) {
        ++m_malformed;
        return false;
    }
    ++m_decoded;
    for (const DATALINK_RECORD& link : m_links)
        m_sink.OnDataLink(link);
    return true;
}

}  // namespace devio
