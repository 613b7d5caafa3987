// The command layer's whole vocabulary against the simulator over loopback TCP and a
// pseudo-terminal.
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <functional>
#include <thread>

#include "SimLink.h"
#include "support/Completion.h"
#include "fenklib/receiver/CVokReceiverMate.h"
#include "platform/basekit/CCommException.h"
#include "platform/basekit/CWinException.h"

using namespace devio;
using fenktest::SimLink;
using basekit::ustring;

namespace {

class Vocabulary : public ::testing::Test {
protected:
    SimLink link;
    CVokReceiverMate mate{link.Receiver()};
};

// Each path the catalogue reads, against the simulator's own parameter tree: a misspelt path
// or a reply the getter cannot take throws.
TEST_F(Vocabulary, EveryReadingIsAnswered) {
    using vok::DEV_SER_A;
    using vok::COM_A;
    const auto read = [&](const auto&... p) { (mate.Get(p), ...); };
    const auto readPort = [&](const auto&... p) { (mate.Get(p, DEV_SER_A), ...); };
    struct Case { const char* legend; std::function<void()> read; };
    const Case cases[] = {
        {"identity and versions", [&] { read(par::RcvModel, par::RcvId, par::RcvSn, par::RcvVendor, par::RcvVerMain, par::RcvVerHw,
                                              par::RcvVerBoard, par::RcvVerPowFw, par::RcvVerPowHw, par::ExtRcvVerMain,
                                              par::ExtRcvVerHw, par::RcvMem, par::CpuFrq); }},
        {"power", [&] { read(par::PwrBatA, par::PwrBatB, par::PwrExt, par::PwrCharger, par::PwrBoard, par::ExtPowerupMode);
                        mate.Get(par::PwrSwitch, 1); mate.GetPowerSwitches(); }},
        {"bluetooth and audio", [&] { read(par::ExtBtPower, par::ExtBtMux, par::ExtBtVerMain, par::ExtBtBdaddr, par::ExtBtPincode,
                                           par::ExtBtName); mate.Get(par::ExtAudioChannelVolume, 1); }},
        {"rotation", [&] { read(par::LogRotMode, par::LogRotRmold, par::LogRotScPeriod, par::LogRotScPhase, par::LogRotScCount,
                                par::LogRotCount, par::LogScPeriod, par::CmdCreatePrefix); bool a, b; mate.GetLogImp(a, b); }},
        {"files", [&] { read(par::CurFileASize, par::DevBlkARemoved, par::DevBlkASize, par::DevBlkAFree, par::DevBlkABlockSize,
                             par::DevBlkABlocks, par::DevBlkAMaxFiles, par::DevBlkAFiles, par::DevBlkABadBlocks, par::DevBlkAVer,
                             par::DevBlkATfmt);
                        mate.GetCurrentFile(L'a'); mate.GetCurrentFile(L'b'); mate.GetFsInitState(); mate.GetFileList(10000); }},
        {"reference", [&] { read(par::RefAntId, par::RefAvgMode, par::RefAvgCheck, par::RefAvgSpan, par::RefAvgLimit,
                                 par::RefAvgCurPointId, par::RefAvgCurPointName);
                            mate.GetReferenceGeo(L"arp"); mate.GetReferenceXyz(L"pos");
                            mate.GetCurrentPointGeo(L"arp"); mate.GetCurrentPointXyz(L"pos"); }},
        {"locks", [&] { read(par::LockElm, par::WaasNumb); mate.Get(par::WaasSat, 1); mate.Get(par::WaasIon, 1);
                        mate.Get(par::WaasInstead0, 1); mate.GetSatLocks(L"waas"); mate.GetSatLocks(L"qzss"); mate.GetGpsL5Lock(); }},
        {"positioning", [&] { read(par::PosModeCur, par::PosModeSp, par::PosModeCd, par::PosDionMode, par::PosRtkDynamic,
                                   par::PosPdAflevel, par::PosPdMode, par::PosPdDyn, par::PosPdTextr, par::PosPdPeriod, par::PosPdVer,
                                   par::PosPdop, par::PosElm, par::AntennaInput, par::AntennaInputInUse);
                              mate.Get(par::OutElm, L"dev/ser/a"); }},
        {"raw and buttons", [&] { read(par::RawClpStatic, par::RawCorrCaCode, par::RawCorrCaCarrier, par::AjmMode, par::ButtonDyn,
                                       par::ButtonAction, par::ButtonAuto); }},
        {"ports", [&] { readPort(par::PortRate, par::PortBits, par::PortParity, par::PortStops, par::PortRtsCts, par::PortIMode,
                                 par::PortEcho, par::PortDup, par::PortEoff); mate.GetCurrentTerminal(); }},
        {"script port", [&] { mate.Get(par::PortProfile, COM_A); mate.Get(par::PortId, COM_A); mate.Get(par::PortCurState, COM_A);
                              mate.GetScriptVariableName(L"com/a", 1); mate.Get(par::PortVarValue, COM_A, 1); }},
        {"messages, lists, bulk", [&] { mate.ListMessages(L"def"); mate.ListMessages(L"nmea"); mate.GetPortMessages(DEV_SER_A);
                                        mate.GetDefaultSchedule(L"nmea/GGA"); mate.ListAntennaIds(); mate.ReadSettingsListing();
                                        EXPECT_FALSE(mate.ListPorts(L"dev/ser").empty()); }},
    };
    for (const auto& c : cases) EXPECT_NO_THROW(c.read()) << c.legend;
}

// Values written as command text and read back through the simulator's own parser.
TEST_F(Vocabulary, WhatIsSetIsReadBack) {
    mate.Set(par::LogRotScPeriod, 900);
    EXPECT_EQ(mate.Get(par::LogRotScPeriod), 900);
    mate.Set(par::AjmMode, vok::AJM_MANUAL);
    EXPECT_EQ(mate.Get(par::AjmMode), vok::AJM_MANUAL);
    mate.Set(par::ExtBtName, L"Rover, north");
    EXPECT_EQ(mate.Get(par::ExtBtName), L"Rover, north") << "a comma inside quotes";
    mate.Set(par::PortEcho, vok::DEV_TCP_B, vok::DEV_SER_C);
    EXPECT_EQ(mate.Get(par::PortEcho, vok::DEV_SER_C), vok::DEV_TCP_B);
    mate.SetSatLocks(L"waas", {{131, true}, {133, false}});
    const auto locks = mate.GetSatLocks(L"waas");
    EXPECT_NE(std::find(locks.begin(), locks.end(), vok::SAT_LOCK{131, true}), locks.end());
    mate.SetReferencePosition(L"arp", vok::POS_GEO{55.123456, -37.5, 150.25});
    EXPECT_NEAR(mate.GetReferenceGeo(L"arp").lon, -37.5, 1e-7);
    mate.DisableMessages(vok::DEV_SER_B);
    mate.EnableMessage(vok::DEV_SER_B, {L"/msg/nmea/GGA", 5, 0, 0, 0});
    const auto msgs = mate.GetPortMessages(vok::DEV_SER_B);
    ASSERT_EQ(msgs.size(), 1u);
    EXPECT_EQ(msgs[0].name, L"/msg/nmea/GGA");
    EXPECT_DOUBLE_EQ(msgs[0].period, 5.0);
}

TEST_F(Vocabulary, ErrorRepliesCarryTheReceiversText) {
    struct Case { const wchar_t* command; const wchar_t* reply; };
    for (const Case& c : {Case{L"frobnicate,x", L"{2,,wrong command}"}, Case{L"print,no/such/path", L"{2,,wrong 1st parameter}"}}) {
        try {
            mate.ExecuteCommand(c.command);
            ADD_FAILURE() << "no error for " << ustring(c.command).ToUtf8();
        } catch (const basekit::CCommException& e) {
            EXPECT_EQ(e.Reply(), c.reply);
        }
    }
    EXPECT_TRUE(mate.ListPorts(L"dev/nothing").empty()) << "an empty list is no error";
    EXPECT_THROW(mate.Set(par::LogRotScPeriod, 0), basekit::CCommException) << "a value out of the receiver's range";
    EXPECT_EQ(mate.Get(par::LogRotScPeriod), 3600) << "and nothing changed";
    EXPECT_NO_THROW(mate.ResetReceiver());
    EXPECT_EQ(mate.Get(par::RcvModel), L"FNK-600") << "the link still answers after a reset";
}

TEST(VocabularyFaults, OldFirmwareFallsBackAndSlowRepliesWait) {
    rcvsim::SimOptions options;
    options.oldFirmware = true;
    options.faults.latencyMs = 150;
    options.faults.latencyPath = "rcv/sn";
    SimLink link(SimLink::Over::Tcp, options);
    CVokReceiverMate mate(link.Receiver());
    EXPECT_NO_THROW(mate.InitParameters()) << "init,/setup/ unknown: init,/par/ instead";
    EXPECT_EQ(mate.Get(par::RcvSn), L"8Y4K21S0057") << "a slow reply still arrives";
    rcvsim::FaultPlan silent;
    silent.silentPaths = {"rcv/id"};
    link.sim->SetFaults(silent);
    try {
        mate.ExecuteCommand(L"print,rcv/id", true, 300);
        FAIL();
    } catch (const basekit::CWinException& e) {
        EXPECT_EQ(e.Code(), basekit::kErrorTimeout);
    }
    EXPECT_EQ(mate.Get(par::RcvModel), L"FNK-600") << "after a time-out the next command goes through";
}

// The link is dropped while the command waits on a silent receiver: it fails as lost, not by
// waiting out its minute. A first reply shows the simulator serves the link; the command is on
// the wire once IssueCommand returns.
TEST(VocabularyFaults, ADroppedLinkFailsTheWaitingCommand) {
    SimLink link;
    ASSERT_EQ(CVokReceiverMate(link.Receiver()).Get(par::RcvModel), L"FNK-600");
    rcvsim::FaultPlan silent;
    silent.silenceAll = true;
    link.sim->SetFaults(silent);
    fenktest::Completion waiting;
    link.receiver->IssueCommand(L"print,rcv/model", true, waiting.reply, waiting.notice, 60000, false);
    link.sim->DropLinks();
    ASSERT_TRUE(waiting.Wait(90000)) << "past its own time-out: a hang guard only";
    EXPECT_EQ(waiting.reply->Take().linkError, basekit::kErrorLinkLost) << "not the minute's time-out";
    EXPECT_FALSE(link.receiver->IsReady());
    CVokReceiverMate mate(link.Receiver());
    try {
        mate.ExecuteCommand(L"print,rcv/model", true, 60000);
        FAIL() << "a command on the dropped link must fail";
    } catch (const basekit::CWinException& e) {
        EXPECT_EQ(e.Code(), basekit::kErrorLinkLost);
    }
}

TEST(VocabularyFaults, AMegabyteReplyThroughGarbageBursts) {
    rcvsim::SimOptions options;
    options.dumpBytes = 1024 * 1024;
    options.faults.garbageEveryMs = 5;
    options.faults.garbageBytes = 64;
    SimLink link(SimLink::Over::Tcp, options);
    CVokReceiverMate mate(link.Receiver());
    mate.EnableMessages(vok::CUR_TERM, L"/msg/nmea/GSV:{0.2,0,0,0x0}");
    const ustring dump = mate.ExecuteCommand(L"print,/par:on", false, 60000);
    EXPECT_GE(dump.size(), 1024u * 1024u);
    EXPECT_NE(dump.find(L"rcv/model"), ustring::npos);
    for (int i = 0; i < 20; ++i) EXPECT_EQ(mate.Get(par::RcvModel), L"FNK-600");
    // Commands keep going until a burst has come between them (bounded in rounds and time): the
    // reply above may have been quicker than the first burst.
    const auto giveUp = std::chrono::steady_clock::now() + std::chrono::seconds(30);
    for (int i = 0; i < 100000 && link.receiver->Counters().lexer.garbageBytes == 0 && std::chrono::steady_clock::now() < giveUp; ++i)
        ASSERT_EQ(mate.Get(par::RcvModel), L"FNK-600");
    EXPECT_GT(link.receiver->Counters().lexer.garbageBytes, 0u) << "the bursts really came";
}

TEST(VocabularyOverPty, RepliesMatchWhileNmeaFlows) {
    SimLink link(SimLink::Over::Pty, {}, 115200);
    CVokReceiverMate mate(link.Receiver());
    EXPECT_EQ(mate.LineRate(), 115200u);
    EXPECT_EQ(mate.GetCurrentTerminal(), vok::DEV_SER_A);
    mate.EnableMessages(vok::CUR_TERM, L"/msg/nmea/GGA:{0.1,0,0,0x0}");
    // Commands keep going until sentences have arrived between them (bounded in rounds and time).
    const auto giveUp = std::chrono::steady_clock::now() + std::chrono::seconds(30);
    for (int i = 0; i < 100000 && link.receiver->Counters().sentencesDecoded < 3 && std::chrono::steady_clock::now() < giveUp; ++i)
        ASSERT_EQ(mate.Get(par::RcvModel), L"FNK-600");
    mate.DisableMessages(vok::CUR_TERM);
    EXPECT_GT(link.receiver->Counters().sentencesDecoded, 0u) << "NMEA arrived between the replies";
}

}  // namespace
