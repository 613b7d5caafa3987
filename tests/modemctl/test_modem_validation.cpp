// What a user types for a modem: refused with the reason, or kept in the form the modem takes.
#include <gtest/gtest.h>

#include "fenklib/modemctl/ModemValidation.h"
#include "fenklib/resources/StringIds.h"

namespace {

using namespace devio;

const MODEM_SETTING_ROW& Row(const MODEM_FAMILY& family, std::wstring_view key) {
    for (const auto& r : family.rows)
        if (key == r.key) return r;
    ADD_FAILURE() << "no row";
    return family.rows.front();
}

struct Case {
    const char* legend;
    const MODEM_FAMILY& family;
    const wchar_t* key;
    const wchar_t* typed;
    unsigned reasonId;        // 0: accepted
    const wchar_t* kept;      // accepted: the value as written
};

TEST(ModemValidation, SettingsTable) {
    const RADIO_BAND band{430.0, 450.0};
    const Case cases[] = {
        {"frequency inside the band", UhfFamily(), L"frequency", L"438.125", 0, L"438.12500"},
        {"frequency on the upper limit", UhfFamily(), L"frequency", L"450", 0, L"450.00000"},
        {"frequency above the band", UhfFamily(), L"frequency", L"451.0", IDS_MODEM_BAD_RANGE, nullptr},
        {"frequency below the band", UhfFamily(), L"frequency", L"403.0", IDS_MODEM_BAD_RANGE, nullptr},
        {"comma typed as decimal point", UhfFamily(), L"frequency", L"438,125", IDS_MODEM_BAD_COMMA, nullptr},
        {"frequency with its unit", UhfFamily(), L"frequency", L"438.125 MHz", 0, L"438.12500"},
        {"letters", UhfFamily(), L"frequency", L"abc", IDS_MODEM_BAD_NUMBER, nullptr},
        {"a power level the radio has", UhfFamily(), L"power", L"500", 0, L"500"},
        {"a power the radio lacks", UhfFamily(), L"power", L"300", IDS_MODEM_BAD_LEVEL, nullptr},
        {"a power with a comma", UhfFamily(), L"power", L"0,5", IDS_MODEM_BAD_COMMA, nullptr},
        {"a spacing", UhfFamily(), L"spacing", L"25", 0, L"25.0"},
        {"a spacing no radio has", UhfFamily(), L"spacing", L"15", IDS_MODEM_BAD_CHOICE, nullptr},
        {"short address", UhfFamily(), L"address", L"a1", 0, L"00A1;00A1"},
        {"address too long", UhfFamily(), L"address", L"12345", IDS_MODEM_BAD_HEX, nullptr},
        {"address not hexadecimal", UhfFamily(), L"address", L"12G4", IDS_MODEM_BAD_HEX, nullptr},
        {"read-only reading", UhfFamily(), L"field_strength", L"-90", IDS_MODEM_READ_ONLY, nullptr},
        {"an access point", CellularFamily(), L"apn", L"internet.fenk", 0, L"internet.fenk"},
        {"an access point with a quote", CellularFamily(), L"apn", L"inter\"net", IDS_MODEM_BAD_APN_QUOTE, nullptr},
        {"an access point with a comma", CellularFamily(), L"apn", L"a,b", IDS_MODEM_BAD_APN, nullptr},
        {"an empty access point", CellularFamily(), L"apn", L"", IDS_MODEM_BAD_APN, nullptr},
    };
    for (const auto& c : cases) {
        const MODEM_CHECK check = CheckSettingValue(Row(c.family, c.key), c.typed, band);
        EXPECT_EQ(check.ok, c.reasonId == 0) << c.legend;
        EXPECT_EQ(check.reasonId, c.reasonId) << c.legend;
        if (c.kept) { EXPECT_EQ(check.value, c.kept) << c.legend; }
        if (!check.ok) { EXPECT_FALSE(check.reason.empty()) << c.legend << ": a refusal says why"; }
    }
}

TEST(ModemValidation, RefusalsNameWhatWasTyped) {
    const MODEM_CHECK range = CheckSettingValue(Row(UhfFamily(), L"frequency"), L"471.5", RADIO_BAND{430.0, 450.0});
    EXPECT_NE(range.reason.find(L"471.50000"), std::wstring::npos) << range.reason.ToUtf8();
    EXPECT_NE(range.reason.find(L"430.00000"), std::wstring::npos) << "the band's limits are named";
    const MODEM_CHECK level = CheckSettingValue(Row(UhfFamily(), L"power"), L"300");
    EXPECT_NE(level.reason.find(L"10, 20, 50, 100, 200, 500, 1000"), std::wstring::npos) << level.reason.ToUtf8();
}

TEST(ModemValidation, WithoutTheRadiosBandTheTableRangeHolds) {
    EXPECT_TRUE(CheckFrequency(L"460.0", RADIO_BAND{}, IDS_MODEM_FREQUENCY).ok);
    EXPECT_FALSE(CheckFrequency(L"1460.0", RADIO_BAND{}, IDS_MODEM_FREQUENCY).ok);
}

TEST(ModemValidation, Pins) {
    struct Pin {
        const char* legend;
        const wchar_t* pin;
        bool ok;
    } const pins[] = {{"four digits", L"1234", true},   {"eight digits", L"12345678", true},
                      {"three digits", L"123", false},  {"nine digits", L"123456789", false},
                      {"a letter", L"12a4", false},     {"a blank", L"12 34", false},
                      {"a quote", L"12\"4", false},     {"empty", L"", false}};
    for (const auto& p : pins) {
        const MODEM_CHECK c = CheckPin(p.pin);
        EXPECT_EQ(c.ok, p.ok) << p.legend;
        if (!p.ok) { EXPECT_EQ(c.reasonId, IDS_MODEM_BAD_PIN) << p.legend; }
    }
}

TEST(ModemValidation, ChannelEntries) {
    const RADIO_BAND band{430.0, 450.0};
    EXPECT_TRUE(CheckChannel(RADIO_CHANNEL{1, 438.0, 12.5, 500}, band).ok);
    EXPECT_TRUE(CheckChannel(RADIO_CHANNEL{2, 438.0, 25.0, 0}, band).ok) << "power 0: don't care";
    const MODEM_CHECK outside = CheckChannel(RADIO_CHANNEL{7, 460.0, 12.5, 500}, band);
    EXPECT_FALSE(outside.ok);
    EXPECT_EQ(outside.reason.rfind(L"Channel 7: ", 0), 0u) << "names the channel: " << outside.reason.ToUtf8();
    EXPECT_FALSE(CheckChannel(RADIO_CHANNEL{1, 438.0, 15.0, 500}, band).ok) << "spacing";
    EXPECT_FALSE(CheckChannel(RADIO_CHANNEL{1, 438.0, 12.5, -1}, band).ok) << "power";
    EXPECT_TRUE(CheckChannelCount(40).ok);
    EXPECT_FALSE(CheckChannelCount(41).ok);
}

}  // namespace
