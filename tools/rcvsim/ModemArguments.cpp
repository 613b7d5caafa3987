#include "tools/rcvsim/ModemArguments.h"

#include <signal.h>

#include <charconv>
#include <cstdio>
#include <exception>

#include "tools/rcvsim/ModemSim.h"
#include "tools/rcvsim/TcpServer.h"

namespace rcvsim {
namespace {

bool Integer(const std::string& text, long long lo, long long hi, int& out) {
    long long v = 0;
    const auto r = std::from_chars(text.data(), text.data() + text.size(), v);
    if (text.empty() || r.ec != std::errc() || r.ptr != text.data() + text.size() || v < lo || v > hi) return false;
    out = static_cast<int>(v);
    return true;
}

bool Seconds(const std::string& text, double& out) {
    const auto r = std::from_chars(text.data(), text.data() + text.size(), out);
    return !text.empty() && r.ec == std::errc() && r.ptr == text.data() + text.size() && out >= 0 && out < 1e6;
}

}  // namespace

bool ModemArguments::Wanted(const std::vector<std::string>& args) {
    for (const auto& a : args)
        if (a == "--modem") return true;
    return false;
}

const char* ModemArguments::Usage() {
    return "usage: rcvsim --modem uhf|cellular [--model NAME] [--tcp ADDR:PORT]... [--pty] [--rate BPS]\n"
           "              [--sim-locked] [--pin PIN] [--register-after S] [--roaming]\n"
           "              [--latency MS] [--latency-command CMD] [--silence CMD|*] [--garbage MS[,BYTES]]\n"
           "              [--drop-after MS] [--error CMD] [--seed N]\n";
}

std::optional<ModemArguments> ModemArguments::Parse(const std::vector<std::string>& args, std::string& error) {
    ModemArguments out;
    for (std::size_t i = 0; i < args.size(); ++i) {
        const std::string& a = args[i];
        const auto value = [&]() -> const std::string* {
            if (i + 1 >= args.size()) {
                error = a + " needs a value";
                return nullptr;
            }
            return &args[++i];
        };
        const auto bad = [&](const std::string& why) {
            error = a + ": " + why;
            return std::nullopt;
        };
        if (a == "--help" || a == "-h") return std::nullopt;
        if (a == "--pty") { out.pty = true; continue; }
        if (a == "--sim-locked") { out.options.simLocked = true; continue; }
        if (a == "--roaming") { out.options.roaming = true; continue; }
        const std::string* v = value();
        if (!v) return std::nullopt;
        if (a == "--modem") {
            if (*v == "uhf") out.options.kind = ModemKind::Uhf;
            else if (*v == "cellular") out.options.kind = ModemKind::Cellular;
            else return bad("uhf or cellular");
        } else if (a == "--model") {
            out.options.model = *v;
        } else if (a == "--tcp") {
            Endpoint ep;
            const auto colon = v->rfind(':');
            if (colon == std::string::npos || !Integer(v->substr(colon + 1), 0, 65535, ep.port)) return bad("ADDRESS:PORT, e.g. 127.0.0.1:0");
            ep.address = v->substr(0, colon);
            if (!TcpServer::IsLoopback(ep.address)) return bad(ep.address + " is not a loopback address");
            out.tcp.push_back(ep);
        } else if (a == "--rate") {
            if (!Integer(*v, 300, 4000000, out.options.lineRate)) return bad("a rate in bit/s");
            out.options.throttle = true;
        } else if (a == "--pin") {
            if (v->size() < 4 || v->size() > 8 || v->find_first_not_of("0123456789") != std::string::npos) return bad("4 to 8 digits");
            out.options.pin = *v;
        } else if (a == "--register-after") {
            if (!Seconds(*v, out.options.registerAfterS)) return bad("seconds");
        } else if (a == "--latency") {
            if (!Integer(*v, 0, 600000, out.options.faults.latencyMs)) return bad("milliseconds");
        } else if (a == "--latency-command") {
            out.options.faults.latencyCommand = *v;
        } else if (a == "--silence") {
            if (*v == "*") out.options.faults.silenceAll = true;
            else out.options.faults.silentCommands.push_back(*v);
        } else if (a == "--garbage") {
            const auto comma = v->find(',');
            if (!Integer(v->substr(0, comma), 1, 600000, out.options.faults.garbageEveryMs) ||
                (comma != std::string::npos && !Integer(v->substr(comma + 1), 1, 4096, out.options.faults.garbageBytes)))
                return bad("MS[,BYTES]");
        } else if (a == "--drop-after") {
            if (!Integer(*v, 0, 86400000, out.options.faults.dropAfterMs)) return bad("milliseconds");
        } else if (a == "--error") {
            out.options.faults.errorCommands.push_back(*v);
        } else if (a == "--seed") {
            int seed = 0;
            if (!Integer(*v, 0, 2147483647, seed)) return bad("a number");
            out.options.seed = static_cast<std::uint32_t>(seed);
        } else {
            error = "unknown option " + a;
            return std::nullopt;
        }
    }
    return out;
}

int RunModem(const std::vector<std::string>& args) {
    std::string error;
    const auto parsed = ModemArguments::Parse(args, error);
    if (!parsed) {
        std::fprintf(error.empty() ? stdout : stderr, "%s%s%s", error.c_str(), error.empty() ? "" : "\n", ModemArguments::Usage());
        return error.empty() ? 0 : 2;
    }
    sigset_t stopSignals;
    sigemptyset(&stopSignals);
    sigaddset(&stopSignals, SIGINT);
    sigaddset(&stopSignals, SIGTERM);
    // Blocked before any thread starts, so only sigwait() below sees them.
    pthread_sigmask(SIG_BLOCK, &stopSignals, nullptr);
    try {
        ModemSim sim(parsed->options);
        for (const auto& ep : parsed->tcp)
            std::printf("tcp %s:%d\n", ep.address == "localhost" ? "127.0.0.1" : ep.address.c_str(), sim.StartTcp(ep.address, ep.port));
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

}  // namespace rcvsim
