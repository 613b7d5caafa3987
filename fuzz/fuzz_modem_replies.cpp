// Fuzz target: the readers of modem answers and the family tables' rows. Whatever a modem (or
// the noise on its line) sends, they return; a value they give can be written back and read
// again as the same value.
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "fenklib/modemctl/ModemFamilies.h"
#include "fenklib/modemctl/ModemReplies.h"
#include "fenklib/modemctl/ModemValidation.h"
#include "fuzz/FuzzChecks.h"
#include "platform/devio/CModem.h"

namespace {

using namespace devio;
using namespace devio::modemreply;

// Bytes as the modem link turns them into text: one wide character per byte.
std::vector<ustring> Lines(const std::uint8_t* data, std::size_t size) {
    std::vector<ustring> lines(1);
    for (std::size_t i = 0; i < size; ++i) {
        if (data[i] == '\r' || data[i] == '\n') {
            if (!lines.back().empty()) lines.emplace_back();
            continue;
        }
        lines.back() += static_cast<wchar_t>(data[i]);
    }
    if (lines.back().empty()) lines.pop_back();
    return lines;
}

void CheckLine(const ustring& line) {
    if (const auto v = ParseQuantity(line, L"MHz")) {
        FUZZ_CHECK(std::isfinite(*v));
        if (std::fabs(*v) < 1e9) {
            const auto again = ParseQuantity(FormatFixed(*v, 6) + L" MHz", L"MHz");
            FUZZ_CHECK(again && std::fabs(*again - *v) <= 1e-6);
        }
    }
    if (const auto c = ParseChannelEntry(line)) {
        FUZZ_CHECK(c->number >= 0 && c->powerMw >= 0 && c->frequencyMHz >= 0 && c->spacingKHz >= 0);
        if (c->frequencyMHz < 1e9 && c->spacingKHz < 1e9) {
            const ustring written = ustring::Format(L"CH %d, ", c->number) + FormatFixed(c->frequencyMHz, 6) + L" MHz, " +
                                    FormatFixed(c->spacingKHz, 3) + L" kHz, " + ustring::Format(L"%d mW", c->powerMw);
            const auto again = ParseChannelEntry(written);
            FUZZ_CHECK(again && again->number == c->number && again->powerMw == c->powerMw);
            FUZZ_CHECK(std::fabs(again->frequencyMHz - c->frequencyMHz) <= 1e-6);
        }
    }
    if (const auto csq = ParseCsq(line)) {
        FUZZ_CHECK((csq->rssi >= 0 && csq->rssi <= 31) || csq->rssi == 99);
        const int bars = RssiToBars(csq->rssi);
        FUZZ_CHECK(bars >= 0 && bars <= 5);
        FUZZ_CHECK(RssiToDbm(csq->rssi).has_value() == (csq->rssi != 99));
    }
    if (const auto reg = ParseCreg(line)) FUZZ_CHECK(static_cast<int>(*reg) >= 0 && static_cast<int>(*reg) <= 5);
    if (const auto pair = ParseAddressPair(line)) FUZZ_CHECK(pair->first <= 0xFFFF && pair->second <= 0xFFFF);
    if (const auto name = ParseCops(line)) FUZZ_CHECK(name->size() <= line.size());
    if (const auto apn = ParseCgdcont(line, 1)) FUZZ_CHECK(apn->size() <= line.size());
    if (const auto code = ParseCmeError(line)) FUZZ_CHECK(*code >= 0);
    ParseCpin(line);
    ParseInteger(line);
    FUZZ_CHECK(StripInfoPrefix(line, L"AT+CGMI").size() <= line.size());
}

void CheckRows(const MODEM_FAMILY& family, const MODEM_REPLY& reply) {
    for (const auto& row : family.rows) {
        const auto value = row.Parse(reply);
        if (!value) continue;
        if (row.kind == ESettingKind::Choice && !row.choices.empty()) FUZZ_CHECK(row.FindChoice(*value) != nullptr);
        if (row.kind == ESettingKind::Number && !value->empty()) FUZZ_CHECK(ParseQuantity(*value, L"").has_value());
        // A value read from the modem, written back, passes through the same command shape.
        if (row.Writable()) FUZZ_CHECK(!row.SetCommand(*value).empty());
        if (row.Writable() && row.kind != ESettingKind::Text) CheckSettingValue(row, *value);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::vector<ustring> lines = Lines(data, size);
    for (const auto& line : lines) {
        CheckLine(line);
        MODEM_REPLY single;
        single.lines = {line};
        single.final = line;
        single.error = CModem::IsErrorResult(line);
        CheckRows(UhfFamily(), single);
    }
    MODEM_REPLY final;
    final.lines = lines;
    if (!lines.empty() && CModem::IsFinalResult(lines.back())) {
        final.final = lines.back();
        final.lines.pop_back();
        final.error = CModem::IsErrorResult(final.final);
    }
    CheckRows(CellularFamily(), final);
    return 0;
}
