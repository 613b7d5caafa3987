#pragma once
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "tools/rcvsim/Schedule.h"

namespace rcvsim {

// The messages this receiver can output, by group, with their default schedules
// ("/msg/def/<group>/<name>").
class MessageCatalog {
public:
    MessageCatalog();

    // Every group the firmware knows, in catalogue order; some hold no messages here.
    static std::span<const std::string_view> Groups();
    // "/msg/nmea/GGA", "msg/nmea/GGA" or "nmea/GGA" -> "nmea/GGA"; nullopt when unknown.
    std::optional<std::string> Canonical(std::string_view name) const;
    std::vector<std::string> Names() const;                       // "nmea/GGA", ...
    std::vector<std::string> NamesIn(std::string_view group) const;  // "GGA", ...
    bool HasGroup(std::string_view group) const;
    const Schedule* Default(std::string_view name) const;
    bool SetDefault(std::string_view name, const Schedule& schedule);
    void Reset();

    static std::string Display(std::string_view canonical) { return "/msg/" + std::string(canonical); }

private:
    std::vector<std::pair<std::string, Schedule>> defaults_;  // in catalogue order
};

}  // namespace rcvsim
