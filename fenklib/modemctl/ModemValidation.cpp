#include "fenklib/modemctl/ModemValidation.h"

#include <cwctype>

#include "fenklib/resources/FenkResources.h"
#include "fenklib/resources/StringIds.h"

namespace devio {

namespace {

using modemreply::FormatFixed;
using modemreply::ParseQuantity;

ustring Text(unsigned id) {
    ustring s;
    s.load(FenkResources(), id);
    return s;
}

MODEM_CHECK Accept(ustring value) { return MODEM_CHECK{true, std::move(value), 0, {}}; }

template <typename... Args>
MODEM_CHECK Refuse(unsigned id, const Args&... args) {
    MODEM_CHECK c;
    c.reasonId = id;
    if constexpr (sizeof...(Args) == 0) c.reason = Text(id);
    else c.reason = ustring::Format(Text(id).c_str(), args...);
    return c;
}

ustring ChoiceList(const MODEM_SETTING_ROW& row) {
    ustring list;
    for (const auto& c : row.choices) {
        if (!list.empty()) list += L", ";
        list += c.labelId ? Text(c.labelId) : ustring(c.value);
    }
    return list;
}

// Number rows: a comma is never a decimal point to a modem, whatever the user's locale says.
MODEM_CHECK CheckNumber(const ustring& text, double lo, double hi, int decimals, const wchar_t* units, unsigned labelId) {
    const ustring t = text.Trimmed();
    if (t.find(L',') != ustring::npos) return Refuse(IDS_MODEM_BAD_COMMA, t);
    const auto v = ParseQuantity(t, units);
    if (!v) return Refuse(IDS_MODEM_BAD_NUMBER, t);
    if (*v < lo || *v > hi)
        return Refuse(IDS_MODEM_BAD_RANGE, Text(labelId), FormatFixed(*v, decimals), ustring(units), FormatFixed(lo, decimals),
                      FormatFixed(hi, decimals), ustring(units));
    return Accept(FormatFixed(*v, decimals));
}

bool IsHex(wchar_t c) { return std::iswxdigit(static_cast<wint_t>(c)) && c < 0x80; }

MODEM_CHECK CheckHex(const ustring& text) {
    // "1A2B" or "1A2B;1A2B": one address, or the pair as the radio shows it (transmit first).
    const ustring t = text.Trimmed();
    const ustring tx = t.substr(0, t.find(L';'));
    if (tx.empty() || tx.size() > 4) return Refuse(IDS_MODEM_BAD_HEX);
    for (const wchar_t c : t)
        if (!IsHex(c) && c != L';') return Refuse(IDS_MODEM_BAD_HEX);
    ustring value = tx;
    for (auto& c : value) c = static_cast<wchar_t>(std::towupper(static_cast<wint_t>(c)));
    while (value.size() < 4) value.insert(value.begin(), L'0');
    return Accept(value + L";" + value);
}

}  // namespace

MODEM_CHECK CheckFrequency(const ustring& text, const RADIO_BAND& band, unsigned labelId) {
    const MODEM_SETTING_ROW* row = nullptr;
    for (const auto& r : UhfFamily().rows)
        if (std::wstring_view(r.key) == L"frequency") row = &r;
    const double lo = band.Known() ? band.lowMHz : row->min;
    const double hi = band.Known() ? band.highMHz : row->max;
    return CheckNumber(text, lo, hi, row->decimals, row->units, labelId);
}

MODEM_CHECK CheckSettingValue(const MODEM_SETTING_ROW& row, const ustring& text, const RADIO_BAND& band) {
    if (!row.Writable()) return Refuse(IDS_MODEM_READ_ONLY, Text(row.labelId));
    const std::wstring_view key(row.key);
    if (key == L"frequency") return CheckFrequency(text, band, row.labelId);
    if (key == L"apn") return CheckApn(text);
    switch (row.kind) {
        case ESettingKind::Number: return CheckNumber(text, row.min, row.max, row.decimals, row.units, row.labelId);
        case ESettingKind::Hex: return CheckHex(text);
        case ESettingKind::Choice: {
            const ustring t = text.Trimmed();
            if (const SETTING_CHOICE* c = row.FindChoice(t)) return Accept(c->value);
            if (key == L"power") {
                ustring levels;
                for (const auto& c : row.choices) levels += (levels.empty() ? L"" : L", ") + ustring(c.value);
                if (t.find(L',') != ustring::npos) return Refuse(IDS_MODEM_BAD_COMMA, t);
                return Refuse(IDS_MODEM_BAD_LEVEL, t, levels);
            }
            return Refuse(IDS_MODEM_BAD_CHOICE, t, ChoiceList(row));
        }
        case ESettingKind::Text: return Accept(text);
    }
    return Refuse(IDS_MODEM_BAD_CHOICE, text, ChoiceList(row));
}

MODEM_CHECK CheckPin(const ustring& pin) {
    if (pin.size() < 4 || pin.size() > 8) return Refuse(IDS_MODEM_BAD_PIN);
    for (const wchar_t c : pin)
        if (c < L'0' || c > L'9') return Refuse(IDS_MODEM_BAD_PIN);
    return Accept(pin);
}

MODEM_CHECK CheckApn(const ustring& apn) {
    if (apn.find(L'"') != ustring::npos) return Refuse(IDS_MODEM_BAD_APN_QUOTE);
    if (apn.empty() || apn.size() > 99) return Refuse(IDS_MODEM_BAD_APN);
    for (const wchar_t c : apn)
        if (c <= 0x20 || c >= 0x7F || c == L',' || c == L';') return Refuse(IDS_MODEM_BAD_APN);
    return Accept(apn);
}

MODEM_CHECK CheckChannel(const RADIO_CHANNEL& channel, const RADIO_BAND& band) {
    const auto fail = [&](const MODEM_CHECK& why) {
        return Refuse(IDS_MODEM_BAD_CHANNEL, channel.number, why.reason);
    };
    const MODEM_CHECK f = CheckFrequency(FormatFixed(channel.frequencyMHz, 6), band, IDS_MODEM_FREQUENCY);
    if (!f.ok) return fail(f);
    for (const auto& r : UhfFamily().rows) {
        const std::wstring_view key(r.key);
        if (key == L"spacing") {
            if (const MODEM_CHECK s = CheckSettingValue(r, FormatFixed(channel.spacingKHz, 3), band); !s.ok) return fail(s);
        } else if (key == L"active_channel") {
            if (channel.number < r.min || channel.number > r.max)
                return fail(Refuse(IDS_MODEM_BAD_NUMBER, FormatFixed(channel.number, 0)));
        }
    }
    if (channel.powerMw < 0 || channel.powerMw > 99999) return fail(Refuse(IDS_MODEM_BAD_NUMBER, FormatFixed(channel.powerMw, 0)));
    return Accept({});
}

MODEM_CHECK CheckChannelCount(std::size_t count) {
    if (count > static_cast<std::size_t>(kMaxRadioChannels))
        return Refuse(IDS_MODEM_TOO_MANY_CHANNELS, kMaxRadioChannels, static_cast<int>(count));
    return Accept({});
}

}  // namespace devio
