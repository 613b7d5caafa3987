#pragma once
// Readers of what modems answer and writers of the numbers they take. Plain functions of text,
// no I/O: a reply that does not have the expected shape gives nothing, never an exception, so
// they can be fed any bytes (fuzz/fuzz_modem_replies.cpp).
#include <optional>
#include <string_view>
#include <utility>

#include "platform/basekit/ustring.h"

namespace devio {

using basekit::ustring;

// One entry of a UHF radio's channel list.
struct RADIO_CHANNEL {
    int number = 0;            // the channel number the crew uses
    double frequencyMHz = 0;   // operating frequency
    double spacingKHz = 0;     // 12.5, 20 or 25
    int powerMw = 0;           // 0: the radio's current power
    bool operator==(const RADIO_CHANNEL&) const = default;
};

// 3GPP TS 27.007 network registration (+CREG stat).
enum class ERegistration { NotRegistered = 0, Home = 1, Searching = 2, Denied = 3, Unknown = 4, Roaming = 5 };
// What the SIM asks for (+CPIN).
enum class ESimState { Unknown, Ready, PinRequired, PukRequired, NotInserted };

struct CSQ_READING {
    int rssi = 99;   // 0..31, 99 unknown
    int ber = 99;    // 0..7, 99 unknown
};

namespace modemreply {

// "438.12500 MHz", "1000 mW", "-97 dBm", "12.5 kHz", or the bare number: the number, written
// with a decimal point (a comma is refused, as the radios refuse it). When unit is not empty a
// unit after the number must be that one (case ignored).
std::optional<double> ParseQuantity(std::wstring_view text, std::wstring_view unit);
// A whole decimal number, sign allowed, nothing else but blanks around it.
std::optional<long long> ParseInteger(std::wstring_view text);
// "0001;0001": transmit and receive address, hexadecimal 0000-FFFF each.
std::optional<std::pair<unsigned, unsigned>> ParseAddressPair(std::wstring_view text);
// "CH 1, 430.150000 MHz, 25.0 kHz, 100 mW".
std::optional<RADIO_CHANNEL> ParseChannelEntry(std::wstring_view text);
// "+CSQ: 20,99".
std::optional<CSQ_READING> ParseCsq(std::wstring_view line);
// "+CREG: 0,1" (and the longer forms with location and cell).
std::optional<ERegistration> ParseCreg(std::wstring_view line);
// "+COPS: 0,0,\"Operator\",7": the operator's name; the empty text for "+COPS: 0" (none).
std::optional<ustring> ParseCops(std::wstring_view line);
// "+CPIN: READY", "+CPIN: SIM PIN", "+CPIN: SIM PUK".
std::optional<ESimState> ParseCpin(std::wstring_view line);
// "+CGDCONT: 1,\"IP\",\"apn.name\",..." for context cid: the access point name.
std::optional<ustring> ParseCgdcont(std::wstring_view line, int cid);
// "+CME ERROR: 16": the number.
std::optional<int> ParseCmeError(std::wstring_view line);
// "+CGMI: Maker" or "Maker": the text after an echoed prefix of the command's own name.
ustring StripInfoPrefix(std::wstring_view line, std::wstring_view command);

// +CSQ rssi as dBm (-113 .. -51); nothing for 99 or a value outside the table.
std::optional<int> RssiToDbm(int rssi);
// Bars 0..5 a handheld shows for rssi (99: 0).
int RssiToBars(int rssi);

// Numbers to a modem: fixed decimals and a decimal point whatever the process locale.
ustring FormatFixed(double value, int decimals);

}  // namespace modemreply
}  // namespace devio
