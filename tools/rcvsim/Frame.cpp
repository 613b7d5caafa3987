#include "tools/rcvsim/Frame.h"

#include <cstdio>

namespace rcvsim {

std::uint16_t Frame::Fletcher16(std::string_view bytes) {
    unsigned sum1 = 0, sum2 = 0;
    for (const unsigned char c : bytes) {
        sum1 = (sum1 + c) % 255;
        sum2 = (sum2 + sum1) % 255;
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
