#include "fenklib/modemctl/CModemMate.h"

#include <map>
#include <mutex>

#include "fenklib/resources/FenkResources.h"
#include "fenklib/resources/StringIds.h"

namespace devio {

namespace {

using modemreply::FormatFixed;
constexpr const char* kSource = "ModemMate";
// +CME ERROR: 16, "incorrect password".
constexpr int kCmeWrongPassword = 16;
constexpr int kPinAttempts = 3;

ustring Text(unsigned id) {
    ustring s;
    s.load(FenkResources(), id);
    return s;
}

[[noreturn]] void Refuse(int line, unsigned id) { throw CModemRefusal(kSource, line, id, Text(id)); }

// Wrong PINs per SIM for the life of the process: a window opened again must not send a stored
// PIN that one before it saw refused.
class CPinHistory {
public:
    static CPinHistory& Ref() {
        static CPinHistory history;
        return history;
    }
    int Wrong(const ustring& sim) const {
        const std::lock_guard lock(m_mutex);
        const auto it = m_wrong.find(sim);
        return it == m_wrong.end() ? 0 : it->second;
    }
    void Record(const ustring& sim, bool accepted) {
        const std::lock_guard lock(m_mutex);
        if (accepted) m_wrong.erase(sim);
        else ++m_wrong[sim];
    }

private:
    mutable std::mutex m_mutex;
    std::map<ustring, int> m_wrong;
};

ustring ChannelCommand(const wchar_t* format, int value) {
    return ustring::Format(format, value);
}

// "SL$L=Iaa,Nbbbbbb,Fccc.cccccc,Wdd.ddd,Peeeee": decimals by hand, so no locale can put a comma in.
ustring ChannelEntryCommand(int index, const RADIO_CHANNEL& c) {
    return ustring::Format(L"SL$L=I%02d,N%06d,F", index, c.number) + FormatFixed(c.frequencyMHz, 6) + L",W" +
           FormatFixed(c.spacingKHz, 3) + ustring::Format(L",P%05d", c.powerMw);
}

}  // namespace

const MODEM_VALUE* FindValue(const MODEM_SETTINGS& settings, std::wstring_view key) {
    for (const auto& v : settings)
        if (v.key == key) return &v;
    return nullptr;
}

CModemMate::CModemMate(CSmartPtr<IModem> modem, basekit::CEvent* abortEvent) : m_channel(std::move(modem), abortEvent) {}

EModemFamily CModemMate::Detect() {
    std::vector<ustring> tried;
    for (const MODEM_FAMILY* family : ModemFamilies()) {
        tried.push_back(family->probe);
        try {
            const MODEM_REPLY reply = m_channel.Ask(family->probe, family->probeShape, m_channel.ProbeTimeout());
            if (family->recognise(reply)) {
                m_family = family;
                return family->id;
            }
        } catch (const basekit::CWinException& e) {
            // Silence is the answer of a modem of another family; anything else is the link's failure.
            if (e.Code() != basekit::kErrorTimeout) throw;
        }
    }
    const CSmartPtr<IPort> port = m_channel.Modem()->GetPort();
    const ustring name = port && port->GetAddress() ? port->GetAddress()->ToUrl() : ustring();
    throw CModemNotFoundException(kSource, __LINE__, name, m_channel.LineRate(), std::move(tried));
}

void CModemMate::UseFamily(EModemFamily family) { m_family = FindFamily(family); }

const MODEM_FAMILY& CModemMate::Table() const {
    if (!m_family) Refuse(__LINE__, IDS_MODEM_NO_FAMILY);
    return *m_family;
}

void CModemMate::RequireFamily(EModemFamily family) const {
    if (Table().id != family) Refuse(__LINE__, IDS_MODEM_NO_FAMILY);
}

std::vector<const MODEM_SETTING_ROW*> CModemMate::Rows() const {
    std::vector<const MODEM_SETTING_ROW*> rows;
    for (const auto& row : Table().rows)
        if (row.AppliesTo(m_model)) rows.push_back(&row);
    return rows;
}

const MODEM_SETTING_ROW* CModemMate::FindRow(std::wstring_view key) const {
    for (const MODEM_SETTING_ROW* row : Rows())
        if (key == row->key) return row;
    return nullptr;
}

const MODEM_SETTING_ROW& CModemMate::RowOf(std::wstring_view key) const {
    const MODEM_SETTING_ROW* row = FindRow(key);
    if (!row) throw CModemRefusal(kSource, __LINE__, IDS_MODEM_UNKNOWN_SETTING,
                                  ustring::Format(Text(IDS_MODEM_UNKNOWN_SETTING).c_str(), ustring(key)));
    return *row;
}

std::optional<ustring> CModemMate::ReadRow(const MODEM_SETTING_ROW& row) {
    const MODEM_REPLY reply = m_channel.Ask(row.query, row.shape);
    if (auto value = row.Parse(reply)) return value;
    if (reply.error) return std::nullopt;
    const ustring shown = reply.lines.empty() ? reply.final : reply.lines.front();
    throw basekit::CStdException(ustring::Format(Text(IDS_MODEM_BAD_REPLY).c_str(), ustring(row.query), shown), kSource, __LINE__);
}

MODEM_SETTINGS CModemMate::Identify() {
    MODEM_SETTINGS identity;
    for (const auto& row : Table().rows) {
        if (!row.identity) continue;
        const auto value = ReadRow(row);
        identity.push_back(MODEM_VALUE{row.key, value.value_or(ustring()), value.has_value()});
    }
    if (const MODEM_VALUE* model = FindValue(identity, Table().modelKey)) m_model = model->value;
    if (const MODEM_VALUE* imei = FindValue(identity, L"imei")) m_imei = imei->value;
    m_channel.Modem()->SetModelName(m_model);
    return identity;
}

void CModemMate::NoteBand(const MODEM_SETTINGS& settings) {
    const MODEM_VALUE* low = FindValue(settings, L"band_low");
    const MODEM_VALUE* high = FindValue(settings, L"band_high");
    if (!low || !high || !low->supported || !high->supported) return;
    const auto lo = modemreply::ParseQuantity(low->value, L"");
    const auto hi = modemreply::ParseQuantity(high->value, L"");
    if (lo && hi) m_band = RADIO_BAND{*lo, *hi};
}

MODEM_SETTINGS CModemMate::ReadAll() {
    MODEM_SETTINGS settings = Identify();
    for (const MODEM_SETTING_ROW* row : Rows()) {
        if (row->identity) continue;
        const auto value = ReadRow(*row);
        settings.push_back(MODEM_VALUE{row->key, value.value_or(ustring()), value.has_value()});
    }
    NoteBand(settings);
    return settings;
}

ustring CModemMate::Read(std::wstring_view key) {
    const MODEM_SETTING_ROW& row = RowOf(key);
    const auto value = ReadRow(row);
    if (!value) throw basekit::CCommException(kSource, __LINE__, row.query, L"ERROR", L"Modem");
    return *value;
}

MODEM_CHECK CModemMate::Check(std::wstring_view key, const ustring& text) const {
    return CheckSettingValue(RowOf(key), text, m_band);
}

MODEM_SETTINGS CModemMate::Write(const MODEM_SETTINGS& current, const MODEM_SETTINGS& wanted) {
    struct Change {
        const MODEM_SETTING_ROW* row;
        ustring value;
    };
    std::vector<Change> changes;
    for (const MODEM_SETTING_ROW* row : Rows()) {
        const MODEM_VALUE* want = FindValue(wanted, row->key);
        const MODEM_VALUE* have = FindValue(current, row->key);
        if (!want || !row->Writable() || (have && have->value == want->value)) continue;
        const MODEM_CHECK check = CheckSettingValue(*row, want->value, m_band);
        if (!check.ok) throw CModemRefusal(kSource, __LINE__, check.reasonId, check.reason);
        if (have && have->value == check.value) continue;
        changes.push_back(Change{row, check.value});
    }
    std::vector<ustring> written, writtenKeys;
    for (const Change& c : changes) {
        try {
            m_channel.Execute(c.row->SetCommand(c.value), c.row->shape);
        } catch (const basekit::CStdException& e) {
            throw CModemWriteException(kSource, __LINE__, Text(c.row->labelId), e.GetMessage(), written, c.row->key, writtenKeys);
        }
        written.push_back(Text(c.row->labelId));
        writtenKeys.push_back(c.row->key);
    }
    MODEM_SETTINGS result = current;
    for (const Change& c : changes) {
        const auto value = ReadRow(*c.row);
        MODEM_VALUE read{c.row->key, value.value_or(ustring()), value.has_value()};
        auto it = std::find_if(result.begin(), result.end(), [&](const MODEM_VALUE& v) { return v.key == read.key; });
        if (it != result.end()) *it = read;
        else result.push_back(read);
    }
    NoteBand(result);
    return result;
}

std::vector<RADIO_CHANNEL> CModemMate::ReadChannels(const std::function<void(int, int)>& onEntry) {
    RequireFamily(EModemFamily::Uhf);
    const MODEM_REPLY count = m_channel.Execute(L"SL$C?", EModemReply::Single);
    const auto n = modemreply::ParseInteger(count.final);
    if (!n || *n < 0 || *n > kMaxRadioChannels)
        throw basekit::CStdException(ustring::Format(Text(IDS_MODEM_BAD_REPLY).c_str(), ustring(L"SL$C?"), count.final), kSource, __LINE__);
    std::vector<RADIO_CHANNEL> channels;
    channels.reserve(static_cast<size_t>(*n));
    for (int i = 0; i < *n; ++i) {
        const ustring query = ChannelCommand(L"SL$L?%02d", i);
        const MODEM_REPLY entry = m_channel.Execute(query, EModemReply::Single);
        const auto channel = modemreply::ParseChannelEntry(entry.final);
        if (!channel)
            throw basekit::CStdException(ustring::Format(Text(IDS_MODEM_BAD_REPLY).c_str(), query, entry.final), kSource, __LINE__);
        channels.push_back(*channel);
        if (onEntry) onEntry(i + 1, static_cast<int>(*n));
    }
    return channels;
}

void CModemMate::WriteChannels(const std::vector<RADIO_CHANNEL>& channels, const std::function<void(int, int)>& onEntry) {
    RequireFamily(EModemFamily::Uhf);
    if (const MODEM_CHECK c = CheckChannelCount(channels.size()); !c.ok) throw CModemRefusal(kSource, __LINE__, c.reasonId, c.reason);
    for (const auto& channel : channels)
        if (const MODEM_CHECK c = CheckChannel(channel, m_band); !c.ok) throw CModemRefusal(kSource, __LINE__, c.reasonId, c.reason);
    const int total = static_cast<int>(channels.size());
    std::vector<ustring> written, writtenKeys;
    const auto step = [&](const ustring& name, const ustring& command) {
        try {
            m_channel.Execute(command, EModemReply::Single);
        } catch (const basekit::CStdException& e) {
            throw CModemWriteException(kSource, __LINE__, name, e.GetMessage(), written, name, writtenKeys);
        }
        written.push_back(name);
        writtenKeys.push_back(name);
    };
    step(Text(IDS_MODEM_CHANNEL_LIST_ON), ChannelCommand(L"SL$C=%d", total));
    for (int i = 0; i < total; ++i) {
        step(ustring::Format(L"%s %d", Text(IDS_CHANNELS).c_str(), channels[static_cast<size_t>(i)].number),
             ChannelEntryCommand(i, channels[static_cast<size_t>(i)]));
        if (onEntry) onEntry(i + 1, total);
    }
}

std::optional<int> CModemMate::ReadFieldStrength() {
    RequireFamily(EModemFamily::Uhf);
    const auto value = ReadRow(RowOf(L"field_strength"));
    if (!value) return std::nullopt;
    const auto n = modemreply::ParseInteger(*value);
    return n ? std::optional<int>(static_cast<int>(*n)) : std::nullopt;
}

MODEM_SIGNAL CModemMate::ReadSignal() {
    RequireFamily(EModemFamily::Cellular);
    const MODEM_REPLY reply = m_channel.Execute(L"AT+CSQ", EModemReply::Final);
    for (const auto& line : reply.lines) {
        if (const auto csq = modemreply::ParseCsq(line)) {
            return MODEM_SIGNAL{csq->rssi, csq->ber, modemreply::RssiToDbm(csq->rssi), modemreply::RssiToBars(csq->rssi)};
        }
    }
    throw basekit::CStdException(ustring::Format(Text(IDS_MODEM_BAD_REPLY).c_str(), ustring(L"AT+CSQ"),
                                                 reply.lines.empty() ? reply.final : reply.lines.front()),
                                 kSource, __LINE__);
}

MODEM_NETWORK CModemMate::ReadNetwork() {
    RequireFamily(EModemFamily::Cellular);
    MODEM_NETWORK network;
    const auto registration = ReadRow(RowOf(L"registration"));
    if (registration) network.registration = static_cast<ERegistration>(modemreply::ParseInteger(*registration).value_or(4));
    network.operatorName = ReadRow(RowOf(L"operator")).value_or(ustring());
    return network;
}

ESimState CModemMate::ReadSimState() {
    RequireFamily(EModemFamily::Cellular);
    const auto state = ReadRow(RowOf(L"sim_state"));
    if (!state) return ESimState::Unknown;
    if (*state == L"ready") return ESimState::Ready;
    if (*state == L"pin") return ESimState::PinRequired;
    if (*state == L"puk") return ESimState::PukRequired;
    if (*state == L"absent") return ESimState::NotInserted;
    return ESimState::Unknown;
}

ustring CModemMate::SimKey() const {
    // The modem's IMEI tells one modem (and its SIM) from another; without it, its port.
    if (!m_imei.empty()) return m_imei;
    const CSmartPtr<IPort> port = m_channel.Modem()->GetPort();
    return port && port->GetAddress() ? port->GetAddress()->ToUrl() : ustring();
}

int CModemMate::WrongPins() const { return CPinHistory::Ref().Wrong(SimKey()); }

EPinResult CModemMate::EnterPin(const ustring& pin, bool confirmedLastTry) {
    RequireFamily(EModemFamily::Cellular);
    if (const MODEM_CHECK c = CheckPin(pin); !c.ok) throw CModemRefusal(kSource, __LINE__, c.reasonId, c.reason);
    switch (ReadSimState()) {
        case ESimState::PinRequired: break;
        case ESimState::PukRequired: Refuse(__LINE__, IDS_MODEM_PIN_PUK);
        default: Refuse(__LINE__, IDS_MODEM_PIN_NOT_ASKED);
    }
    if (WrongPins() >= kPinAttempts - 1 && !confirmedLastTry) Refuse(__LINE__, IDS_MODEM_PIN_LAST_TRY);
    const ustring command = L"AT+CPIN=\"" + pin + L"\"";
    const MODEM_REPLY reply = m_channel.Ask(command, EModemReply::Final);
    if (!reply.error) {
        CPinHistory::Ref().Record(SimKey(), true);
        return EPinResult::Accepted;
    }
    if (modemreply::ParseCmeError(reply.final) == kCmeWrongPassword) {
        CPinHistory::Ref().Record(SimKey(), false);
        return EPinResult::Wrong;
    }
    // The PIN itself is not repeated in the error text shown to the user.
    throw basekit::CCommException(kSource, __LINE__, L"AT+CPIN", reply.final, L"Modem");
}

EPinResult CModemMate::SendStoredPin(const ustring& pin) {
    if (WrongPins() > 0) Refuse(__LINE__, IDS_MODEM_PIN_AFTER_FAILURE);
    return EnterPin(pin, false);
}

ustring CModemMate::ReadApn() {
    RequireFamily(EModemFamily::Cellular);
    return Read(L"apn");
}

void CModemMate::WriteApn(const ustring& apn) {
    RequireFamily(EModemFamily::Cellular);
    const MODEM_SETTINGS current{MODEM_VALUE{L"apn", ReadApn(), true}};
    Write(current, MODEM_SETTINGS{MODEM_VALUE{L"apn", apn, true}});
}

}  // namespace devio
