#include "tools/rcvsim/MessageCatalog.h"

#include <algorithm>
#include <array>

#include "tools/rcvsim/CommandLine.h"

namespace rcvsim {
namespace {
using namespace std::string_view_literals;
constexpr std::array kGroups{"qls"sv, "nmea"sv, "rtcm"sv, "rtcm3"sv, "cmr"sv, "binex"sv, "fnk"sv};

struct Entry {
    const char* name;
    Schedule schedule;
};
// Each group as the firmware lists it, with the default schedule of each message.
const std::array kFactory{
    Entry{"qls/RT", {1, 0, 0, 0}},     Entry{"qls/PV", {1, 0, 0, 0}},     Entry{"qls/SI", {1, 0, 0, 0}},
    Entry{"qls/EL", {1, 0, 0, 0}},     Entry{"qls/AZ", {1, 0, 0, 0}},     Entry{"qls/RC", {1, 0, 0, 0}},
    Entry{"qls/PC", {1, 0, 0, 0}},     Entry{"qls/ET", {1, 0, 0, 0}},
    Entry{"nmea/GGA", {1, 0, 0, 0}},   Entry{"nmea/RMC", {1, 0, 0, 0}},   Entry{"nmea/GSA", {1, 0, 0, 0}},
    Entry{"nmea/GSV", {5, 0, 0, 0}},   Entry{"nmea/ZDA", {1, 0, 0, 0}},   Entry{"nmea/GST", {1, 0, 0, 0}},
    Entry{"nmea/VTG", {1, 0, 0, 0}},   Entry{"nmea/GLL", {1, 0, 0, 0}},
    Entry{"rtcm/1", {1, 0, 0, 0}},     Entry{"rtcm/3", {10, 0, 0, 0}},    Entry{"rtcm/18", {1, 0, 0, 0}},
    Entry{"rtcm/19", {1, 0, 0, 0}},    Entry{"rtcm/22", {10, 0, 0, 0}},   Entry{"rtcm/31", {1, 0, 0, 0}},
    Entry{"rtcm/32", {10, 0, 0, 0}},
    Entry{"rtcm3/1004", {1, 0, 0, 0}}, Entry{"rtcm3/1006", {10, 0, 0, 0}}, Entry{"rtcm3/1008", {10, 0, 0, 0}},
    Entry{"rtcm3/1012", {1, 0, 0, 0}}, Entry{"rtcm3/1033", {10, 0, 0, 0}}, Entry{"rtcm3/1074", {1, 0, 0, 0}},
    Entry{"rtcm3/1084", {1, 0, 0, 0}}, Entry{"rtcm3/1230", {10, 0, 0, 0}},
    Entry{"cmr/0", {1, 0, 0, 0}},      Entry{"cmr/1", {10, 0, 0, 0}},     Entry{"cmr/2", {10, 0, 0, 0}},
    Entry{"cmr/3", {1, 0, 0, 0}},
    Entry{"binex/00", {30, 0, 0, 0}},  Entry{"binex/01-01", {30, 0, 0, 0}}, Entry{"binex/7f-05", {1, 0, 0, 0}},
    Entry{"fnk/DL", {1, 0, 0, 0}},
};
}  // namespace

MessageCatalog::MessageCatalog() { Reset(); }

void MessageCatalog::Reset() {
    defaults_.clear();
    for (const auto& e : kFactory) defaults_.emplace_back(e.name, e.schedule);
}

std::span<const std::string_view> MessageCatalog::Groups() { return kGroups; }

std::optional<std::string> MessageCatalog::Canonical(std::string_view name) const {
    std::string n = CommandLine::Trim(name);
    while (!n.empty() && n.front() == '/') n.erase(0, 1);
    if (CommandLine::StartsWith(n, "msg/")) n.erase(0, 4);
    const auto found = std::find_if(defaults_.begin(), defaults_.end(),
                                    [&](const auto& d) { return d.first == n; });
    if (found == defaults_.end()) return std::nullopt;
    return n;
}

std::vector<std::string> MessageCatalog::Names() const {
    std::vector<std::string> names;
    for (const auto& d : defaults_) names.push_back(d.first);
    return names;
}

std::vector<std::string> MessageCatalog::NamesIn(std::string_view group) const {
    std::vector<std::string> names;
    const std::string prefix = std::string(group) + "/";
    for (const auto& d : defaults_)
        if (CommandLine::StartsWith(d.first, prefix)) names.push_back(d.first.substr(prefix.size()));
    return names;
}

bool MessageCatalog::HasGroup(std::string_view group) const {
    return std::find(kGroups.begin(), kGroups.end(), group) != kGroups.end();
}

const Schedule* MessageCatalog::Default(std::string_view name) const {
    const auto canonical = Canonical(name);
    if (!canonical) return nullptr;
    for (const auto& d : defaults_)
        if (d.first == *canonical) return &d.second;
    return nullptr;
}

bool MessageCatalog::SetDefault(std::string_view name, const Schedule& schedule) {
    const auto canonical = Canonical(name);
    if (!canonical) return false;
    for (auto& d : defaults_)
        if (d.first == *canonical) d.second = schedule;
    return true;
}

}  // namespace rcvsim
