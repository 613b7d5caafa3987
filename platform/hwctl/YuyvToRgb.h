#pragma once
#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace hwctl {

// A YUYV 4:2:2 frame (Y0 U Y1 V per two pixels, limited-range BT.601 as webcams send it) as
// 8-bit R, G, B per pixel, row after row; stride is the bytes per source row.
std::vector<std::uint8_t> YuyvToRgb(std::span<const std::uint8_t> frame, int width, int height, int stride);

// An RGB image as a binary PPM file (P6), readable by every image tool.
std::string RgbToPpm(std::span<const std::uint8_t> rgb, int width, int height);

}  // namespace hwctl
