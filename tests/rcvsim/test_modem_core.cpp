// The simulated modems without a link: what each command answers, with the clock stepped.
#include <gtest/gtest.h>

#include <set>

#include "tools/rcvsim/ModemArguments.h"
#include "tools/rcvsim/ModemCore.h"

namespace {

using namespace rcvsim;

struct Radio {
    std::shared_ptr<ManualClock> clock = std::make_shared<ManualClock>();
    ModemCore core;
    explicit Radio(ModemOptions options = {}) : core(std::move(options), clock) {}
    std::string operator()(std::string_view line) { return core.Execute(line); }
};

ModemOptions Cellular(bool locked = false) {
    ModemOptions o;
    o.kind = ModemKind::Cellular;
    o.simLocked = locked;
    return o;
}

TEST(ModemCore, UhfRadioAnswersItsVocabulary) {
    Radio radio;
    struct Case {
        const char* legend;
        const char* line;
        const char* answer;
    } const cases[] = {
        {"factory frequency", "SL&F?", "438.00000 MHz\r"},
        {"set frequency in the band", "SL&F=440.125", "OK\r"},
        {"read it back", "SL&F?", "440.12500 MHz\r"},
        {"frequency with a comma", "SL&F=440,125", "ERROR\r"},
        {"frequency above the band", "SL&F=480.0", "ERROR\r"},
        {"band limits", "SL!D?", "403.00000 MHz\r"},
        {"spacing", "SL&W?", "12.5 kHz\r"},
        {"a spacing no radio has", "SL&W=15.0", "ERROR\r"},
        {"power rounded to the nearest level", "SL@P=300", "OK\r"},
        {"the level it took", "SL@P?", "200 mW\r"},
        {"addresses", "SL#I=1a2b", "OK\r"},
        {"all four set alike", "SL#I?", "1A2B;1A2B\r"},
        {"protocol by number", "SL@S=4", "OK\r"},
        {"protocol read", "SL@S?", "4\r"},
        {"the other model's protocol command", "SL+P?", "ERROR\r"},
        {"channel count", "SL$C?", "40\r"},
        {"first channel", "SL$L?00", "CH 1, 430.150000 MHz, 12.5 kHz, 1000 mW\r"},
        {"a channel past the list", "SL$L?40", "ERROR\r"},
        {"write a channel", "SL$L=I00,N000009,F431.000000,W25.000,P00300", "OK\r"},
        {"as the radio keeps it", "SL$L?00", "CH 9, 431.000000 MHz, 25.0 kHz, 200 mW\r"},
        {"list on", "SL$M=1", "OK\r"},
        {"list mode off or on only", "SL$M=2", "ERROR\r"},
        {"an AT command is not for the radio", "AT", ""},
        {"an unknown SL command", "SL^X?", "ERROR\r"},
    };
    for (const auto& c : cases) EXPECT_EQ(radio(c.line), c.answer) << c.legend;
    const std::vector<std::string> writes = radio.core.Writes();
    EXPECT_EQ(writes.front(), "SL&F=440.125") << "only the settings it took are listed";
    EXPECT_EQ(writes.size(), 6u);
}

TEST(ModemCore, ByNameModelEndsLinesWithCrLfAndHasFewerLevels) {
    ModemOptions o;
    o.model = "FR-460";
    Radio radio(o);
    EXPECT_EQ(radio("SL%P?"), "FR-460\r\n");
    EXPECT_EQ(radio("SL+P=PacCrest-GMSK"), "OK\r\n");
    EXPECT_EQ(radio("SL+P?"), "PacCrest-GMSK\r\n");
    EXPECT_EQ(radio("SL+F=ON"), "OK\r\n");
    EXPECT_EQ(radio("SL@P=200"), "OK\r\n");
    EXPECT_EQ(radio("SL@P?"), "100 mW\r\n") << "200 mW lies nearer 100 than 500";
}

TEST(ModemCore, ChannelListShrinksAndKeepsItsEntries) {
    Radio radio;
    EXPECT_EQ(radio("SL$C=2"), "OK\r");
    EXPECT_EQ(radio("SL$C?"), "2\r");
    EXPECT_EQ(radio("SL$L?01"), "CH 2, 430.175000 MHz, 25.0 kHz, 500 mW\r");
    EXPECT_EQ(radio("SL$L=I02,N000003,F431.000000,W25.000,P00000"), "ERROR\r") << "past the count";
    EXPECT_EQ(radio("SL$C=41"), "ERROR\r");
    EXPECT_EQ(radio("SL$C=0"), "OK\r");
    EXPECT_EQ(radio("SL$C?"), "0\r");
}

TEST(ModemCore, FieldStrengthMovesWithTime) {
    Radio radio;
    std::set<std::string> seen;
    for (int i = 0; i < 20; ++i) {
        seen.insert(radio("SL@R?"));
        radio.clock->Advance(1.0);
    }
    EXPECT_GT(seen.size(), 3u);
}

TEST(ModemCore, CellularRegistersAfterSearching) {
    Radio modem(Cellular());
    EXPECT_EQ(modem("AT+CREG?"), "AT+CREG?\r\r\n+CREG: 0,2\r\n\r\nOK\r\n") << "echo on, then searching";
    EXPECT_EQ(modem("AT+COPS?"), "AT+COPS?\r\r\n+COPS: 0\r\n\r\nOK\r\n");
    modem.clock->Advance(3.5);
    EXPECT_EQ(modem("ATE0"), "ATE0\r\r\nOK\r\n");
    EXPECT_EQ(modem("AT+CREG?"), "\r\n+CREG: 0,1\r\n\r\nOK\r\n");
    EXPECT_EQ(modem("AT+COPS?"), "\r\n+COPS: 0,0,\"Fenk Mobile\",7\r\n\r\nOK\r\n");
    EXPECT_EQ(modem("SL&F?"), "") << "a radio command is not for the modem";
    EXPECT_EQ(modem("AT+NOPE"), "\r\nERROR\r\n");
}

TEST(ModemCore, LockedSimTakesItsPinAndLocksAfterThreeWrongOnes) {
    Radio modem(Cellular(true));
    modem("ATE0");
    EXPECT_EQ(modem("AT+CPIN?"), "\r\n+CPIN: SIM PIN\r\n\r\nOK\r\n");
    EXPECT_EQ(modem("AT+CREG?"), "\r\n+CREG: 0,0\r\n\r\nOK\r\n") << "no registration without the PIN";
    EXPECT_EQ(modem("AT+CPIN=\"1234\""), "\r\nOK\r\n");
    EXPECT_EQ(modem("AT+CPIN?"), "\r\n+CPIN: READY\r\n\r\nOK\r\n");
    EXPECT_EQ(modem("AT+CPIN=\"1234\""), "\r\n+CME ERROR: 3\r\n") << "not asked for";

    Radio other(Cellular(true));
    other("ATE0");
    for (int i = 0; i < 3; ++i) EXPECT_EQ(other("AT+CPIN=\"0000\""), "\r\n+CME ERROR: 16\r\n") << "attempt " << i;
    EXPECT_EQ(other("AT+CPIN?"), "\r\n+CPIN: SIM PUK\r\n\r\nOK\r\n");
    EXPECT_EQ(other("AT+CPIN=\"1234\""), "\r\n+CME ERROR: 12\r\n") << "the right PIN is too late";
}

TEST(ModemCore, AccessPointIsKept) {
    Radio modem(Cellular());
    modem("ATE0");
    EXPECT_EQ(modem("AT+CGDCONT=1,\"IP\",\"survey.fenk\""), "\r\nOK\r\n");
    EXPECT_EQ(modem("AT+CGDCONT?"), "\r\n+CGDCONT: 1,\"IP\",\"survey.fenk\",\"0.0.0.0\",0,0\r\n\r\nOK\r\n");
    EXPECT_EQ(modem("AT+CGDCONT=1,\"IP\",unquoted"), "\r\nERROR\r\n");
}

TEST(ModemCore, FaultsFromTheWire) {
    Radio radio;
    EXPECT_EQ(radio("sim,error,SL@P"), "OK\r\n");
    EXPECT_EQ(radio("SL@P=500"), "ERROR\r") << "the setting is refused";
    EXPECT_EQ(radio("SL@P?"), "1000 mW\r") << "queries still answer";
    EXPECT_EQ(radio("sim,silence,SL&F"), "OK\r\n");
    EXPECT_TRUE(radio.core.Faults().Silent("SL&F?"));
    EXPECT_FALSE(radio.core.Faults().Silent("SL&W?"));
    EXPECT_EQ(radio("sim,latency,300,SL$L"), "OK\r\n");
    EXPECT_EQ(radio.core.Faults().LatencyFor("SL$L?00"), 300);
    EXPECT_EQ(radio.core.Faults().LatencyFor("SL&W?"), 0);
    EXPECT_EQ(radio("sim,clear"), "OK\r\n");
    EXPECT_FALSE(radio.core.Faults().Silent("SL&F?"));
    EXPECT_EQ(radio("sim,bogus"), "ERROR\r\n");
}

TEST(ModemArguments, CommandLine) {
    std::string error;
    const auto a = ModemArguments::Parse({"--modem", "cellular", "--pty", "--rate", "9600", "--sim-locked", "--pin", "4321",
                                          "--silence", "AT+CSQ", "--error", "AT+CGDCONT"},
                                         error);
    ASSERT_TRUE(a) << error;
    EXPECT_EQ(a->options.kind, ModemKind::Cellular);
    EXPECT_EQ(a->options.lineRate, 9600);
    EXPECT_TRUE(a->options.throttle);
    EXPECT_TRUE(a->options.simLocked);
    EXPECT_EQ(a->options.pin, "4321");
    EXPECT_TRUE(a->options.faults.Silent("AT+CSQ"));
    EXPECT_TRUE(a->options.faults.RefusesSetting("AT+CGDCONT=1,\"IP\",\"x\""));
    EXPECT_TRUE(ModemArguments::Wanted({"--pty", "--modem", "uhf"}));
    EXPECT_FALSE(ModemArguments::Wanted({"--pty"}));

    struct Bad {
        std::vector<std::string> args;
        const char* legend;
    } const bads[] = {{{"--modem", "gsm"}, "unknown kind"},
                      {{"--modem", "uhf", "--pin", "12"}, "short PIN"},
                      {{"--modem", "uhf", "--tcp", "10.0.0.1:0"}, "not loopback"},
                      {{"--modem", "uhf", "--rate"}, "missing value"},
                      {{"--modem", "uhf", "--frobnicate", "1"}, "unknown option"}};
    for (const auto& b : bads) {
        error.clear();
        EXPECT_FALSE(ModemArguments::Parse(b.args, error)) << b.legend;
        EXPECT_FALSE(error.empty()) << b.legend;
    }
}

}  // namespace
