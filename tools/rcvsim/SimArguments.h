#pragma once
#include <optional>
#include <string>
#include <vector>

#include "tools/rcvsim/SimOptions.h"

namespace rcvsim {

// The executable's command line:
//   rcvsim [--tcp ADDR:PORT]... [--pty] [--rate BPS] [--site LAT,LON,H] [--latency MS]
//          [--latency-path PATH] [--silence PATH|*] [--garbage MS[,BYTES]] [--drop-after MS]
//          [--old-firmware] [--list-echo] [--dump-size BYTES] [--seed N]
struct SimArguments {
    struct Endpoint {
        std::string address;
        int port = 0;
    };
    SimOptions options;
    std::vector<Endpoint> tcp;
    bool pty = false;

    // nullopt with `error` set when the line is wrong; "--help" gives nullopt and no error.
    static std::optional<SimArguments> Parse(const std::vector<std::string>& args, std::string& error);
    static const char* Usage();
};

}  // namespace rcvsim
