#pragma once
// The vocabularies of the modem families this library talks to, as tables: one row per setting
// with its query, its set command, how its answer is read and what values it takes. Another
// model is one more row (its `model` names it), never another class.
#include <optional>
#include <span>

#include "fenklib/modemctl/ModemReplies.h"
#include "platform/devio/IModem.h"

namespace devio {

enum class EModemFamily { Unknown, Uhf, Cellular };

enum class ESettingKind {
    Number,   // a decimal number with units, checked against [min, max]
    Choice,   // one of the row's choices
    Text,     // free text (checked by the row's own rule)
    Hex,      // hexadecimal address pair "TX;RX", written as one address
};

// One value a Choice row takes: the value as the library keeps it (and shows it, unless a
// string-table label is given) and the text the modem reads and writes.
struct SETTING_CHOICE {
    const wchar_t* value;
    const wchar_t* wire;
    unsigned labelId = 0;
};

struct MODEM_SETTING_ROW;
// Reads a row's value from the modem's answer; nothing when the answer is not one.
using SettingParser = std::optional<ustring> (*)(const MODEM_REPLY& reply, const MODEM_SETTING_ROW& row);

struct MODEM_SETTING_ROW {
    const wchar_t* key;         // stable name, also in settings files
    unsigned labelId;           // string-table entry of the setting's name
    ESettingKind kind;
    const wchar_t* model;       // nullptr: every model of the family; else models whose name starts so
    const wchar_t* query;       // the command that reads it
    const wchar_t* set;         // the command that writes it, "%s" standing for the value; nullptr: read-only
    EModemReply shape;
    SettingParser parse;        // nullptr: read by kind
    const wchar_t* units;       // "MHz", "mW" ... (also what follows the number in the answer)
    double min, max;            // Number: the range (a radio's own band limits narrow it)
    int decimals;               // Number: decimals kept and written
    std::span<const SETTING_CHOICE> choices;
    bool identity = false;      // read once to tell who answers (maker, model, firmware, serial)

    bool Writable() const { return set != nullptr; }
    bool AppliesTo(std::wstring_view modelName) const;
    // The row's value read from an answer: the row's own parser, or by its kind.
    std::optional<ustring> Parse(const MODEM_REPLY& reply) const;
    // The text that goes where "%s" stands, for a value as the library keeps it.
    ustring WireValue(const ustring& value) const;
    ustring QueryCommand() const { return query; }
    ustring SetCommand(const ustring& value) const;
    const SETTING_CHOICE* FindChoice(std::wstring_view valueOrWire) const;
};

struct MODEM_FAMILY {
    EModemFamily id;
    unsigned nameId;
    // What tells this family apart on a port: the probe and how its answer is recognised.
    const wchar_t* probe;
    EModemReply probeShape;
    bool (*recognise)(const MODEM_REPLY& reply);
    std::span<const MODEM_SETTING_ROW> rows;
    const wchar_t* modelKey;    // the identity row that names the model
};

const MODEM_FAMILY& UhfFamily();
const MODEM_FAMILY& CellularFamily();
// Every family, in the order autodetection probes them.
std::span<const MODEM_FAMILY* const> ModemFamilies();
const MODEM_FAMILY* FindFamily(EModemFamily id);

// The UHF radio's transmitter power levels in mW, and the channel list's commands.
std::span<const SETTING_CHOICE> UhfPowerLevels();
constexpr int kMaxRadioChannels = 40;

}  // namespace devio
