#pragma once
#include <functional>
#include <optional>
#include <vector>

#include "fenklib/modemctl/CModemChannel.h"
#include "fenklib/modemctl/ModemExceptions.h"
#include "fenklib/modemctl/ModemFamilies.h"
#include "fenklib/modemctl/ModemValidation.h"

namespace devio {

// One setting as read from a modem, in the family's table order.
struct MODEM_VALUE {
    ustring key;
    ustring value;           // as the library keeps it: "438.12500", "1000", "on", "0001;0001"
    bool supported = true;   // false: the modem answered "ERROR" to the query (a model without it)
};
using MODEM_SETTINGS = std::vector<MODEM_VALUE>;
const MODEM_VALUE* FindValue(const MODEM_SETTINGS& settings, std::wstring_view key);

struct MODEM_SIGNAL {
    int rssi = 99;
    int ber = 99;
    std::optional<int> dbm;   // nothing while the modem does not know
    int bars = 0;             // 0..5
};

struct MODEM_NETWORK {
    ERegistration registration = ERegistration::Unknown;
    ustring operatorName;
};

enum class EPinResult { Accepted, Wrong };

// A modem over its command channel: which family it is, who it is, its settings by the
// family's table, a UHF radio's channel list and field strength, a cellular modem's SIM,
// registration, signal and access point. Every command text of a modem is formatted here or
// in the family tables. One thread at a time; another thread stops a command with the abort
// event.
class CModemMate {
public:
    CModemMate(CSmartPtr<IModem> modem, basekit::CEvent* abortEvent = nullptr);

    CModemChannel& Channel() { return m_channel; }

    // Probes the port for each family in turn (ModemFamilies()); throws
    // CModemNotFoundException naming the port, its rate and the probes when none answers.
    EModemFamily Detect();
    // The family the user chose instead of detecting it.
    void UseFamily(EModemFamily family);
    EModemFamily Family() const { return m_family ? m_family->id : EModemFamily::Unknown; }
    const MODEM_FAMILY& Table() const;

    // Reads the identity rows (maker, model, firmware, serial number or IMEI) and names the
    // modem's model on the IModem.
    MODEM_SETTINGS Identify();
    const ustring& ModelName() const { return m_model; }
    // The family's rows for this model, in table order; identity rows first.
    std::vector<const MODEM_SETTING_ROW*> Rows() const;
    const MODEM_SETTING_ROW* FindRow(std::wstring_view key) const;

    // Identity and every setting of the table. A query the modem refuses marks the setting
    // unsupported; an answer that is no value throws.
    MODEM_SETTINGS ReadAll();
    ustring Read(std::wstring_view key);
    // Writes the settings whose wanted value differs from the current one, in table order, then
    // reads back each one written; gives the current settings with those read back (a power
    // the radio rounded shows its level). A wanted value that does not pass its check throws
    // CModemRefusal before anything is sent; a failure on the way throws CModemWriteException
    // naming the setting and those already written.
    MODEM_SETTINGS Write(const MODEM_SETTINGS& current, const MODEM_SETTINGS& wanted);
    // Checks a typed value for a setting against its row and the radio's band as last read.
    MODEM_CHECK Check(std::wstring_view key, const ustring& text) const;
    const RADIO_BAND& Band() const { return m_band; }

    // UHF radio: the channel list (up to 40 entries) as a whole. onEntry(done, total) after each.
    std::vector<RADIO_CHANNEL> ReadChannels(const std::function<void(int, int)>& onEntry = {});
    void WriteChannels(const std::vector<RADIO_CHANNEL>& channels, const std::function<void(int, int)>& onEntry = {});
    // The field strength of the last received message, dBm.
    std::optional<int> ReadFieldStrength();

    // Cellular modem.
    MODEM_SIGNAL ReadSignal();
    MODEM_NETWORK ReadNetwork();
    ESimState ReadSimState();
    // The PIN the user typed: sent only when the SIM asks for one and the PIN has 4 to 8 digits.
    // After two wrong PINs the third is sent only with confirmedLastTry (a third wrong one
    // locks the SIM); otherwise CModemRefusal, nothing sent.
    EPinResult EnterPin(const ustring& pin, bool confirmedLastTry = false);
    // A PIN kept from earlier, sent without asking: never once a PIN was refused for this SIM
    // in this process (CModemRefusal), so an automatic PIN is wrong at most once.
    EPinResult SendStoredPin(const ustring& pin);
    int WrongPins() const;
    ustring ReadApn();
    void WriteApn(const ustring& apn);

private:
    const MODEM_SETTING_ROW& RowOf(std::wstring_view key) const;
    std::optional<ustring> ReadRow(const MODEM_SETTING_ROW& row);
    void NoteBand(const MODEM_SETTINGS& settings);
    ustring SimKey() const;
    void RequireFamily(EModemFamily family) const;

    CModemChannel m_channel;
    const MODEM_FAMILY* m_family = nullptr;
    ustring m_model;
    ustring m_imei;
    RADIO_BAND m_band;
};

}  // namespace devio
