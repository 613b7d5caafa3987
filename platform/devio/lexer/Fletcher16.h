#pragma once
#include <cstdint>
#include <string_view>

namespace devio {

// Fletcher-16 over the bytes: both sums modulo 255, result (sum2 << 8) | sum1.
std::uint16_t Fletcher16(std::string_view bytes);

}  // namespace devio
