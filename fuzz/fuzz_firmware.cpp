// Fuzz target: the firmware image reader and YMODEM's receiving machine. Whatever the bytes,
// the reader gives a fault or an image that builds back to the same bytes, and the machine
// keeps its limits, answers only with protocol bytes and gives the same answers whether the
// bytes come whole or split where the input says.
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "fuzz/FuzzChecks.h"
#include "platform/devio/firmware/FirmwareImage.h"
#include "platform/devio/ymodem/CYmodemReceiveMachine.h"

namespace {

using devio::ymodem::CYmodemReceiveMachine;

void CheckImage(std::string_view bytes) {
    const auto check = devio::firmware::CheckImage(bytes);
    if (!check.Ok()) return;
    FUZZ_CHECK(check.expectedSize == bytes.size());
    const std::string rebuilt = devio::firmware::BuildImage(check.info.model, check.info.version, devio::firmware::ImagePayload(bytes));
    FUZZ_CHECK(rebuilt == bytes);
}

// The answers to the bytes, fed in pieces whose sizes come from `steps`; a 0 step is a silence.
std::string Run(std::string_view bytes, std::string_view steps, CYmodemReceiveMachine& machine) {
    std::string reply = machine.Start();
    std::size_t at = 0, step = 0;
    // Silences alone never end a stream that stays in one state: the rounds are bounded.
    const std::size_t rounds = 2 * bytes.size() + 64;
    while (at < bytes.size() && !machine.Done() && step < rounds) {
        const std::size_t n = steps.empty() ? bytes.size() : static_cast<unsigned char>(steps[step++ % steps.size()]);
        if (n == 0) {
            machine.OnSilence(reply);
            continue;
        }
        machine.Feed(bytes.substr(at, n), reply);
        at += n;
        FUZZ_CHECK(machine.Data().size() <= 4096 + 1024);
    }
    for (const char c : reply)
        FUZZ_CHECK(c == devio::ymodem::kAck || c == devio::ymodem::kNak || c == devio::ymodem::kCan ||
                   c == devio::ymodem::kCrcRequest);
    return reply;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    CheckImage(bytes);
    const CYmodemReceiveMachine::LIMITS limits{4096, 10};
    CYmodemReceiveMachine whole(limits), split(limits);
    // The first bytes choose the split; they never contain a silence here, so both runs see
    // the same stream and must answer alike.
    std::string steps(bytes.substr(0, std::min<std::size_t>(8, bytes.size())));
    for (char& c : steps) c = static_cast<char>(1 + static_cast<unsigned char>(c) % 200);
    const std::string a = Run(bytes, {}, whole);
    const std::string b = Run(bytes, steps, split);
    FUZZ_CHECK(a == b);
    FUZZ_CHECK(whole.State() == split.State());
    FUZZ_CHECK(whole.Data() == split.Data());
    // And with silences in between (the first byte of the steps as 0).
    std::string withSilence = steps;
    if (!withSilence.empty()) withSilence[0] = 0;
    CYmodemReceiveMachine quiet(limits);
    Run(bytes, withSilence, quiet);
    return 0;
}
