#pragma once
#include <array>
#include <cstddef>
#include <string_view>

namespace devio {

// One sentence's checksum check and its fields, as views into the caller's text. Splitting
// is a separate step so that types nobody decodes cost only the checksum.
class CNmeaSentence {
public:
    enum class Status { Ok, NoChecksum, BadChecksum, Malformed };
    static constexpr std::size_t kMaxFields = 40;

    // text: from '$' or '!' up to, not including, the line end.
    Status Parse(std::string_view text);
    // Splits the data fields; false when there are more than kMaxFields.
    bool Split();

    std::string_view Address() const { return m_address; }   // "GPGSV"
    std::string_view Talker() const { return m_talker; }     // "GP"; empty for 'P' sentences
    std::string_view Type() const { return m_type; }         // "GSV"
    std::size_t FieldCount() const { return m_fieldCount; }
    // Data field i (0 is the one after the address); empty past the last.
    std::string_view Field(std::size_t i) const
    {
        return i < m_fieldCount ? m_fields[i] : std::string_view();
    }

private:
    std::string_view m_data;              // fields after the address, without "*hh"
    std::string_view m_address;
    std::string_view m_talker;
    std::string_view m_type;
    std::array<std::string_view, kMaxFields> m_fields{};
    std::size_t m_fieldCount = 0;
};

}  // namespace devio
