// Both modem families against the simulated modems over a pseudo-terminal at 9600 and 115200
// bit/s: detection, reading, writing only what changed, the channel list, the SIM's PIN and the
// faults of the line.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <stdlib.h>
#include <unistd.h>

#include "fenklib/modemctl/CModemMate.h"
#include "fenklib/resources/StringIds.h"
#include "integration/ModemSimLink.h"

namespace {

using namespace devio;
using fenktest::ModemSimLink;

rcvsim::ModemOptions Uhf(const char* model = "FR-400") {
    rcvsim::ModemOptions o;
    o.model = model;
    return o;
}

rcvsim::ModemOptions Cellular(bool locked, std::uint32_t seed) {
    rcvsim::ModemOptions o;
    o.kind = rcvsim::ModemKind::Cellular;
    o.simLocked = locked;
    o.seed = seed;   // its own IMEI, so its SIM's PIN history is its own
    return o;
}

ustring ValueOf(const MODEM_SETTINGS& s, const wchar_t* key) {
    const MODEM_VALUE* v = FindValue(s, key);
    return v ? v->value : ustring(L"(missing)");
}

MODEM_SETTINGS With(MODEM_SETTINGS s, const wchar_t* key, const wchar_t* value) {
    for (auto& v : s)
        if (v.key == key) v.value = value;
    return s;
}

class ModemLink : public ::testing::TestWithParam<int> {
protected:
    int Rate() const { return GetParam(); }
};

TEST_P(ModemLink, UhfRadioIsDetectedAndReadWhole) {
    ModemSimLink link(Uhf(), Rate());
    CModemMate mate(link.Modem());
    ASSERT_EQ(mate.Detect(), EModemFamily::Uhf);
    const MODEM_SETTINGS s = mate.ReadAll();
    const struct {
        const wchar_t* key;
        const wchar_t* value;
    } expected[] = {{L"model", L"FR-400"},          {L"firmware", L"3.58.2"},       {L"serial", L"40123456"},
                    {L"band_low", L"403.00000"},    {L"band_high", L"473.00000"},   {L"frequency", L"438.00000"},
                    {L"centre", L"438.00000"},      {L"spacing", L"12.5"},          {L"power", L"1000"},
                    {L"protocol", L"SATELLINE-3AS"}, {L"fec", L"off"},              {L"address", L"0001;0001"},
                    {L"channel_list", L"off"},      {L"active_channel", L"1"},      {L"default_channel", L"1"}};
    for (const auto& e : expected) EXPECT_EQ(ValueOf(s, e.key), e.value) << ustring(e.key).ToUtf8();
    const auto strength = modemreply::ParseInteger(ValueOf(s, L"field_strength"));
    ASSERT_TRUE(strength);
    EXPECT_LT(*strength, -80);
    EXPECT_EQ(link.modem->GetModelName(), L"FR-400");
    EXPECT_EQ(mate.Band().highMHz, 473.0);
    EXPECT_EQ(FindValue(s, L"protocol") - &s.front(), FindValue(s, L"spacing") - &s.front() + 2) << "table order kept";
}

TEST_P(ModemLink, OnlyTheChangedSettingCrossesTheLine) {
    ModemSimLink link(Uhf(), Rate());
    CModemMate mate(link.Modem());
    mate.UseFamily(EModemFamily::Uhf);
    const MODEM_SETTINGS before = mate.ReadAll();
    link.modem->WireLog().Clear();
    const MODEM_SETTINGS after = mate.Write(before, With(before, L"frequency", L"440.125"));
    EXPECT_EQ(link.Written(), (std::vector<std::string>{"SL&F=440.12500\r", "SL&F?\r"})) << "the setting, then its read-back";
    EXPECT_EQ(link.sim->Core().Writes(), std::vector<std::string>{"SL&F=440.12500"});
    EXPECT_EQ(ValueOf(after, L"frequency"), L"440.12500");
    EXPECT_EQ(ValueOf(after, L"power"), L"1000");

    link.modem->WireLog().Clear();
    mate.Write(after, after);
    EXPECT_TRUE(link.Written().empty()) << "nothing changed, nothing sent";
}

TEST_P(ModemLink, ReadBackShowsThePowerLevelTheRadioChose) {
    ModemSimLink link(Uhf("FR-460"), Rate());
    CModemMate mate(link.Modem());
    ASSERT_EQ(mate.Detect(), EModemFamily::Uhf);
    const MODEM_SETTINGS before = mate.ReadAll();
    EXPECT_EQ(ValueOf(before, L"protocol"), L"SATELLINE-3AS") << "the by-name model's row";
    MODEM_SETTINGS wanted = With(before, L"power", L"200");
    wanted = With(wanted, L"fec", L"on");
    const MODEM_SETTINGS after = mate.Write(before, wanted);
    EXPECT_EQ(ValueOf(after, L"power"), L"100") << "this model has 100, 500 and 1000 mW";
    EXPECT_EQ(ValueOf(after, L"fec"), L"on");
    EXPECT_EQ(link.sim->Core().Writes(), (std::vector<std::string>{"SL@P=200", "SL+F=ON"}));
}

TEST_P(ModemLink, ChannelListRoundTrip) {
    ModemSimLink link(Uhf(), Rate());
    CModemMate mate(link.Modem());
    mate.UseFamily(EModemFamily::Uhf);
    mate.ReadAll();
    std::vector<RADIO_CHANNEL> list;
    for (int i = 0; i < kMaxRadioChannels; ++i)
        list.push_back(RADIO_CHANNEL{100 + i, 440.0 + 0.0125 * i, i % 3 == 0 ? 12.5 : i % 3 == 1 ? 20.0 : 25.0, i % 2 ? 500 : 0});
    list[5].powerMw = 300;
    int reported = 0;
    mate.WriteChannels(list, [&](int done, int total) {
        EXPECT_EQ(total, kMaxRadioChannels);
        reported = done;
    });
    EXPECT_EQ(reported, kMaxRadioChannels);
    const std::vector<RADIO_CHANNEL> back = mate.ReadChannels();
    std::vector<RADIO_CHANNEL> expected = list;
    expected[5].powerMw = 200;   // rounded to the radio's nearest level
    EXPECT_EQ(back, expected);

    mate.WriteChannels({list[0], list[1]});
    EXPECT_EQ(mate.ReadChannels().size(), 2u) << "a shorter list replaces the longer one";
}

TEST_P(ModemLink, BadInputIsRefusedBeforeAnythingIsSent) {
    ModemSimLink link(Uhf(), Rate());
    CModemMate mate(link.Modem());
    mate.UseFamily(EModemFamily::Uhf);
    const MODEM_SETTINGS before = mate.ReadAll();
    link.modem->WireLog().Clear();
    const struct {
        const char* legend;
        const wchar_t* key;
        const wchar_t* value;
        unsigned reason;
    } cases[] = {{"outside the band", L"frequency", L"480.0", IDS_MODEM_BAD_RANGE},
                 {"comma", L"frequency", L"440,125", IDS_MODEM_BAD_COMMA},
                 {"a power no radio level", L"power", L"300", IDS_MODEM_BAD_LEVEL}};
    for (const auto& c : cases) {
        EXPECT_EQ(mate.Check(c.key, c.value).reasonId, c.reason) << c.legend;
        try {
            mate.Write(before, With(With(before, L"spacing", L"25.0"), c.key, c.value));
            ADD_FAILURE() << c.legend << ": written";
        } catch (const CModemRefusal& e) {
            EXPECT_EQ(e.ReasonId(), c.reason) << c.legend;
        }
    }
    std::vector<RADIO_CHANNEL> tooMany(41, RADIO_CHANNEL{1, 440.0, 12.5, 0});
    EXPECT_THROW(mate.WriteChannels(tooMany), CModemRefusal);
    EXPECT_THROW(mate.WriteChannels({RADIO_CHANNEL{1, 480.0, 12.5, 0}}), CModemRefusal) << "outside the band it reported";
    EXPECT_TRUE(link.Written().empty()) << "nothing reached the radio, not even the spacing";
}

TEST_P(ModemLink, CellularModemSimPinRegistrationAndAccessPoint) {
    ModemSimLink link(Cellular(true, 101), Rate());
    CModemMate mate(link.Modem());
    ASSERT_EQ(mate.Detect(), EModemFamily::Cellular);
    const MODEM_SETTINGS s = mate.ReadAll();
    EXPECT_EQ(ValueOf(s, L"maker"), L"Norvale");
    EXPECT_EQ(ValueOf(s, L"model"), L"CM-27");
    EXPECT_EQ(ValueOf(s, L"imei"), L"356938035610101");
    EXPECT_EQ(ValueOf(s, L"sim_state"), L"pin");
    EXPECT_EQ(ValueOf(s, L"registration"), L"0");
    EXPECT_EQ(ValueOf(s, L"apn"), L"internet");

    link.modem->WireLog().Clear();
    EXPECT_THROW(mate.EnterPin(L"12a4"), CModemRefusal);
    EXPECT_TRUE(link.Written().empty()) << "a PIN that is not 4-8 digits is not sent";

    EXPECT_EQ(mate.EnterPin(L"0000"), EPinResult::Wrong);
    EXPECT_EQ(mate.WrongPins(), 1);
    link.modem->WireLog().Clear();
    try {
        mate.SendStoredPin(L"1234");
        ADD_FAILURE() << "a stored PIN was sent after a wrong one";
    } catch (const CModemRefusal& e) {
        EXPECT_EQ(e.ReasonId(), IDS_MODEM_PIN_AFTER_FAILURE);
    }
    EXPECT_TRUE(link.Written().empty());

    EXPECT_EQ(mate.EnterPin(L"1234"), EPinResult::Accepted);
    EXPECT_EQ(mate.ReadSimState(), ESimState::Ready);
    EXPECT_EQ(mate.WrongPins(), 0);
    EXPECT_EQ(mate.ReadNetwork().registration, ERegistration::Searching);
    link.clock->Advance(5);
    const MODEM_NETWORK network = mate.ReadNetwork();
    EXPECT_EQ(network.registration, ERegistration::Home);
    EXPECT_EQ(network.operatorName, L"Fenk Mobile");

    const MODEM_SIGNAL signal = mate.ReadSignal();
    ASSERT_TRUE(signal.dbm);
    EXPECT_EQ(*signal.dbm, -113 + 2 * signal.rssi);
    EXPECT_GT(signal.bars, 0);

    EXPECT_THROW(mate.WriteApn(L"bad\"apn"), CModemRefusal);
    mate.WriteApn(L"survey.fenk");
    EXPECT_EQ(mate.ReadApn(), L"survey.fenk");
    EXPECT_EQ(link.sim->Core().Writes().back(), "AT+CGDCONT=1,\"IP\",\"survey.fenk\"");
}

TEST_P(ModemLink, ThirdWrongPinIsNeverSentWithoutConfirmation) {
    ModemSimLink link(Cellular(true, 200 + static_cast<std::uint32_t>(Rate() % 97)), Rate());
    CModemMate mate(link.Modem());
    mate.UseFamily(EModemFamily::Cellular);
    mate.Identify();
    EXPECT_EQ(mate.EnterPin(L"1111"), EPinResult::Wrong);
    EXPECT_EQ(mate.EnterPin(L"2222"), EPinResult::Wrong);
    link.modem->WireLog().Clear();
    try {
        mate.EnterPin(L"3333");
        ADD_FAILURE() << "third PIN sent unconfirmed";
    } catch (const CModemRefusal& e) {
        EXPECT_EQ(e.ReasonId(), IDS_MODEM_PIN_LAST_TRY);
    }
    for (const auto& w : link.Written()) EXPECT_EQ(w.find("AT+CPIN="), std::string::npos) << w;
    EXPECT_EQ(mate.EnterPin(L"3333", true), EPinResult::Wrong);
    EXPECT_EQ(mate.ReadSimState(), ESimState::PukRequired);
    try {
        mate.EnterPin(L"1234", true);
        ADD_FAILURE() << "PIN sent to a SIM that wants its PUK";
    } catch (const CModemRefusal& e) {
        EXPECT_EQ(e.ReasonId(), IDS_MODEM_PIN_PUK);
    }
}

TEST_P(ModemLink, NothingAnswersNamesPortRateAndProbes) {
    rcvsim::ModemOptions o = Uhf();
    o.faults.silenceAll = true;
    ModemSimLink link(o, Rate());
    CModemMate mate(link.Modem());
    try {
        mate.Detect();
        FAIL() << "a silent port was taken for a modem";
    } catch (const CModemNotFoundException& e) {
        const ustring text = e.GetMessage();
        EXPECT_NE(text.find(link.modem->GetAddress()->ToUrl()), ustring::npos) << text.ToUtf8();
        EXPECT_NE(text.find(ustring::Format(L"%d bit/s", Rate())), ustring::npos) << text.ToUtf8();
        EXPECT_NE(text.find(L"SL&F?"), ustring::npos) << text.ToUtf8();
        EXPECT_NE(text.find(L"AT"), ustring::npos) << text.ToUtf8();
        EXPECT_EQ(e.Tried().size(), ModemFamilies().size());
    }
    EXPECT_EQ(mate.Family(), EModemFamily::Unknown);
}

// A write that stops in the middle: one error naming the setting, and what the modem holds.
TEST_P(ModemLink, WriteStoppedMidwayNamesTheSettingAndWhatWasWritten) {
    const struct {
        const char* legend;
        bool silent;   // else: the radio answers ERROR
    } faults[] = {{"the radio stops answering", true}, {"the radio refuses the setting", false}};
    for (const auto& f : faults) {
        ModemSimLink link(Uhf(), Rate());
        CModemMate mate(link.Modem());
        mate.UseFamily(EModemFamily::Uhf);
        const MODEM_SETTINGS before = mate.ReadAll();
        rcvsim::ModemFaults plan;
        (f.silent ? plan.silentCommands : plan.errorCommands).push_back("SL@P");
        link.sim->SetFaults(plan);
        try {
            mate.Write(before, With(With(With(before, L"frequency", L"441.0"), L"power", L"500"), L"fec", L"on"));
            ADD_FAILURE() << f.legend << ": no error";
        } catch (const CModemWriteException& e) {
            EXPECT_EQ(e.FailedKey(), L"power") << f.legend;
            EXPECT_EQ(e.WrittenKeys(), std::vector<ustring>{L"frequency"}) << f.legend;
            const ustring text = e.GetMessage();
            EXPECT_NE(text.find(L"Transmitter power"), ustring::npos) << text.ToUtf8();
            EXPECT_NE(text.find(L"Already written: Frequency"), ustring::npos) << text.ToUtf8();
            EXPECT_NE(text.find(f.silent ? L"SL@P=500" : L"ERROR"), ustring::npos) << text.ToUtf8();
        }
        EXPECT_EQ(link.sim->Core().Writes(), std::vector<std::string>{"SL&F=441.00000"}) << f.legend << ": FEC never sent";
    }
}

TEST_P(ModemLink, SlowAnswersWithinTheTimeOutAreWaitedFor) {
    ModemSimLink link(Uhf(), Rate());
    CModemMate mate(link.Modem());
    mate.UseFamily(EModemFamily::Uhf);
    rcvsim::ModemFaults plan;
    plan.latencyMs = 400;
    plan.latencyCommand = "SL&F";
    link.sim->SetFaults(plan);
    EXPECT_LT(400u, mate.Channel().CommandTimeout());
    EXPECT_EQ(mate.Read(L"frequency"), L"438.00000");
    EXPECT_EQ(mate.Read(L"power"), L"1000") << "the answer after a slow one is its own";
}

TEST_P(ModemLink, LineNoiseIsNotTakenForAnAnswer) {
    ModemSimLink link(Uhf(), Rate());
    CModemMate mate(link.Modem());
    mate.UseFamily(EModemFamily::Uhf);
    rcvsim::ModemFaults plan;
    plan.latencyMs = 150;
    plan.garbageEveryMs = 20;
    link.sim->SetFaults(plan);
    EXPECT_EQ(mate.Read(L"frequency"), L"438.00000");
    EXPECT_EQ(mate.Read(L"address"), L"0001;0001");
    EXPECT_GT(link.modem->NoiseLines(), 0u) << "noise came while the radio thought";
}

TEST_P(ModemLink, DroppedLinkIsLostNotATimeOut) {
    ModemSimLink link(Uhf(), Rate());
    CModemMate mate(link.Modem());
    mate.UseFamily(EModemFamily::Uhf);
    EXPECT_EQ(mate.Read(L"frequency"), L"438.00000");
    ASSERT_TRUE(link.DropAndWaitForReplacement());
    try {
        mate.Read(L"frequency");
        FAIL() << "read over a dropped link";
    } catch (const basekit::CWinException& e) {
        EXPECT_EQ(e.Code(), basekit::kErrorLinkLost);
    }
    EXPECT_FALSE(link.modem->IsOpen());
}

TEST_P(ModemLink, AbortEventStopsTheWait) {
    rcvsim::ModemOptions o = Uhf();
    o.faults.silentCommands = {"SL&F"};
    ModemSimLink link(o, Rate());
    basekit::CEvent abort(basekit::CEvent::Mode::Manual, true);
    CModemMate mate(link.Modem(), &abort);
    mate.UseFamily(EModemFamily::Uhf);
    mate.Channel().SetCommandTimeout(600000);
    try {
        mate.Read(L"frequency");
        FAIL() << "no answer, yet no error";
    } catch (const basekit::CWinException& e) {
        EXPECT_EQ(e.Code(), basekit::kErrorCancelled);
    }
}

TEST_P(ModemLink, EchoedCommandsAreNotAnswers) {
    ModemSimLink link(Cellular(false, 300), Rate());
    CModemMate mate(link.Modem());
    mate.UseFamily(EModemFamily::Cellular);
    EXPECT_EQ(mate.Read(L"model"), L"CM-27");
    mate.Channel().Execute(L"ATE0", EModemReply::Final);
    EXPECT_EQ(mate.Read(L"model"), L"CM-27");
    try {
        mate.Channel().Execute(L"AT+CPIN=\"1234\"", EModemReply::Final);
        FAIL() << "an error answer passed";
    } catch (const basekit::CCommException& e) {
        EXPECT_EQ(e.Reply(), L"+CME ERROR: 3") << "the modem's own words";
        EXPECT_EQ(e.Device(), L"Modem");
    }
}

// A modem behind a network serial server: TCP, no rate of its own, the nominal 9600 for time-outs.
TEST(ModemOverTcp, BothFamiliesAreDetectedAndRead) {
    const struct {
        const char* legend;
        rcvsim::ModemKind kind;
        EModemFamily family;
        const wchar_t* key;
        const wchar_t* value;
    } cases[] = {{"radio", rcvsim::ModemKind::Uhf, EModemFamily::Uhf, L"frequency", L"438.00000"},
                 {"cellular", rcvsim::ModemKind::Cellular, EModemFamily::Cellular, L"apn", L"internet"}};
    for (const auto& c : cases) {
        rcvsim::ModemOptions o;
        o.kind = c.kind;
        o.seed = 400;
        rcvsim::ModemSim sim(o);
        const int port = sim.StartTcp("127.0.0.1", 0);
        const auto modem = CModem::Open(IPortAddr::Parse(ustring::Format(L"tcp://127.0.0.1:%d", port)));
        EXPECT_EQ(modem->GetLineRate(), 9600u) << c.legend;
        CModemMate mate(modem.Get());
        EXPECT_EQ(mate.Detect(), c.family) << c.legend;
        EXPECT_EQ(ValueOf(mate.ReadAll(), c.key), c.value) << c.legend;
    }
}

// A terminal's view of a modem: the bytes as they come, outside the command exchange.
TEST(ModemRaw, BytesForATerminal) {
    ModemSimLink link(Uhf(), 115200);
    link.modem->WriteRaw("SL%P?\r");
    std::string seen;
    for (int i = 0; i < 50 && seen.find('\r') == std::string::npos; ++i) seen += link.modem->ReadRaw(2000, nullptr);
    EXPECT_EQ(seen, "FR-400\r");
    EXPECT_EQ(link.modem->ReadRaw(0, nullptr), "") << "nothing more";
}

// A line whose far end has gone is lost, whether the modem finds it out writing or reading.
TEST(ModemRaw, WritingToAVanishedTerminalIsALostLink) {
    const int master = ::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
    ASSERT_GE(master, 0);
    ASSERT_EQ(::grantpt(master), 0);
    ASSERT_EQ(::unlockpt(master), 0);
    const std::string name = ::ptsname(master);
    const auto modem = CModem::Open(IPortAddr::Parse(ustring::FromUtf8("serial:" + name + "?baud=9600")));
    ::close(master);
    try {
        modem->WriteRaw("SL&F?\r");
        FAIL() << "written to a terminal nobody holds";
    } catch (const basekit::CWinException& e) {
        EXPECT_EQ(e.Code(), basekit::kErrorLinkLost);
    }
    EXPECT_FALSE(modem->IsOpen());
}

INSTANTIATE_TEST_SUITE_P(LineRates, ModemLink, ::testing::Values(9600, 115200),
                         [](const ::testing::TestParamInfo<int>& info) { return std::to_string(info.param); });

}  // namespace
