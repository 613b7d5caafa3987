#include "platform/devio/firmware/FirmwareImage.h"

#include <array>
#include <cstring>
#include <stdexcept>

namespace devio::firmware {
namespace {

constexpr std::array<std::uint32_t, 256> MakeCrcTable() {
    std::array<std::uint32_t, 256> table{};
    for (std::uint32_t i = 0; i < 256; ++i) {
        std::uint32_t c = i;
        for (int bit = 0; bit < 8; ++bit) c = (c & 1) ? 0xEDB88320u ^ (c >> 1) : c >> 1;
        table[i] = c;
    }
    return table;
}
constexpr auto kCrcTable = MakeCrcTable();

// Header layout, little-endian.
constexpr std::size_t kFormatAt = 8;
constexpr std::size_t kHeaderLengthAt = 10;
constexpr std::size_t kPayloadLengthAt = 12;
constexpr std::size_t kPayloadCrcAt = 16;
constexpr std::size_t kModelAt = 20;
constexpr std::size_t kVersionAt = kModelAt + kModelField;
constexpr std::size_t kHeaderCrcAt = kVersionAt + kVersionField;
static_assert(kHeaderCrcAt + 4 == kHeaderSize);

std::uint32_t Get(std::string_view b, std::size_t at, std::size_t bytes) {
    std::uint32_t v = 0;
    for (std::size_t i = 0; i < bytes; ++i) v |= static_cast<std::uint32_t>(static_cast<unsigned char>(b[at + i])) << (8 * i);
    return v;
}

void Put(std::string& b, std::size_t at, std::uint32_t v, std::size_t bytes) {
    for (std::size_t i = 0; i < bytes; ++i) b[at + i] = static_cast<char>((v >> (8 * i)) & 0xff);
}

bool Printable(std::string_view text) {
    for (const char c : text)
        if (c < 0x20 || c > 0x7e) return false;
    return true;
}

// A NUL-padded text field: printable up to its first NUL, only NULs after it, not empty.
bool ReadField(std::string_view field, std::string& out) {
    const auto nul = field.find('\0');
    const std::string_view text = field.substr(0, nul);
    if (text.empty() || !Printable(text)) return false;
    if (nul != std::string_view::npos && field.find_first_not_of('\0', nul) != std::string_view::npos) return false;
    out.assign(text);
    return true;
}

}  // namespace

std::uint32_t Crc32(std::string_view bytes, std::uint32_t crc) {
    crc = ~crc;
    for (const char c : bytes) crc = kCrcTable[(crc ^ static_cast<unsigned char>(c)) & 0xff] ^ (crc >> 8);
    return ~crc;
}

EImageFault CheckImageSize(std::uint64_t size) {
    if (size == 0) return EImageFault::Empty;
    if (size > kHeaderSize + kMaxPayload) return EImageFault::TooLarge;
    return EImageFault::None;
}

FIRMWARE_IMAGE_CHECK CheckImage(std::string_view bytes) {
    FIRMWARE_IMAGE_CHECK check;
    if ((check.fault = CheckImageSize(bytes.size())) != EImageFault::None) return check;
    const std::size_t magic = std::min(bytes.size(), sizeof kImageMagic);
    if (std::memcmp(bytes.data(), kImageMagic, magic) != 0) {
        check.fault = EImageFault::NotAnImage;
        return check;
    }
    if (bytes.size() < kHeaderSize) {
        check.fault = EImageFault::TruncatedHeader;
        return check;
    }
    if (Get(bytes, kFormatAt, 2) != kImageFormat || Get(bytes, kHeaderLengthAt, 2) != kHeaderSize) {
        check.fault = EImageFault::UnknownFormat;
        return check;
    }
    FIRMWARE_IMAGE_INFO info;
    info.payloadLength = Get(bytes, kPayloadLengthAt, 4);
    info.payloadCrc = Get(bytes, kPayloadCrcAt, 4);
    if (Crc32(bytes.substr(0, kHeaderCrcAt)) != Get(bytes, kHeaderCrcAt, 4) ||
        !ReadField(bytes.substr(kModelAt, kModelField), info.model) ||
        !ReadField(bytes.substr(kVersionAt, kVersionField), info.version)) {
        check.fault = EImageFault::BadHeader;
        return check;
    }
    check.info = info;
    check.expectedSize = kHeaderSize + static_cast<std::uint64_t>(info.payloadLength);
    if (info.payloadLength > kMaxPayload) check.fault = EImageFault::TooLarge;
    else if (bytes.size() < check.expectedSize) check.fault = EImageFault::Truncated;
    else if (bytes.size() > check.expectedSize) check.fault = EImageFault::TrailingBytes;
    else if (Crc32(ImagePayload(bytes)) != info.payloadCrc) check.fault = EImageFault::BadPayload;
    return check;
}

std::string BuildImage(std::string_view model, std::string_view version, std::string_view payload) {
    if (model.empty() || model.size() > kModelField || !Printable(model))
        throw std::invalid_argument("the model must be 1 to 16 printable ASCII characters");
    if (version.empty() || version.size() > kVersionField || !Printable(version))
        throw std::invalid_argument("the version must be 1 to 24 printable ASCII characters");
    if (payload.size() > kMaxPayload) throw std::invalid_argument("the payload is larger than 64 MB");
    std::string image(kHeaderSize, '\0');
    std::memcpy(image.data(), kImageMagic, sizeof kImageMagic);
    Put(image, kFormatAt, kImageFormat, 2);
    Put(image, kHeaderLengthAt, kHeaderSize, 2);
    Put(image, kPayloadLengthAt, static_cast<std::uint32_t>(payload.size()), 4);
    Put(image, kPayloadCrcAt, Crc32(payload), 4);
    image.replace(kModelAt, model.size(), model);
    image.replace(kVersionAt, version.size(), version);
    Put(image, kHeaderCrcAt, Crc32(std::string_view(image).substr(0, kHeaderCrcAt)), 4);
    image.append(payload);
    return image;
}

}  // namespace devio::firmware
