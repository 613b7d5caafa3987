#include "platform/devio/ymodem/YmodemBlock.h"

#include <array>
#include <charconv>

namespace devio::ymodem {
namespace {

constexpr std::array<std::uint16_t, 256> MakeCrcTable() {
    std::array<std::uint16_t, 256> table{};
    for (unsigned i = 0; i < 256; ++i) {
        std::uint16_t crc = static_cast<std::uint16_t>(i << 8);
        for (int bit = 0; bit < 8; ++bit)
            crc = static_cast<std::uint16_t>((crc & 0x8000) ? (crc << 1) ^ 0x1021 : crc << 1);
        table[i] = crc;
    }
    return table;
}
constexpr auto kCrcTable = MakeCrcTable();

}  // namespace

std::uint16_t Crc16(std::string_view bytes, std::uint16_t crc) {
    for (const char c : bytes)
        crc = static_cast<std::uint16_t>((crc << 8) ^ kCrcTable[((crc >> 8) ^ static_cast<unsigned char>(c)) & 0xff]);
    return crc;
}

std::string EncodeBlock(std::uint8_t number, std::string_view data, char pad) {
    const std::size_t size = data.size() <= kShortBlock ? kShortBlock : kLongBlock;
    std::string out;
    out.reserve(size + kFraming);
    out.push_back(size == kShortBlock ? kSoh : kStx);
    out.push_back(static_cast<char>(number));
    out.push_back(static_cast<char>(0xff - number));
    out.append(data.substr(0, size));
    out.append(size - std::min(size, data.size()), pad);
    const std::uint16_t crc = Crc16(std::string_view(out).substr(3, size));
    out.push_back(static_cast<char>(crc >> 8));
    out.push_back(static_cast<char>(crc & 0xff));
    return out;
}

std::string EncodeHeaderBlock(const FILE_HEADER& header) {
    std::string data;
    if (!header.name.empty()) {
        data = header.name;
        data.push_back('\0');
        if (header.size) data += std::to_string(*header.size);
    }
    return EncodeBlock(0, data, '\0');
}

std::optional<FILE_HEADER> ParseHeader(std::string_view data) {
    const auto nul = data.find('\0');
    if (nul == std::string_view::npos) return std::nullopt;
    FILE_HEADER header{std::string(data.substr(0, nul)), std::nullopt};
    std::string_view rest = data.substr(nul + 1);
    const auto end = rest.find_first_of(std::string_view(" \0", 2));
    rest = rest.substr(0, end);
    if (rest.empty()) return header;
    std::uint64_t size = 0;
    const auto [ptr, ec] = std::from_chars(rest.data(), rest.data() + rest.size(), size);
    if (ec != std::errc() || ptr != rest.data() + rest.size()) return std::nullopt;
    header.size = size;
    return header;
}

EBlockCheck ParseBlock(std::string_view bytes, BLOCK& block, std::size_t& need) {
    need = 1;
    if (bytes.empty()) return EBlockCheck::Incomplete;
    if (bytes[0] != kSoh && bytes[0] != kStx) return EBlockCheck::NotABlock;
    const std::size_t size = bytes[0] == kSoh ? kShortBlock : kLongBlock;
    need = size + kFraming;
    if (bytes.size() < need) return EBlockCheck::Incomplete;
    const auto number = static_cast<std::uint8_t>(bytes[1]);
    if (static_cast<std::uint8_t>(bytes[2]) != static_cast<std::uint8_t>(0xff - number)) return EBlockCheck::BadComplement;
    const std::string_view data = bytes.substr(3, size);
    const std::uint16_t crc = static_cast<std::uint16_t>((static_cast<unsigned char>(bytes[3 + size]) << 8) |
                                                         static_cast<unsigned char>(bytes[4 + size]));
    if (Crc16(data) != crc) return EBlockCheck::BadCrc;
    block = BLOCK{number, data};
    return EBlockCheck::Ok;
}

}  // namespace devio::ymodem
