// rcvsim: serves a simulated receiver on loopback TCP and/or a pseudo-terminal until
// SIGINT or SIGTERM. Where it listens is printed first, one line each, e.g.
//   tcp 127.0.0.1:40123
//   pty /dev/pts/5
#include <signal.h>

#include <cstdio>
#include <exception>
#include <string>
#include <vector>

#include "tools/rcvsim/ModemArguments.h"
#include "tools/rcvsim/RcvSim.h"
#include "tools/rcvsim/SimArguments.h"

int main(int argc, char** argv) {
    if (const std::vector<std::string> args(argv + 1, argv + argc); rcvsim::ModemArguments::Wanted(args)) return rcvsim::RunModem(args);
    std::string error;
    const auto parsed = rcvsim::SimArguments::Parse(std::vector<std::string>(argv + 1, argv + argc), error);
    if (!parsed) {
        std::fprintf(error.empty() ? stdout : stderr, "%s%s%s", error.c_str(), error.empty() ? "" : "\n",
                     rcvsim::SimArguments::Usage());
        return error.empty() ? 0 : 2;
    }
    // Block the stop signals before any thread starts, so only sigwait() below sees them.
    sigset_t stopSignals;
    sigemptyset(&stopSignals);
    sigaddset(&stopSignals, SIGINT);
    sigaddset(&stopSignals, SIGTERM);
    pthread_sigmask(SIG_BLOCK, &stopSignals, nullptr);
    try {
        rcvsim::RcvSim sim(parsed->options);
        for (const auto& ep : parsed->tcp) {
            const int port = sim.StartTcp(ep.address, ep.port);
            std::printf("tcp %s:%d\n", ep.address == "localhost" ? "127.0.0.1" : ep.address.c_str(), port);
        }
        if (parsed->pty || parsed->tcp.empty()) {
            const std::string path = sim.StartPty([](const std::string& p) {
                std::printf("pty %s\n", p.c_str());
                std::fflush(stdout);
            });
            std::printf("pty %s\n", path.c_str());
        }
        std::fflush(stdout);
        int signal = 0;
        sigwait(&stopSignals, &signal);
    } catch (const std::exception& e) {
        std::fprintf(stderr, "rcvsim: %s\n", e.what());
        return 1;
    }
    return 0;
}
