#pragma once
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

// YMODEM framing, shared by both ends: the control bytes, CRC-16, data blocks and the file
// header of block 0. Plain C++, so that the simulator's boot loader uses the same parser.
namespace devio::ymodem {

inline constexpr char kSoh = 0x01;   // a 128-byte block follows
inline constexpr char kStx = 0x02;   // a 1024-byte block follows
inline constexpr char kEot = 0x04;
inline constexpr char kAck = 0x06;
inline constexpr char kNak = 0x15;
inline constexpr char kCan = 0x18;   // two in a row cancel the transfer
inline constexpr char kCrcRequest = 'C';
inline constexpr char kPad = 0x1A;   // fills the last data block

inline constexpr std::size_t kShortBlock = 128;
inline constexpr std::size_t kLongBlock = 1024;
inline constexpr std::size_t kFraming = 5;   // start byte, number, its complement, CRC high, CRC low

// CRC-16 as XMODEM uses it: polynomial 0x1021, initial value 0, no reflection.
std::uint16_t Crc16(std::string_view bytes, std::uint16_t crc = 0);

// One block on the wire: SOH for data up to 128 bytes, STX up to 1024; the data is padded
// with `pad` to the block's size.
std::string EncodeBlock(std::uint8_t number, std::string_view data, char pad = kPad);

// What block 0 announces. An empty name is the end of the batch.
struct FILE_HEADER {
    std::string name;
    std::optional<std::uint64_t> size;   // absent when the sender did not say
};

// Block 0 for a file (128 bytes when the header fits, else 1024), or the empty block 0 that
// ends the batch when `header.name` is empty.
std::string EncodeHeaderBlock(const FILE_HEADER& header);
// Reads block 0's data: the name up to its NUL, then the decimal size up to a blank or NUL.
// Nothing when the name has no terminating NUL or the size is not a number.
std::optional<FILE_HEADER> ParseHeader(std::string_view data);

// A whole block taken off the wire.
struct BLOCK {
    std::uint8_t number = 0;
    std::string_view data;   // 128 or 1024 bytes, into the parsed bytes
};

enum class EBlockCheck {
    Ok,
    Incomplete,      // more bytes are needed (`need` says how many in all)
    NotABlock,       // the first byte is no SOH or STX
    BadComplement,   // the number's complement does not match
    BadCrc,
};

// Checks the block at the start of `bytes`. `need` is the block's length on the wire once the
// start byte is known.
EBlockCheck ParseBlock(std::string_view bytes, BLOCK& block, std::size_t& need);

}  // namespace devio::ymodem
