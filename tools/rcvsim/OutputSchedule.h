#pragma once
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "tools/rcvsim/Schedule.h"

namespace rcvsim {

struct DueMessage {
    std::string port;  // "dev/ser/a"
    std::string name;  // "nmea/GGA"
    double at = 0;     // the instant it was due, which its time stamps carry
};

// The messages enabled on each port ("em"/"dm") and when each is due next. Times are
// simulated UTC seconds; an output falls on k * period + phase.
class OutputSchedule {
public:
    struct Entry {
        std::string name;
        Schedule schedule;
        long emitted = 0;
        double next = 0;
    };

    void Enable(const std::string& port, const std::string& name, const Schedule& s, double now);
    void Disable(const std::string& port);
    bool Disable(const std::string& port, const std::string& name);
    const std::vector<Entry>& Entries(const std::string& port) const;
    // Every message due at `now`, each at most once per call; finished counts are removed.
    std::vector<DueMessage> TakeDue(double now);
    void Clear() { ports_.clear(); }

    static double NextAt(const Schedule& s, double now);

private:
    std::map<std::string, std::vector<Entry>, std::less<>> ports_;
};

}  // namespace rcvsim
