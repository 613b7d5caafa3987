// The modem command layer against a simulated UHF radio on a pseudo-terminal at 9600 bit/s, the
// simulator pacing both directions byte by byte at the line rate: reading every setting of the
// radio's table, and writing a 40-entry channel list. Each is set against its floor, the time
// the bytes that crossed the line take at ten bit-times per byte; commands and answers take
// turns, so the floor counts both directions.
#include <benchmark/benchmark.h>

#include <chrono>
#include <memory>

#include "fenklib/modemctl/CModemMate.h"
#include "platform/devio/CModem.h"
#include "tools/rcvsim/ModemSim.h"

namespace {

constexpr int kRate = 9600;

struct Radio {
    std::unique_ptr<rcvsim::ModemSim> sim;
    basekit::CSmartPtr<devio::CModem> modem;
    Radio() {
        rcvsim::ModemOptions options;
        options.lineRate = kRate;
        options.throttle = true;
        sim = std::make_unique<rcvsim::ModemSim>(options);
        modem = devio::CModem::Open(devio::IPortAddr::Parse(
            basekit::ustring::FromUtf8("serial:" + sim->StartPty() + "?baud=" + std::to_string(kRate))));
        modem->WireLog().Enable(true);
    }
    std::uint64_t LineBytes() const {
        std::uint64_t n = 0;
        for (const auto& e : modem->WireLog().Entries()) n += e.bytes.size();
        return n;
    }
};

template <typename Work>
void Measure(benchmark::State& state, Radio& radio, Work work) {
    double seconds = 0;
    std::uint64_t bytes = 0;
    for (auto _ : state) {
        radio.modem->WireLog().Clear();
        const auto start = std::chrono::steady_clock::now();
        work();
        const double s = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
        state.SetIterationTime(s);
        seconds += s;
        bytes += radio.LineBytes();
    }
    const double floor = static_cast<double>(bytes) * 10 / kRate;
    state.counters["line_bytes"] = static_cast<double>(bytes) / static_cast<double>(state.iterations());
    state.counters["floor_ms"] = 1000 * floor / static_cast<double>(state.iterations());
    state.counters["ratio"] = seconds / floor;
}

void BM_ReadAllSettings(benchmark::State& state) {
    Radio radio;
    devio::CModemMate mate(radio.modem.Get());
    mate.Detect();
    std::size_t rows = 0;
    Measure(state, radio, [&] { rows = mate.ReadAll().size(); });
    state.counters["settings"] = static_cast<double>(rows);
}
BENCHMARK(BM_ReadAllSettings)->UseManualTime()->Iterations(5)->Unit(benchmark::kMillisecond);

void BM_WriteChannelList(benchmark::State& state) {
    Radio radio;
    devio::CModemMate mate(radio.modem.Get());
    mate.Detect();
    mate.ReadAll();
    std::vector<devio::RADIO_CHANNEL> list;
    for (int i = 0; i < devio::kMaxRadioChannels; ++i) list.push_back(devio::RADIO_CHANNEL{i + 1, 440.0 + 0.025 * i, 12.5, 500});
    Measure(state, radio, [&] { mate.WriteChannels(list); });
}
BENCHMARK(BM_WriteChannelList)->UseManualTime()->Iterations(3)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
