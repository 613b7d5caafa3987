#pragma once
#include <optional>
#include <string>
#include <vector>

#include "tools/rcvsim/ModemCore.h"

namespace rcvsim {

// The executable's command line when it plays a modem:
//   rcvsim --modem uhf|cellular [--model NAME] [--tcp ADDR:PORT]... [--pty] [--rate BPS]
//          [--sim-locked] [--pin PIN] [--register-after S] [--roaming]
//          [--latency MS] [--latency-command CMD] [--silence CMD|*] [--garbage MS[,BYTES]]
//          [--drop-after MS] [--error CMD] [--seed N]
struct ModemArguments {
    struct Endpoint {
        std::string address;
        int port = 0;
    };
    ModemOptions options;
    std::vector<Endpoint> tcp;
    bool pty = false;

    // True when the command line asks for a modem (it holds "--modem").
    static bool Wanted(const std::vector<std::string>& args);
    // nullopt with `error` set when the line is wrong; "--help" gives nullopt and no error.
    static std::optional<ModemArguments> Parse(const std::vector<std::string>& args, std::string& error);
    static const char* Usage();
};

// Serves the modem until SIGINT or SIGTERM;
// prints "tcp ADDR:PORT" and "pty PATH" lines first. Returns the exit code.
int RunModem(const std::vector<std::string>& args);

}  // namespace rcvsim
