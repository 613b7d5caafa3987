#pragma once
#include <string>
#include <string_view>
#include <vector>

namespace rcvsim {

// Faults the simulator injects on its links. Every connection reads the plan that is current
// when it needs it, so a change ("sim,latency,200") takes effect at once.
struct FaultPlan {
    int latencyMs = 0;              // delay before a reply is sent
    std::string latencyPath;        // only for commands on this path (prefix); empty = all
    bool silenceAll = false;        // never answer anything (except "sim," commands)
    std::vector<std::string> silentPaths;  // never answer commands on these paths (prefix)
    int garbageEveryMs = 0;         // a burst of random bytes between frames this often; 0 = off
    int garbageBytes = 16;          // bytes per burst
    int dropAfterMs = 0;            // close each new connection this long after it opens; 0 = off
    int loaderNoiseEvery = 0;       // the boot loader's line flips one byte in this many it takes in
    int loaderCutAfterBlocks = 0;   // the cable is pulled (once) when this many blocks of an image are in
    int loaderCutMs = 2000;         // how long a terminal's cable stays out; a socket just closes
    bool lineStays = false;         // a terminal's line keeps its framing when its port's settings
                                    // change (as firmware that applies them only at restart)

    // True when a command whose first parameter is `path` falls under `prefix`.
    static bool PathMatches(std::string_view path, std::string_view prefix) {
        if (prefix.empty() || prefix == "*") return true;
        if (path.substr(0, prefix.size()) != prefix) return false;
        return path.size() == prefix.size() || path[prefix.size()] == '/' ||
               path[prefix.size()] == '&' || path[prefix.size()] == ':';
    }
    int LatencyFor(std::string_view path) const {
        return PathMatches(path, latencyPath) ? latencyMs : 0;
    }
    bool Silent(std::string_view path) const {
        if (silenceAll) return true;
        for (const auto& p : silentPaths)
            if (PathMatches(path, p)) return true;
        return false;
    }
};

}  // namespace rcvsim
