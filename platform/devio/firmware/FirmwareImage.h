#pragma once
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

// The firmware image container (docs/firmware-image.md): a 64-byte header with the model the
// image is for, its version, the payload's length and CRC-32 and the header's own CRC-32, then
// the payload. Plain C++: the loader in the simulator checks images with the same reader.
namespace devio::firmware {

inline constexpr char kImageMagic[8] = {'F', 'N', 'K', 'F', 'W', '\x1a', '\r', '\n'};
inline constexpr std::uint16_t kImageFormat = 1;
inline constexpr std::size_t kHeaderSize = 64;
inline constexpr std::size_t kModelField = 16;
inline constexpr std::size_t kVersionField = 24;
// A receiver's whole flash is 32 MB; twice that leaves room for larger models while a wrong
// file (a video, a disk image) is refused before anything is read or sent.
inline constexpr std::uint64_t kMaxPayload = 64ull << 20;

// CRC-32 as Ethernet and zip use it (reflected 0xEDB88320, initial and final inversion).
std::uint32_t Crc32(std::string_view bytes, std::uint32_t crc = 0);

struct FIRMWARE_IMAGE_INFO {
    std::string model;
    std::string version;
    std::uint32_t payloadLength = 0;
    std::uint32_t payloadCrc = 0;
};

// Why bytes are not a usable image, in the order the reader checks.
enum class EImageFault {
    None,
    Empty,            // no byte at all
    TooLarge,         // larger than any image may be
    NotAnImage,       // no image header (another kind of file)
    UnknownFormat,    // a header of a later format this reader does not know
    TruncatedHeader,  // shorter than the header
    BadHeader,        // the header's check sum or its texts are wrong
    Truncated,        // shorter than the payload the header announces
    TrailingBytes,    // longer than header and payload
    BadPayload,       // the payload's CRC-32 does not match
};

struct FIRMWARE_IMAGE_CHECK {
    EImageFault fault = EImageFault::None;
    FIRMWARE_IMAGE_INFO info;        // filled once the header was read
    std::uint64_t expectedSize = 0;  // header plus payload, once the header was read
    bool Ok() const { return fault == EImageFault::None; }
};

// Checks a whole image in memory.
FIRMWARE_IMAGE_CHECK CheckImage(std::string_view bytes);
// The fault a file of this size has whatever it holds (Empty, TooLarge), else None: a caller
// looks at the size before reading the file.
EImageFault CheckImageSize(std::uint64_t size);
// Header and payload. Throws std::invalid_argument when model or version is empty, holds a
// byte outside printable ASCII, or is too long for its field, or the payload is too large.
std::string BuildImage(std::string_view model, std::string_view version, std::string_view payload);

// The payload of a checked image.
inline std::string_view ImagePayload(std::string_view image) { return image.substr(kHeaderSize); }

}  // namespace devio::firmware
