#include "fenklib/modemctl/ModemReplies.h"

#include <charconv>
#include <cmath>
#include <cwctype>
#include <string>
#include <vector>

namespace devio::modemreply {

namespace {

bool IsBlank(wchar_t c) { return c == L' ' || c == L'\t'; }

std::wstring_view Trim(std::wstring_view t) {
    while (!t.empty() && IsBlank(t.front())) t.remove_prefix(1);
    while (!t.empty() && IsBlank(t.back())) t.remove_suffix(1);
    return t;
}

// The ASCII bytes of a wide text; nothing when it holds anything else.
std::optional<std::string> Ascii(std::wstring_view t) {
    std::string out;
    out.reserve(t.size());
    for (const wchar_t c : t) {
        if (c < 0x20 || c > 0x7E) return std::nullopt;
        out += static_cast<char>(c);
    }
    return out;
}

bool EqualsNoCase(std::wstring_view a, std::wstring_view b) {
    if (a.size() != b.size()) return false;
    for (size_t i = 0; i < a.size(); ++i)
        if (std::towlower(static_cast<wint_t>(a[i])) != std::towlower(static_cast<wint_t>(b[i]))) return false;
    return true;
}

// A decimal number in the C locale's form: digits, one optional point, an optional sign.
std::optional<double> Number(std::wstring_view t) {
    const auto a = Ascii(t);
    if (!a || a->empty()) return std::nullopt;
    const char* first = a->data();
    const char* last = first + a->size();
    if (*first == '+') ++first;
    for (const char* p = first; p != last; ++p)
        if (!(std::isdigit(static_cast<unsigned char>(*p)) || *p == '.' || (*p == '-' && p == first))) return std::nullopt;
    double v = 0;
    const auto r = std::from_chars(first, last, v, std::chars_format::fixed);
    if (r.ec != std::errc() || r.ptr != last || !std::isfinite(v)) return std::nullopt;
    return v;
}

// The text after "<prefix>" with blanks cut, when the line starts so.
std::optional<std::wstring_view> After(std::wstring_view line, std::wstring_view prefix) {
    line = Trim(line);
    if (line.substr(0, prefix.size()) != prefix) return std::nullopt;
    return Trim(line.substr(prefix.size()));
}

// Comma-separated fields; quoted fields keep their commas and lose their quotes.
std::vector<std::wstring> Fields(std::wstring_view t, std::vector<bool>* quoted = nullptr) {
    std::vector<std::wstring> out;
    std::wstring item;
    bool inQuote = false, wasQuoted = false;
    for (const wchar_t c : t) {
        if (c == L'"') {
            inQuote = !inQuote;
            wasQuoted = true;
            continue;
        }
        if (c == L',' && !inQuote) {
            out.push_back(std::wstring(Trim(item)));
            if (quoted) quoted->push_back(wasQuoted);
            item.clear();
            wasQuoted = false;
            continue;
        }
        item += c;
    }
    out.push_back(inQuote ? std::wstring(item) : std::wstring(Trim(item)));
    if (quoted) quoted->push_back(wasQuoted);
    return out;
}

std::optional<long long> Whole(std::wstring_view t) {
    const auto a = Ascii(Trim(t));
    if (!a || a->empty()) return std::nullopt;
    const char* first = a->data();
    const char* last = first + a->size();
    if (*first == '+') ++first;
    long long v = 0;
    const auto r = std::from_chars(first, last, v);
    if (r.ec != std::errc() || r.ptr != last) return std::nullopt;
    return v;
}

std::optional<unsigned> Hex16(std::wstring_view t) {
    const auto a = Ascii(Trim(t));
    if (!a || a->empty() || a->size() > 4) return std::nullopt;
    unsigned v = 0;
    const auto r = std::from_chars(a->data(), a->data() + a->size(), v, 16);
    if (r.ec != std::errc() || r.ptr != a->data() + a->size()) return std::nullopt;
    return v;
}

}  // namespace

std::optional<double> ParseQuantity(std::wstring_view text, std::wstring_view unit) {
    text = Trim(text);
    size_t end = 0;
    while (end < text.size() && !IsBlank(text[end]) && (std::iswdigit(static_cast<wint_t>(text[end])) || text[end] == L'.' ||
                                                         text[end] == L'-' || text[end] == L'+' || text[end] == L','))
        ++end;
    const std::wstring_view number = text.substr(0, end);
    const std::wstring_view rest = Trim(text.substr(end));
    if (number.find(L',') != std::wstring_view::npos) return std::nullopt;
    if (!rest.empty() && (unit.empty() || !EqualsNoCase(rest, unit))) return std::nullopt;
    return Number(number);
}

std::optional<long long> ParseInteger(std::wstring_view text) { return Whole(text); }

std::optional<std::pair<unsigned, unsigned>> ParseAddressPair(std::wstring_view text) {
    text = Trim(text);
    const size_t semi = text.find(L';');
    if (semi == std::wstring_view::npos) return std::nullopt;
    const auto tx = Hex16(text.substr(0, semi));
    const auto rx = Hex16(text.substr(semi + 1));
    if (!tx || !rx) return std::nullopt;
    return std::make_pair(*tx, *rx);
}

std::optional<RADIO_CHANNEL> ParseChannelEntry(std::wstring_view text) {
    const std::vector<std::wstring> f = Fields(Trim(text));
    if (f.size() != 4) return std::nullopt;
    const auto number = After(f[0], L"CH");
    if (!number) return std::nullopt;
    const auto n = Whole(*number);
    const auto freq = ParseQuantity(f[1], L"MHz");
    const auto spacing = ParseQuantity(f[2], L"kHz");
    const auto power = ParseQuantity(f[3], L"mW");
    if (!n || !freq || !spacing || !power || *n < 0 || *n > 999999 || *power < 0 || *power > 99999 ||
        *power != std::floor(*power) || *freq < 0 || *spacing < 0)
        return std::nullopt;
    return RADIO_CHANNEL{static_cast<int>(*n), *freq, *spacing, static_cast<int>(*power)};
}

std::optional<CSQ_READING> ParseCsq(std::wstring_view line) {
    const auto body = After(line, L"+CSQ:");
    if (!body) return std::nullopt;
    const auto f = Fields(*body);
    if (f.size() != 2) return std::nullopt;
    const auto rssi = Whole(f[0]);
    const auto ber = Whole(f[1]);
    if (!rssi || !ber || !((*rssi >= 0 && *rssi <= 31) || *rssi == 99) || !((*ber >= 0 && *ber <= 7) || *ber == 99))
        return std::nullopt;
    return CSQ_READING{static_cast<int>(*rssi), static_cast<int>(*ber)};
}

std::optional<ERegistration> ParseCreg(std::wstring_view line) {
    const auto body = After(line, L"+CREG:");
    if (!body) return std::nullopt;
    const auto f = Fields(*body);
    // The query's answer is "<n>,<stat>[,<lac>,<ci>[,<AcT>]]"; an unsolicited one is "<stat>[,...]".
    const auto stat = Whole(f.size() >= 2 ? f[1] : f[0]);
    if (!stat || *stat < 0 || *stat > 5) return std::nullopt;
    return static_cast<ERegistration>(*stat);
}

std::optional<ustring> ParseCops(std::wstring_view line) {
    const auto body = After(line, L"+COPS:");
    if (!body) return std::nullopt;
    std::vector<bool> quoted;
    const auto f = Fields(*body, &quoted);
    const auto mode = Whole(f[0]);
    if (!mode || *mode < 0 || *mode > 4) return std::nullopt;
    if (f.size() == 1) return ustring();
    if (f.size() < 3 || !Whole(f[1]) || !quoted[2]) return std::nullopt;
    return ustring(f[2]);
}

std::optional<ESimState> ParseCpin(std::wstring_view line) {
    const auto body = After(line, L"+CPIN:");
    if (!body) return std::nullopt;
    if (*body == L"READY") return ESimState::Ready;
    if (*body == L"SIM PIN") return ESimState::PinRequired;
    if (*body == L"SIM PUK") return ESimState::PukRequired;
    return ESimState::Unknown;
}

std::optional<ustring> ParseCgdcont(std::wstring_view line, int cid) {
    const auto body = After(line, L"+CGDCONT:");
    if (!body) return std::nullopt;
    std::vector<bool> quoted;
    const auto f = Fields(*body, &quoted);
    if (f.size() < 3 || Whole(f[0]) != cid) return std::nullopt;
    return ustring(f[2]);
}

std::optional<int> ParseCmeError(std::wstring_view line) {
    const auto body = After(line, L"+CME ERROR:");
    if (!body) return std::nullopt;
    const auto n = Whole(*body);
    if (!n || *n < 0 || *n > 65535) return std::nullopt;
    return static_cast<int>(*n);
}

ustring StripInfoPrefix(std::wstring_view line, std::wstring_view command) {
    line = Trim(line);
    // "AT+CGMI" answers "+CGMI: Maker" on some modems and "Maker" on others.
    if (command.substr(0, 2) == L"AT") command.remove_prefix(2);
    if (!command.empty() && command.front() == L'+' && line.substr(0, command.size()) == command &&
        line.size() > command.size() && line[command.size()] == L':')
        return ustring(Trim(line.substr(command.size() + 1)));
    return ustring(line);
}

std::optional<int> RssiToDbm(int rssi) {
    if (rssi < 0 || rssi > 31) return std::nullopt;
    return -113 + 2 * rssi;
}

int RssiToBars(int rssi) {
    if (rssi < 2 || rssi > 31) return 0;
    if (rssi >= 20) return 5;
    if (rssi >= 15) return 4;
    if (rssi >= 10) return 3;
    if (rssi >= 6) return 2;
    return 1;
}

ustring FormatFixed(double value, int decimals) {
    // Room for the largest double written out in full.
    char buffer[400];
    const auto r = std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed, decimals);
    return ustring::FromUtf8(std::string_view(buffer, r.ec == std::errc() ? static_cast<size_t>(r.ptr - buffer) : 0));
}

}  // namespace devio::modemreply
