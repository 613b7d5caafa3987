#include "tools/rcvsim/SimArguments.h"

#include <cerrno>
#include <cmath>
#include <cstdlib>

#include "tools/rcvsim/CommandLine.h"
#include "tools/rcvsim/Keywords.h"
#include "tools/rcvsim/TcpServer.h"

namespace rcvsim {
namespace {

bool Number(const std::string& text, double lo, double hi, double& out) {
    if (text.empty()) return false;
    char* end = nullptr;
    errno = 0;
    const double v = std::strtod(text.c_str(), &end);
    if (errno != 0 || end != text.c_str() + text.size() || !std::isfinite(v) || v < lo || v > hi) return false;
    out = v;
    return true;
}

bool Integer(const std::string& text, double lo, double hi, int& out) {
    double v = 0;
    if (!Number(text, lo, hi, v) || v != std::floor(v)) return false;
    out = static_cast<int>(v);
    return true;
}

bool ParseSite(const std::string& text, Geodetic& site) {
    const auto f = CommandLine::SplitTopLevel(text, ',');
    return f.size() == 3 && Number(f[0], -90, 90, site.latDeg) && Number(f[1], -180, 180, site.lonDeg) &&
           Number(f[2], -1000, 100000, site.height);
}

bool ParseEndpoint(const std::string& text, SimArguments::Endpoint& ep, std::string& error) {
    const auto colon = text.rfind(':');
    if (colon == std::string::npos || !Integer(text.substr(colon + 1), 0, 65535, ep.port)) {
        error = "--tcp wants ADDRESS:PORT, e.g. 127.0.0.1:0";
        return false;
    }
    ep.address = text.substr(0, colon);
    if (!TcpServer::IsLoopback(ep.address)) {
        error = "--tcp: " + ep.address + " is not a loopback address";
        return false;
    }
    return true;
}

}  // namespace

const char* SimArguments::Usage() {
    return "usage: rcvsim [--tcp ADDR:PORT]... [--pty] [--rate BPS] [--site LAT,LON,H]\n"
           "              [--latency MS] [--latency-path PATH] [--silence PATH|*]\n"
           "              [--garbage MS[,BYTES]] [--drop-after MS] [--old-firmware]\n"
           "              [--list-echo] [--full-log-folder] [--serial-only] [--dump-size BYTES]\n"
           "              [--seed N]\n";
}

std::optional<SimArguments> SimArguments::Parse(const std::vector<std::string>& args, std::string& error) {
    SimArguments out;
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
        if (a == "--old-firmware") { out.options.oldFirmware = true; continue; }
        if (a == "--list-echo") { out.options.listEcho = true; continue; }
        if (a == "--full-log-folder") { out.options.fullLogFolder = true; continue; }
        if (a == "--serial-only") { out.options.serialPortsOnly = true; continue; }
        const std::string* v = value();
        if (!v) return std::nullopt;
        if (a == "--tcp") {
            Endpoint ep;
            if (!ParseEndpoint(*v, ep, error)) return std::nullopt;
            out.tcp.push_back(ep);
        } else if (a == "--rate") {
            if (!Keywords::Contains(Keywords::BaudRates(), *v)) return bad("not a receiver baud rate");
            out.options.lineRate = std::atoi(v->c_str());
            out.options.throttle = true;
        } else if (a == "--site") {
            if (!ParseSite(*v, out.options.site)) return bad("wants LAT,LON,HEIGHT in degrees and metres");
        } else if (a == "--latency") {
            if (!Integer(*v, 0, 600000, out.options.faults.latencyMs)) return bad("milliseconds");
        } else if (a == "--latency-path") {
            out.options.faults.latencyPath = CommandLine::NormalizePath(*v);
        } else if (a == "--silence") {
            if (*v == "*") out.options.faults.silenceAll = true;
            else out.options.faults.silentPaths.push_back(CommandLine::NormalizePath(*v));
        } else if (a == "--garbage") {
            const auto f = CommandLine::SplitTopLevel(*v, ',');
            if (!Integer(f[0], 1, 3600000, out.options.faults.garbageEveryMs)) return bad("milliseconds");
            if (f.size() > 1 && !Integer(f[1], 1, 65536, out.options.faults.garbageBytes)) return bad("bytes");
        } else if (a == "--drop-after") {
            if (!Integer(*v, 1, 86400000, out.options.faults.dropAfterMs)) return bad("milliseconds");
        } else if (a == "--dump-size") {
            double bytes = 0;
            if (!Number(*v, 0, 1 << 30, bytes)) return bad("bytes");
            out.options.dumpBytes = static_cast<std::size_t>(bytes);
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

}  // namespace rcvsim
