#include "platform/devio/lexer/Fletcher16.h"

#include <algorithm>

namespace devio {

std::uint16_t Fletcher16(std::string_view bytes)
{
    // Reducing once per block instead of once per byte is what makes multi-megabyte payloads
    // cheap; sums stay below 2^32 for blocks up to 5802 bytes, 4096 leaves a margin.
    constexpr std::size_t kBlock = 4096;
    std::uint32_t sum1 = 0;
    std::uint32_t sum2 = 0;
    const auto* p = reinterpret_cast<const unsigned char*>(bytes.data());
    std::size_t left = bytes.size();
    while (left > 0) {
        const std::size_t n = std::min(left, kBlock);
        for (std::size_t i = 0; i < n; ++i) {
            sum1 += p[i];
            sum2 += sum1;
        }
        sum1 %= 255;
        sum2 %= 255;
        p += n;
        left -= n;
    }
    return static_cast<std::uint16_t>((sum2 << 8) | sum1);
}

}  // namespace devio
