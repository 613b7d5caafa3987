// The readers of modem answers and the family tables, without a modem.
#include <gtest/gtest.h>

#include <clocale>

#include "fenklib/modemctl/ModemFamilies.h"

namespace {

using namespace devio;
using namespace devio::modemreply;

struct QuantityCase {
    const char* legend;
    const wchar_t* text;
    const wchar_t* unit;
    std::optional<double> expected;
};

TEST(ModemReplies, QuantitiesAsRadiosWriteThem) {
    const QuantityCase cases[] = {
        {"frequency with its unit", L"438.12500 MHz", L"MHz", 438.125},
        {"power in mW", L"1000 mW", L"mW", 1000},
        {"negative field strength", L"-97 dBm", L"dBm", -97},
        {"unit in another case", L"12.5 KHZ", L"kHz", 12.5},
        {"bare number", L"438.125", L"MHz", 438.125},
        {"blanks around", L"  20.0 kHz  ", L"kHz", 20.0},
        {"comma as decimal point is no number", L"438,12500 MHz", L"MHz", std::nullopt},
        {"wrong unit", L"438.125 kHz", L"MHz", std::nullopt},
        {"unit where none is expected", L"5 mW", L"", std::nullopt},
        {"words", L"ERROR", L"MHz", std::nullopt},
        {"empty", L"", L"MHz", std::nullopt},
        {"two points", L"438.1.25 MHz", L"MHz", std::nullopt},
    };
    for (const auto& c : cases) {
        const auto v = ParseQuantity(c.text, c.unit);
        EXPECT_EQ(v.has_value(), c.expected.has_value()) << c.legend;
        if (v && c.expected) { EXPECT_DOUBLE_EQ(*v, *c.expected) << c.legend; }
    }
}

TEST(ModemReplies, ChannelListEntries) {
    struct Case {
        const char* legend;
        const wchar_t* text;
        std::optional<RADIO_CHANNEL> expected;
    } const cases[] = {
        {"documented shape", L"CH 1, 430.150000 MHz, 25.0 kHz, 100 mW", RADIO_CHANNEL{1, 430.15, 25.0, 100}},
        {"power zero: don't care", L"CH 40, 469.975000 MHz, 12.5 kHz, 0 mW", RADIO_CHANNEL{40, 469.975, 12.5, 0}},
        {"no blanks", L"CH7,440.000000 MHz,20.0 kHz,500 mW", RADIO_CHANNEL{7, 440.0, 20.0, 500}},
        {"three fields", L"CH 1, 430.150000 MHz, 25.0 kHz", std::nullopt},
        {"no CH", L"1, 430.150000 MHz, 25.0 kHz, 100 mW", std::nullopt},
        {"comma decimal", L"CH 1, 430,150000 MHz, 25.0 kHz, 100 mW", std::nullopt},
        {"negative power", L"CH 1, 430.150000 MHz, 25.0 kHz, -5 mW", std::nullopt},
        {"fractional power", L"CH 1, 430.150000 MHz, 25.0 kHz, 5.5 mW", std::nullopt},
        {"error answer", L"ERROR", std::nullopt},
    };
    for (const auto& c : cases) {
        const auto v = ParseChannelEntry(c.text);
        EXPECT_EQ(v.has_value(), c.expected.has_value()) << c.legend;
        if (v && c.expected) { EXPECT_EQ(*v, *c.expected) << c.legend; }
    }
}

TEST(ModemReplies, CellularStatusLines) {
    EXPECT_EQ(ParseCsq(L"+CSQ: 20,99")->rssi, 20);
    EXPECT_EQ(ParseCsq(L"+CSQ: 99,99")->rssi, 99);
    EXPECT_FALSE(ParseCsq(L"+CSQ: 32,0")) << "rssi 32 is outside the table";
    EXPECT_FALSE(ParseCsq(L"+CSQ: 20")) << "ber missing";
    EXPECT_FALSE(ParseCsq(L"+CREG: 0,1"));

    struct Reg {
        const char* legend;
        const wchar_t* line;
        std::optional<ERegistration> expected;
    } const regs[] = {
        {"query answer, home", L"+CREG: 0,1", ERegistration::Home},
        {"query answer, searching", L"+CREG: 0,2", ERegistration::Searching},
        {"with location and cell", L"+CREG: 2,5,\"1A2B\",\"01C3F2\"", ERegistration::Roaming},
        {"unsolicited form", L"+CREG: 3", ERegistration::Denied},
        {"stat out of range", L"+CREG: 0,6", std::nullopt},
        {"other line", L"+CGREG: 0,1", std::nullopt},
    };
    for (const auto& r : regs) EXPECT_EQ(ParseCreg(r.line), r.expected) << r.legend;

    EXPECT_EQ(*ParseCops(L"+COPS: 0,0,\"Fenk Mobile\",7"), L"Fenk Mobile");
    EXPECT_EQ(*ParseCops(L"+COPS: 0,0,\"Op, with comma\""), L"Op, with comma");
    EXPECT_EQ(*ParseCops(L"+COPS: 0"), L"") << "no operator";
    EXPECT_FALSE(ParseCops(L"+COPS: 0,0,Unquoted"));

    EXPECT_EQ(ParseCpin(L"+CPIN: READY"), ESimState::Ready);
    EXPECT_EQ(ParseCpin(L"+CPIN: SIM PIN"), ESimState::PinRequired);
    EXPECT_EQ(ParseCpin(L"+CPIN: SIM PUK"), ESimState::PukRequired);
    EXPECT_EQ(ParseCpin(L"+CPIN: PH-SIM PIN"), ESimState::Unknown);

    EXPECT_EQ(*ParseCgdcont(L"+CGDCONT: 1,\"IP\",\"apn.fenk\",\"0.0.0.0\",0,0", 1), L"apn.fenk");
    EXPECT_FALSE(ParseCgdcont(L"+CGDCONT: 2,\"IP\",\"other\"", 1)) << "another context";
    EXPECT_EQ(ParseCmeError(L"+CME ERROR: 16"), 16);
    EXPECT_FALSE(ParseCmeError(L"ERROR"));
}

TEST(ModemReplies, SignalTable) {
    struct Case {
        int rssi;
        std::optional<int> dbm;
        int bars;
    } const cases[] = {{0, -113, 0}, {1, -111, 0}, {2, -109, 1}, {10, -93, 3}, {30, -53, 5}, {31, -51, 5}, {99, std::nullopt, 0}};
    for (const auto& c : cases) {
        EXPECT_EQ(RssiToDbm(c.rssi), c.dbm) << "rssi " << c.rssi;
        EXPECT_EQ(RssiToBars(c.rssi), c.bars) << "rssi " << c.rssi;
    }
}

TEST(ModemReplies, NumbersToTheModemKeepTheirPointInAnyLocale) {
    const std::string before = std::setlocale(LC_ALL, nullptr);
    // A German desktop writes 438,125 by default; the modem must still get 438.12500.
    const bool german = std::setlocale(LC_ALL, "de_DE.UTF-8") != nullptr;
    EXPECT_EQ(FormatFixed(438.125, 5), L"438.12500");
    EXPECT_EQ(FormatFixed(-97, 0), L"-97");
    std::setlocale(LC_ALL, before.c_str());
    if (!german) GTEST_SKIP() << "de_DE.UTF-8 is not installed";
}

MODEM_REPLY Single(const wchar_t* line) {
    MODEM_REPLY r;
    r.lines = {line};
    r.final = line;
    r.error = std::wstring_view(line) == L"ERROR";
    return r;
}

const MODEM_SETTING_ROW& Row(const MODEM_FAMILY& family, std::wstring_view key, std::wstring_view model) {
    for (const auto& r : family.rows)
        if (key == r.key && r.AppliesTo(model)) return r;
    ADD_FAILURE() << "no row";
    return family.rows.front();
}

TEST(ModemFamilies, OneTableServesBothRadioModels) {
    struct Case {
        const char* legend;
        const wchar_t* model;
        const wchar_t* key;
        const wchar_t* answer;
        const wchar_t* value;      // as the library keeps it
        const wchar_t* setTo;      // written back
        const wchar_t* command;    // as it goes on the wire
    } const cases[] = {
        {"frequency", L"FR-400", L"frequency", L"438.12500 MHz", L"438.12500", L"440.5", L"SL&F=440.5"},
        {"power level", L"FR-400", L"power", L"1000 mW", L"1000", L"500", L"SL@P=500"},
        {"spacing written with more decimals", L"FR-400", L"spacing", L"12.50 kHz", L"12.5", L"25.0", L"SL&W=25.0"},
        {"protocol by number", L"FR-400", L"protocol", L"1", L"PacCrest-4FSK", L"TrimTalk450s", L"SL@S=4"},
        {"protocol by name", L"FR-460", L"protocol", L"PacCrest-4FSK", L"PacCrest-4FSK", L"TrimTalk450s", L"SL+P=TrimTalk450s"},
        {"FEC as a digit", L"FR-400", L"fec", L"1", L"on", L"off", L"SL@F=0"},
        {"FEC as a word", L"FR-460", L"fec", L"OFF", L"off", L"on", L"SL+F=ON"},
        {"addresses", L"FR-400", L"address", L"00a1;0001", L"00A1;0001", L"1b2c", L"SL#I=1B2C"},
    };
    for (const auto& c : cases) {
        const MODEM_SETTING_ROW& row = Row(UhfFamily(), c.key, c.model);
        EXPECT_EQ(row.Parse(Single(c.answer)).value_or(L"(none)"), c.value) << c.legend;
        EXPECT_EQ(row.SetCommand(c.setTo), c.command) << c.legend;
    }
    EXPECT_FALSE(Row(UhfFamily(), L"frequency", L"FR-400").Parse(Single(L"ERROR"))) << "an error answer is no value";
}

TEST(ModemFamilies, CellularRowsReadTheirInformationLines) {
    MODEM_REPLY apn;
    apn.lines = {L"+CGDCONT: 1,\"IP\",\"internet.fenk\",\"0.0.0.0\",0,0"};
    apn.final = L"OK";
    EXPECT_EQ(*Row(CellularFamily(), L"apn", L"").Parse(apn), L"internet.fenk");
    EXPECT_EQ(Row(CellularFamily(), L"apn", L"").SetCommand(L"a.b"), L"AT+CGDCONT=1,\"IP\",\"a.b\"");

    MODEM_REPLY noSim;
    noSim.final = L"+CME ERROR: 10";
    noSim.error = true;
    EXPECT_EQ(*Row(CellularFamily(), L"sim_state", L"").Parse(noSim), L"absent") << "an error that says what is wrong";

    MODEM_REPLY maker;
    maker.lines = {L"+CGMI: Norvale"};
    maker.final = L"OK";
    EXPECT_EQ(*Row(CellularFamily(), L"maker", L"").Parse(maker), L"Norvale") << "prefix some modems repeat";

    MODEM_REPLY signal;
    signal.lines = {L"+CSQ: 99,99"};
    signal.final = L"OK";
    EXPECT_EQ(*Row(CellularFamily(), L"signal", L"").Parse(signal), L"") << "unknown signal is no number";
}

TEST(ModemFamilies, EachFamilyIsRecognisedByItsOwnProbeAnswer) {
    MODEM_REPLY ok;
    ok.final = L"OK";
    EXPECT_TRUE(CellularFamily().recognise(ok));
    EXPECT_FALSE(UhfFamily().recognise(ok));
    const MODEM_REPLY freq = Single(L"438.00000 MHz");
    EXPECT_TRUE(UhfFamily().recognise(freq));
    EXPECT_FALSE(CellularFamily().recognise(freq));
}

}  // namespace
