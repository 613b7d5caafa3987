#pragma once
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "tools/rcvsim/FaultPlan.h"
#include "tools/rcvsim/Geodesy.h"

namespace rcvsim {

// Everything that makes one simulated receiver differ from another.
struct SimOptions {
    Geodetic site{55.7522, 37.6156, 152.0};  // antenna position the constellation is seen from
    int lineRate = 115200;                    // initial rate of dev/ser/a and the TCP ports
    bool throttle = false;                    // pace output at the port's line rate (pty, TCP)
    bool oldFirmware = false;                 // "init,/setup/" is unknown to old firmware
    bool listEcho = false;                    // "list,/par/X" echoes "/par/X=" around the list
    std::size_t dumpBytes = 300 * 1024;       // size the "/par:on" dump is padded to
    std::string model;                        // "rcv/model" when not empty (e.g. "Lyn1", an extension-family model)
    int powerSwitches = 4;                    // "pwr/switch/1".."pwr/switch/N"
    bool extBoard = true;                     // false: every "ext/..." parameter is refused as unknown
    bool silentInit = false;                  // "init,/setup/", "init,/par/", "init,/dev/nvm/a" restart without an answer
    std::uint32_t seed = 1;                   // garbage bytes and other pseudo-random choices
    FaultPlan faults;                         // initial fault injection, see FaultPlan
    // Older log files found on the medium at start, one per size in bytes (oldest first, an hour
    // apart, before yesterday's): a full receiver holds dozens, some of hundreds of megabytes.
    // Their bytes are the receiver's binary records, the same for the same seed.
    std::vector<std::size_t> seededLogs;
    // A season's log folder before yesterday's (docs/simulator.md): dozens of files, three of
    // 90 to 300 MB, none of them held in memory.
    bool fullLogFolder = false;
    // A receiver with serial ports only: no USB, TCP, MVP or script port (reach it over a
    // pseudo-terminal, whose terminal is dev/ser/a).
    bool serialPortsOnly = false;
    // Told every piece of bytes a connection has written, on that connection's thread: what the
    // host must have received, for tests that compare.
    std::function<void(std::string_view port, std::string_view bytes)> onSent;
};

}  // namespace rcvsim
