#include "tools/rcvsim/OutputSchedule.h"

#include <algorithm>
#include <cmath>

namespace rcvsim {
namespace {
constexpr double kEps = 1e-6;  // simulated clocks step in fractions that do not add up exactly
}

double OutputSchedule::NextAt(const Schedule& s, double now) {
    if (s.period <= 0) return now;
    const double k = std::ceil((now - s.phase) / s.period - kEps);
    return k * s.period + s.phase;
}

void OutputSchedule::Enable(const std::string& port, const std::string& name, const Schedule& s,
                            double now) {
    auto& entries = ports_[port];
    Entry entry{name, s, 0, NextAt(s, now)};
    const auto same = std::find_if(entries.begin(), entries.end(),
                                   [&](const Entry& e) { return e.name == name; });
    if (same != entries.end())
        *same = std::move(entry);
    else
        entries.push_back(std::move(entry));
}

void OutputSchedule::Disable(const std::string& port) { ports_.erase(port); }

bool OutputSchedule::Disable(const std::string& port, const std::string& name) {
    const auto it = ports_.find(port);
    if (it == ports_.end()) return false;
    return std::erase_if(it->second, [&](const Entry& e) { return e.name == name; }) > 0;
}

const std::vector<OutputSchedule::Entry>& OutputSchedule::Entries(const std::string& port) const {
    static const std::vector<Entry> kNone;
    const auto it = ports_.find(port);
    return it == ports_.end() ? kNone : it->second;
}

std::vector<DueMessage> OutputSchedule::TakeDue(double now) {
    std::vector<DueMessage> due;
    for (auto& [port, entries] : ports_) {
        for (auto& e : entries) {
            if (e.next > now + kEps) continue;
            // Stamped with its instant, unless the clock jumped well past it.
            const bool recent = now - e.next < std::max(e.schedule.period, 1.0);
            due.push_back({port, e.name, recent ? std::min(e.next, now) : now});
            ++e.emitted;
            // A message without period goes out once; a late clock skips missed instants.
            if (e.schedule.period <= 0) continue;
            e.next = NextAt(e.schedule, now);
            if (e.next <= now + kEps) e.next += e.schedule.period;
        }
        std::erase_if(entries, [](const Entry& e) {
            const long limit = e.schedule.period > 0 ? e.schedule.count : 1;
            return limit > 0 && e.emitted >= limit;
        });
    }
    std::erase_if(ports_, [](const auto& p) { return p.second.empty(); });
    return due;
}

}  // namespace rcvsim
