#include "fenklib/modemctl/ModemFamilies.h"

#include <array>
#include <cstdio>
#include <cwctype>

#include "fenklib/resources/StringIds.h"

namespace devio {

namespace {

using namespace modemreply;

std::wstring_view FirstLine(const MODEM_REPLY& reply) {
    return reply.lines.empty() ? std::wstring_view() : std::wstring_view(reply.lines.front());
}

ustring Hex4(unsigned v) {
    wchar_t buffer[8];
    std::swprintf(buffer, 8, L"%04X", v & 0xFFFFu);
    return buffer;
}

// ---- parsers of rows with an answer of their own shape ----

std::optional<ustring> ParseAddress(const MODEM_REPLY& reply, const MODEM_SETTING_ROW&) {
    if (reply.error) return std::nullopt;
    const auto pair = ParseAddressPair(FirstLine(reply));
    if (!pair) return std::nullopt;
    return Hex4(pair->first) + L";" + Hex4(pair->second);
}

// The first information line that starts with prefix.
std::optional<std::wstring_view> LineWith(const MODEM_REPLY& reply, std::wstring_view prefix) {
    for (const auto& l : reply.lines)
        if (std::wstring_view(l).substr(0, prefix.size()) == prefix) return std::wstring_view(l);
    return std::nullopt;
}

std::optional<ustring> ParseSimState(const MODEM_REPLY& reply, const MODEM_SETTING_ROW&) {
    if (reply.error) {
        // 10: no SIM; 13: SIM failure. Both mean the modem cannot use a SIM.
        const auto code = ParseCmeError(reply.final);
        if (code && (*code == 10 || *code == 13)) return ustring(L"absent");
        return std::nullopt;
    }
    const auto line = LineWith(reply, L"+CPIN:");
    if (!line) return std::nullopt;
    switch (ParseCpin(*line).value_or(ESimState::Unknown)) {
        case ESimState::Ready: return ustring(L"ready");
        case ESimState::PinRequired: return ustring(L"pin");
        case ESimState::PukRequired: return ustring(L"puk");
        default: return ustring(L"unknown");
    }
}

std::optional<ustring> ParseRegistration(const MODEM_REPLY& reply, const MODEM_SETTING_ROW&) {
    const auto line = LineWith(reply, L"+CREG:");
    if (reply.error || !line) return std::nullopt;
    const auto stat = ParseCreg(*line);
    if (!stat) return std::nullopt;
    return FormatFixed(static_cast<int>(*stat), 0);
}

std::optional<ustring> ParseOperator(const MODEM_REPLY& reply, const MODEM_SETTING_ROW&) {
    const auto line = LineWith(reply, L"+COPS:");
    if (reply.error || !line) return std::nullopt;
    return ParseCops(*line);
}

std::optional<ustring> ParseSignal(const MODEM_REPLY& reply, const MODEM_SETTING_ROW&) {
    const auto line = LineWith(reply, L"+CSQ:");
    if (reply.error || !line) return std::nullopt;
    const auto csq = ParseCsq(*line);
    if (!csq) return std::nullopt;
    const auto dbm = RssiToDbm(csq->rssi);
    return dbm ? FormatFixed(*dbm, 0) : ustring();
}

std::optional<ustring> ParseApn(const MODEM_REPLY& reply, const MODEM_SETTING_ROW&) {
    if (reply.error) return std::nullopt;
    for (const auto& l : reply.lines)
        if (const auto apn = ParseCgdcont(l, 1)) return apn;
    return ustring();   // no context 1 defined yet
}

bool RecogniseUhf(const MODEM_REPLY& reply) { return !reply.error && ParseQuantity(reply.final, L"MHz").has_value(); }
bool RecogniseCellular(const MODEM_REPLY& reply) { return reply.final == L"OK"; }

// ---- the tables ----

constexpr SETTING_CHOICE kOnOffDigit[] = {{L"on", L"1", IDS_MODEM_ON}, {L"off", L"0", IDS_MODEM_OFF}};
constexpr SETTING_CHOICE kOnOffWord[] = {{L"on", L"ON", IDS_MODEM_ON}, {L"off", L"OFF", IDS_MODEM_OFF}};
constexpr SETTING_CHOICE kSpacing[] = {{L"12.5", L"12.5"}, {L"20.0", L"20.0"}, {L"25.0", L"25.0"}};
constexpr SETTING_CHOICE kPower[] = {{L"10", L"10"},   {L"20", L"20"},   {L"50", L"50"},  {L"100", L"100"},
                                     {L"200", L"200"}, {L"500", L"500"}, {L"1000", L"1000"}};
// The over-the-air protocols ("radio compatibility"): by index on one model, by name on another.
constexpr SETTING_CHOICE kProtocolByIndex[] = {
    {L"SATELLINE-3AS", L"0"}, {L"PacCrest-4FSK", L"1"}, {L"PacCrest-GMSK", L"2"},
    {L"PacCrest-FST", L"3"},  {L"TrimTalk450s", L"4"},  {L"TrimMark III", L"5"}};
constexpr SETTING_CHOICE kProtocolByName[] = {
    {L"SATELLINE-3AS", L"SATELLINE-3AS"}, {L"PacCrest-4FSK", L"PacCrest-4FSK"}, {L"PacCrest-GMSK", L"PacCrest-GMSK"},
    {L"PacCrest-FST", L"PacCrest-FST"},   {L"TrimTalk450s", L"TrimTalk450s"},   {L"TrimMark III", L"TrimMark III"}};
constexpr SETTING_CHOICE kSimStates[] = {{L"ready", L"", IDS_MODEM_SIM_READY},   {L"pin", L"", IDS_MODEM_SIM_PIN},
                                         {L"puk", L"", IDS_MODEM_SIM_PUK},       {L"absent", L"", IDS_MODEM_SIM_ABSENT},
                                         {L"unknown", L"", IDS_MODEM_SIM_UNKNOWN}};
constexpr SETTING_CHOICE kRegistrations[] = {{L"0", L"0", IDS_MODEM_REG_NONE},   {L"1", L"1", IDS_MODEM_REG_HOME},
                                             {L"2", L"2", IDS_MODEM_REG_SEARCHING}, {L"3", L"3", IDS_MODEM_REG_DENIED},
                                             {L"4", L"4", IDS_MODEM_REG_UNKNOWN}, {L"5", L"5", IDS_MODEM_REG_ROAMING}};

using K = ESettingKind;
constexpr auto S = EModemReply::Single;
constexpr auto F = EModemReply::Final;

// clang-format off
const MODEM_SETTING_ROW kUhfRows[] = {
    // key               label                      kind       model      query    set          shape parser        units   min     max      dec choices
    {L"model",           IDS_MODEM_MODEL,           K::Text,   nullptr,   L"SL%P?", nullptr,     S, nullptr,        L"",    0,      0,       0, {}, true},
    {L"firmware",        IDS_MODEM_FIRMWARE,        K::Text,   nullptr,   L"SL%V?", nullptr,     S, nullptr,        L"",    0,      0,       0, {}, true},
    {L"serial",          IDS_MODEM_SERIAL,          K::Text,   nullptr,   L"SL%S?", nullptr,     S, nullptr,        L"",    0,      0,       0, {}, true},
    {L"band_low",        IDS_MODEM_BAND_LOW,        K::Number, nullptr,   L"SL!D?", nullptr,     S, nullptr,        L"MHz", 100,    1000,    5, {}},
    {L"band_high",       IDS_MODEM_BAND_HIGH,       K::Number, nullptr,   L"SL!U?", nullptr,     S, nullptr,        L"MHz", 100,    1000,    5, {}},
    {L"frequency",       IDS_MODEM_FREQUENCY,       K::Number, nullptr,   L"SL&F?", L"SL&F=%s",  S, nullptr,        L"MHz", 100,    1000,    5, {}},
    {L"centre",          IDS_MODEM_CENTRE,          K::Number, nullptr,   L"SL&C?", nullptr,     S, nullptr,        L"MHz", 100,    1000,    5, {}},
    {L"spacing",         IDS_MODEM_SPACING,         K::Choice, nullptr,   L"SL&W?", L"SL&W=%s",  S, nullptr,        L"kHz", 0,      0,       1, kSpacing},
    {L"power",           IDS_MODEM_POWER,           K::Choice, nullptr,   L"SL@P?", L"SL@P=%s",  S, nullptr,        L"mW",  0,      0,       0, kPower},
    {L"protocol",        IDS_MODEM_PROTOCOL,        K::Choice, L"FR-400", L"SL@S?", L"SL@S=%s",  S, nullptr,        L"",    0,      0,       0, kProtocolByIndex},
    {L"protocol",        IDS_MODEM_PROTOCOL,        K::Choice, L"FR-460", L"SL+P?", L"SL+P=%s",  S, nullptr,        L"",    0,      0,       0, kProtocolByName},
    {L"fec",             IDS_MODEM_FEC,             K::Choice, L"FR-400", L"SL@F?", L"SL@F=%s",  S, nullptr,        L"",    0,      0,       0, kOnOffDigit},
    {L"fec",             IDS_MODEM_FEC,             K::Choice, L"FR-460", L"SL+F?", L"SL+F=%s",  S, nullptr,        L"",    0,      0,       0, kOnOffWord},
    {L"address",         IDS_MODEM_ADDRESS,         K::Hex,    nullptr,   L"SL#I?", L"SL#I=%s",  S, ParseAddress,   L"",    0,      0xFFFF,  0, {}},
    {L"channel_list",    IDS_MODEM_CHANNEL_LIST_ON, K::Choice, nullptr,   L"SL$M?", L"SL$M=%s",  S, nullptr,        L"",    0,      0,       0, kOnOffDigit},
    {L"active_channel",  IDS_MODEM_ACTIVE_CHANNEL,  K::Number, nullptr,   L"SL$F?", L"SL$F=%s",  S, nullptr,        L"",    0,      999999,  0, {}},
    {L"default_channel", IDS_MODEM_DEFAULT_CHANNEL, K::Number, nullptr,   L"SL$D?", nullptr,     S, nullptr,        L"",    0,      999999,  0, {}},
    {L"field_strength",  IDS_MODEM_FIELD_STRENGTH,  K::Number, nullptr,   L"SL@R?", nullptr,     S, nullptr,        L"dBm", -200,   0,       0, {}},
};

const MODEM_SETTING_ROW kCellularRows[] = {
    {L"maker",           IDS_MODEM_MAKER,           K::Text,   nullptr,   L"AT+CGMI", nullptr,   F, nullptr,        L"",    0,      0,       0, {}, true},
    {L"model",           IDS_MODEM_MODEL,           K::Text,   nullptr,   L"AT+CGMM", nullptr,   F, nullptr,        L"",    0,      0,       0, {}, true},
    {L"firmware",        IDS_MODEM_FIRMWARE,        K::Text,   nullptr,   L"AT+CGMR", nullptr,   F, nullptr,        L"",    0,      0,       0, {}, true},
    {L"imei",            IDS_MODEM_IMEI,            K::Text,   nullptr,   L"AT+CGSN", nullptr,   F, nullptr,        L"",    0,      0,       0, {}, true},
    {L"sim_state",       IDS_MODEM_SIM_STATE,       K::Choice, nullptr,   L"AT+CPIN?", nullptr,  F, ParseSimState,  L"",    0,      0,       0, kSimStates},
    {L"registration",    IDS_MODEM_REGISTRATION,    K::Choice, nullptr,   L"AT+CREG?", nullptr,  F, ParseRegistration, L"", 0,      0,       0, kRegistrations},
    {L"operator",        IDS_MODEM_OPERATOR,        K::Text,   nullptr,   L"AT+COPS?", nullptr,  F, ParseOperator,  L"",    0,      0,       0, {}},
    {L"signal",          IDS_MODEM_SIGNAL,          K::Number, nullptr,   L"AT+CSQ",   nullptr,  F, ParseSignal,    L"dBm", -113,   -51,     0, {}},
    {L"apn",             IDS_MODEM_APN,             K::Text,   nullptr,   L"AT+CGDCONT?", L"AT+CGDCONT=1,\"IP\",\"%s\"", F, ParseApn, L"", 0, 0, 0, {}},
};
// clang-format on

const MODEM_FAMILY kUhf{EModemFamily::Uhf, IDS_MODEM_FAMILY_UHF, L"SL&F?", S, RecogniseUhf, kUhfRows, L"model"};
const MODEM_FAMILY kCellular{EModemFamily::Cellular, IDS_MODEM_FAMILY_CELLULAR, L"AT", F, RecogniseCellular, kCellularRows, L"model"};
const MODEM_FAMILY* const kFamilies[] = {&kUhf, &kCellular};

bool NumericEqual(std::wstring_view a, std::wstring_view b) {
    const auto x = ParseQuantity(a, L"");
    const auto y = ParseQuantity(b, L"");
    return x && y && *x == *y;
}

}  // namespace

bool MODEM_SETTING_ROW::AppliesTo(std::wstring_view modelName) const {
    return model == nullptr || modelName.substr(0, std::wstring_view(model).size()) == model;
}

const SETTING_CHOICE* MODEM_SETTING_ROW::FindChoice(std::wstring_view text) const {
    for (const auto& c : choices)
        if (text == c.value || (c.wire[0] != 0 && text == c.wire)) return &c;
    // "12.50" is the 12.5 kHz choice; "1000" the 1000 mW one.
    for (const auto& c : choices)
        if (c.wire[0] != 0 && NumericEqual(text, c.wire)) return &c;
    return nullptr;
}

std::optional<ustring> MODEM_SETTING_ROW::Parse(const MODEM_REPLY& reply) const {
    if (parse) return parse(reply, *this);
    if (reply.error) return std::nullopt;
    const std::wstring_view line = FirstLine(reply);
    switch (kind) {
        case K::Number: {
            const auto v = ParseQuantity(line, units);
            if (!v) return std::nullopt;
            return FormatFixed(*v, decimals);
        }
        case K::Choice: {
            std::wstring_view text = line;
            // "1000 mW": the unit is not part of the choice.
            const std::wstring_view unit(units);
            if (!unit.empty() && text.size() > unit.size() && text.substr(text.size() - unit.size()) == unit)
                text = text.substr(0, text.size() - unit.size());
            while (!text.empty() && text.back() == L' ') text.remove_suffix(1);
            const SETTING_CHOICE* c = FindChoice(text);
            if (!c) return std::nullopt;
            return ustring(c->value);
        }
        case K::Text: return StripInfoPrefix(line, query);
        case K::Hex: return std::nullopt;
    }
    return std::nullopt;
}

ustring MODEM_SETTING_ROW::WireValue(const ustring& value) const {
    switch (kind) {
        case K::Choice: {
            const SETTING_CHOICE* c = FindChoice(value);
            return c ? ustring(c->wire) : value;
        }
        case K::Hex: {
            // "SL#I=xxxx" sets the transmit and receive addresses alike.
            ustring tx = value.substr(0, value.find(L';'));
            for (auto& ch : tx) ch = static_cast<wchar_t>(std::towupper(static_cast<wint_t>(ch)));
            while (tx.size() < 4) tx.insert(tx.begin(), L'0');
            return tx;
        }
        default: return value;
    }
}

ustring MODEM_SETTING_ROW::SetCommand(const ustring& value) const {
    ustring command(set ? set : L"");
    const size_t at = command.find(L"%s");
    if (at != ustring::npos) command.replace(at, 2, WireValue(value));
    return command;
}

const MODEM_FAMILY& UhfFamily() { return kUhf; }
const MODEM_FAMILY& CellularFamily() { return kCellular; }
std::span<const MODEM_FAMILY* const> ModemFamilies() { return kFamilies; }
std::span<const SETTING_CHOICE> UhfPowerLevels() { return kPower; }

const MODEM_FAMILY* FindFamily(EModemFamily id) {
    for (const MODEM_FAMILY* f : kFamilies)
        if (f->id == id) return f;
    return nullptr;
}

}  // namespace devio
