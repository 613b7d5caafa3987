#include "platform/hwctl/YuyvToRgb.h"

#include <algorithm>
#include <cstdio>

namespace hwctl {

namespace {
std::uint8_t Clamp(int value) { return static_cast<std::uint8_t>(std::clamp(value, 0, 255)); }

// BT.601 limited range in 8-bit fixed point (coefficients times 256, rounded).
void PutPixel(int y, int u, int v, std::uint8_t* rgb) {
    const int c = 298 * (y - 16) + 128;
    const int d = u - 128, e = v - 128;
    rgb[0] = Clamp((c + 409 * e) >> 8);
    rgb[1] = Clamp((c - 100 * d - 208 * e) >> 8);
    rgb[2] = Clamp((c + 516 * d) >> 8);
}
}  // namespace

std::vector<std::uint8_t> YuyvToRgb(std::span<const std::uint8_t> frame, int width, int height, int stride) {
    // Pixels come in pairs sharing their colour: a frame's width is even.
    if (width <= 0 || width % 2 || height <= 0 || stride < width * 2 || frame.size() < static_cast<std::size_t>(stride) * static_cast<std::size_t>(height - 1) + static_cast<std::size_t>(width) * 2)
        return {};
    std::vector<std::uint8_t> rgb(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 3);
    for (int row = 0; row < height; ++row) {
        const std::uint8_t* in = frame.data() + static_cast<std::size_t>(row) * static_cast<std::size_t>(stride);
        std::uint8_t* out = rgb.data() + static_cast<std::size_t>(row) * static_cast<std::size_t>(width) * 3;
        for (int x = 0; x < width; x += 2, in += 4, out += 6) {
            PutPixel(in[0], in[1], in[3], out);
            PutPixel(in[2], in[1], in[3], out + 3);
        }
    }
    return rgb;
}

std::string RgbToPpm(std::span<const std::uint8_t> rgb, int width, int height) {
    // snprintf, not std::to_string: the library that holds this must be able to unload.
    char header[48];
    std::snprintf(header, sizeof header, "P6\n%d %d\n255\n", width, height);
    std::string file = header;
    file.append(reinterpret_cast<const char*>(rgb.data()), rgb.size());
    return file;
}

}  // namespace hwctl
