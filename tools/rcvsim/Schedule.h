#pragma once
#include <optional>
#include <string>
#include <string_view>

namespace rcvsim {

// When a message is output: every `period` seconds at `phase` seconds into the period,
// `count` times (0 or less: without end). Flags are kept and reported, not interpreted.
struct Schedule {
    double period = 1;
    double phase = 0;
    int count = 0;
    unsigned flags = 0;

    // "{1.00,0.00,0,0x0}"
    std::string Format() const;
    // Accepts "{p,ph,c,0xf}" with exactly four fields, as the firmware does.
    static std::optional<Schedule> Parse(std::string_view text);
    bool operator==(const Schedule&) const = default;
};

}  // namespace rcvsim
