#include "tools/rcvsim/Frame.h"

#include <algorithm>
#include <cstdio>

namespace rcvsim {

// Reduced once per 4096 bytes (the sums stay below 2^32 up to 5802): file pieces of megabytes
// went at a fifth of the link's speed with a division per byte.
std::uint16_t Frame::Fletcher16(std::string_view bytes) {
    constexpr std::size_t kBlock = 4096;
    std::uint32_t sum1 = 0, sum2 = 0;
    for (std::size_t at = 0; at < bytes.size(); at += kBlock) {
        const std::size_t end = std::min(bytes.size(), at + kBlock);
        for (std::size_t i = at; i < end; ++i) {
            sum1 += static_cast<unsigned char>(bytes[i]);
            sum2 += sum1;
        }
        sum1 %= 255;
        sum2 %= 255;
    }
    return static_cast<std::uint16_t>((sum2 << 8) | sum1);
}

std::string Frame::Make(char kind, std::string_view id, int status, std::string_view payload) {
    char head[64];
    const int n = std::snprintf(head, sizeof head, "%d,%zu:", status, payload.size());
    char tail[16];
    std::snprintf(tail, sizeof tail, "*%04X\r\n", Fletcher16(payload));
    std::string frame;
    frame.reserve(2 + id.size() + static_cast<std::size_t>(n) + payload.size() + 7);
    frame += '@';
    frame += kind;
    frame.append(id);
    frame += ',';
    frame.append(head, static_cast<std::size_t>(n));
    frame.append(payload);
    frame.append(tail);
    return frame;
}

}  // namespace rcvsim
