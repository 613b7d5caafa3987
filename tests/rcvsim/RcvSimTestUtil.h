#pragma once
#include <memory>
#include <regex>
#include <string>

#include "tools/rcvsim/Receiver.h"
#include "tools/rcvsim/SimClock.h"

namespace rcvsim::test {

// A receiver on a hand-stepped clock, talking through dev/ser/a unless told otherwise.
struct SimReceiver {
    explicit SimReceiver(SimOptions options = {})
        : clock(std::make_shared<ManualClock>()), rx(std::move(options), clock) {}
    Reply Run(const std::string& line, const std::string& port = "dev/ser/a") {
        return rx.Execute(line, port);
    }
    std::string Print(const std::string& path) { return rx.Execute("print," + path, "dev/ser/a").text; }

    std::shared_ptr<ManualClock> clock;
    Receiver rx;
};

inline bool Matches(const std::string& text, const std::string& pattern) {
    return std::regex_match(text, std::regex(pattern));
}

}  // namespace rcvsim::test
