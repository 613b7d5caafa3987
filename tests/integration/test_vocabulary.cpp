// The command layer's whole vocabulary against the simulator over loopback TCP and a
// pseudo-terminal.
#include <gtest/gtest.h>

#include <thread>

#include "SimLink.h"
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

TEST_F(Vocabulary, EveryReadingIsAnswered) {
    using vok::DEV_SER_A;
    struct Case { const char* legend; std::function<void()> read; };
    const Case cases[] = {
        {"identity", [&] { mate.Get(par::RcvModel); mate.Get(par::RcvId); mate.Get(par::RcvSn); mate.Get(par::RcvVendor); }},
        {"versions", [&] { mate.Get(par::RcvVerMain); mate.Get(par::RcvVerHw); mate.Get(par::RcvVerBoard);
                           mate.Get(par::RcvVerPowFw); mate.Get(par::RcvVerPowHw); mate.Get(par::ExtRcvVerMain);
                           mate.Get(par::ExtRcvVerHw); }},
        {"memory", [&] { mate.Get(par::RcvMem); mate.Get(par::CpuFrq); }},
        {"power", [&] { mate.Get(par::PwrBatA); mate.Get(par::PwrBatB); mate.Get(par::PwrExt); mate.Get(par::PwrCharger);
                        mate.Get(par::PwrBoard); mate.Get(par::PwrSwitch, 1); mate.GetPowerSwitches(); mate.Get(par::ExtPowerupMode); }},
        {"bluetooth", [&] { mate.Get(par::ExtBtPower); mate.Get(par::ExtBtMux); mate.Get(par::ExtBtVerMain);
                            mate.Get(par::ExtBtBdaddr); mate.Get(par::ExtBtPincode); mate.Get(par::ExtBtName); }},
        {"audio", [&] { mate.Get(par::ExtAudioChannelVolume, 1); }},
        {"rotation", [&] { mate.Get(par::LogRotMode); mate.Get(par::LogRotRmold); mate.Get(par::LogRotScPeriod);
                           mate.Get(par::LogRotScPhase); mate.Get(par::LogRotScCount); mate.Get(par::LogRotCount);
                           mate.Get(par::LogScPeriod); mate.Get(par::CmdCreatePrefix); bool a, b; mate.GetLogImp(a, b); }},
        {"files", [&] { mate.GetCurrentFile(L'a'); mate.GetCurrentFile(L'b'); mate.Get(par::CurFileASize);
                        mate.Get(par::DevBlkARemoved); mate.Get(par::DevBlkASize); mate.Get(par::DevBlkAFree);
                        mate.Get(par::DevBlkABlockSize); mate.Get(par::DevBlkABlocks); mate.Get(par::DevBlkAMaxFiles);
                        mate.Get(par::DevBlkAFiles); mate.Get(par::DevBlkABadBlocks); mate.Get(par::DevBlkAVer);
                        mate.Get(par::DevBlkATfmt); mate.GetFsInitState(); mate.GetFileList(10000); }},
        {"reference", [&] { mate.GetReferenceGeo(L"arp"); mate.GetReferenceXyz(L"pos"); mate.Get(par::RefAntId);
                            mate.Get(par::RefAvgMode); mate.Get(par::RefAvgCheck); mate.Get(par::RefAvgSpan);
                            mate.Get(par::RefAvgLimit); mate.Get(par::RefAvgCurPointId); mate.Get(par::RefAvgCurPointName);
                            mate.GetCurrentPointGeo(L"arp"); mate.GetCurrentPointXyz(L"pos"); }},
        {"locks", [&] { mate.GetSatLocks(L"waas"); mate.GetSatLocks(L"qzss"); mate.GetGpsL5Lock(); mate.Get(par::LockElm);
                        mate.Get(par::WaasNumb); mate.Get(par::WaasSat, 1); mate.Get(par::WaasIon, 1); mate.Get(par::WaasInstead0, 1); }},
        {"positioning", [&] { mate.Get(par::PosModeCur); mate.Get(par::PosModeSp); mate.Get(par::PosModeCd);
                              mate.Get(par::PosDionMode); mate.Get(par::PosRtkDynamic); mate.Get(par::PosPdAflevel);
                              mate.Get(par::PosPdMode); mate.Get(par::PosPdDyn); mate.Get(par::PosPdTextr);
                              mate.Get(par::PosPdPeriod); mate.Get(par::PosPdVer); mate.Get(par::PosPdop); mate.Get(par::PosElm);
                              mate.Get(par::OutElm, L"dev/ser/a"); mate.Get(par::AntennaInput); mate.Get(par::AntennaInputInUse); }},
        {"raw and buttons", [&] { mate.Get(par::RawClpStatic); mate.Get(par::RawCorrCaCode); mate.Get(par::RawCorrCaCarrier);
                                  mate.Get(par::AjmMode); mate.Get(par::ButtonDyn); mate.Get(par::ButtonAction); mate.Get(par::ButtonAuto); }},
        {"ports", [&] { mate.Get(par::PortRate, DEV_SER_A); mate.Get(par::PortBits, DEV_SER_A); mate.Get(par::PortParity, DEV_SER_A);
                        mate.Get(par::PortStops, DEV_SER_A); mate.Get(par::PortRtsCts, DEV_SER_A); mate.Get(par::PortIMode, DEV_SER_A);
                        mate.Get(par::PortEcho, DEV_SER_A); mate.Get(par::PortDup, DEV_SER_A); mate.Get(par::PortEoff, DEV_SER_A);
                        mate.GetCurrentTerminal(); }},
        {"script port", [&] { mate.Get(par::PortProfile, vok::COM_A); mate.Get(par::PortId, vok::COM_A);
                              mate.GetScriptVariableName(L"com/a", 1); mate.Get(par::PortVarValue, vok::COM_A, 1);
                              mate.Get(par::PortCurState, vok::COM_A); }},
        {"messages", [&] { mate.ListMessages(L"def"); mate.ListMessages(L"nmea"); mate.GetPortMessages(DEV_SER_A);
                           mate.GetDefaultSchedule(L"nmea/GGA"); }},
        {"lists", [&] { EXPECT_FALSE(mate.ListPorts(L"dev/ser").empty()); mate.ListAntennaIds(); }},
        {"bulk", [&] { mate.ReadSettingsListing(); }},
    };
    for (const auto& c : cases) EXPECT_NO_THROW(c.read()) << c.legend;
}

TEST_F(Vocabulary, WhatIsSetIsReadBack) {
    mate.Set(par::LogRotScPeriod, 900);
    EXPECT_EQ(mate.Get(par::LogRotScPeriod), 900);
    mate.Set(par::AjmMode, vok::AJM_MANUAL);
    EXPECT_EQ(mate.Get(par::AjmMode), vok::AJM_MANUAL);
    mate.Set(par::ExtBtName, L"Rover, north");
    EXPECT_EQ(mate.Get(par::ExtBtName), L"Rover, north");
    mate.Set(par::PortEcho, vok::DEV_TCP_B, vok::DEV_SER_C);
    EXPECT_EQ(mate.Get(par::PortEcho, vok::DEV_SER_C), vok::DEV_TCP_B);
    mate.SetSatLocks(L"waas", {{131, true}, {133, false}});
    const auto locks = mate.GetSatLocks(L"waas");
    EXPECT_NE(std::find(locks.begin(), locks.end(), vok::SAT_LOCK{131, true}), locks.end());
    const vok::POS_GEO geo{55.123456, -37.5, 150.25};
    mate.SetReferencePosition(L"arp", geo);
    const vok::POS_GEO back = mate.GetReferenceGeo(L"arp");
    EXPECT_NEAR(back.lat, geo.lat, 1e-7);
    EXPECT_NEAR(back.lon, geo.lon, 1e-7);
    mate.DisableMessages(vok::DEV_SER_B);
    mate.EnableMessage(vok::DEV_SER_B, {L"/msg/nmea/GGA", 5, 0, 0, 0});
    const auto msgs = mate.GetPortMessages(vok::DEV_SER_B);
    ASSERT_EQ(msgs.size(), 1u);
    EXPECT_EQ(msgs[0].name, L"/msg/nmea/GGA");
    EXPECT_DOUBLE_EQ(msgs[0].period, 5.0);
    mate.SendEvent(L"_SIT", L"Hill 7");
}

TEST_F(Vocabulary, ErrorRepliesAndTheirToleratedForms) {
    try {
        mate.ExecuteCommand(L"frobnicate,x");
        FAIL();
    } catch (const basekit::CCommException& e) {
        EXPECT_EQ(e.Reply(), L"{2,,wrong command}");
    }
    try {
        mate.ExecuteCommand(L"print,no/such/path");
        FAIL();
    } catch (const basekit::CCommException& e) {
        EXPECT_EQ(e.Reply(), L"{2,,wrong 1st parameter}");
    }
    EXPECT_TRUE(mate.ListPorts(L"dev/nothing").empty());
    EXPECT_THROW(mate.Set(par::LogRotScPeriod, 0), basekit::CCommException) << "a value out of the receiver's range";
    EXPECT_EQ(mate.Get(par::LogRotScPeriod), 3600) << "and nothing changed";
}

TEST_F(Vocabulary, ResetAndInitialisationReturnWithoutError) {
    EXPECT_NO_THROW(mate.ResetReceiver());
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
    EXPECT_NO_THROW(mate.InitParameters());
    EXPECT_EQ(mate.Get(par::RcvModel), L"FNK-600") << "the link still answers afterwards";
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

TEST(VocabularyFaults, ADroppedLinkFailsTheWaitingCommandAtOnce) {
    SimLink link;
    rcvsim::FaultPlan silent;
    silent.silenceAll = true;
    link.sim->SetFaults(silent);
    CVokReceiverMate mate(link.Receiver());
    std::thread dropper([&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
        link.sim->DropLinks();
    });
    const auto start = std::chrono::steady_clock::now();
    try {
        mate.ExecuteCommand(L"print,rcv/model", true, 60000);
        FAIL();
    } catch (const basekit::CWinException& e) {
        EXPECT_EQ(e.Code(), basekit::kErrorLinkLost);
    }
    dropper.join();
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(30));
    EXPECT_FALSE(link.receiver->IsReady());
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
    EXPECT_GT(link.receiver->Counters().lexer.garbageBytes, 0u) << "the bursts really came";
    mate.DisableMessages(vok::CUR_TERM);
}

TEST(VocabularyOverPty, RepliesMatchWhileNmeaFlows) {
    SimLink link(SimLink::Over::Pty, {}, 115200);
    CVokReceiverMate mate(link.Receiver());
    EXPECT_EQ(mate.LineRate(), 115200u);
    EXPECT_EQ(mate.GetCurrentTerminal(), vok::DEV_SER_A);
    mate.EnableMessages(vok::CUR_TERM, L"/msg/nmea/GGA:{0.1,0,0,0x0}");
    // Commands keep going until sentences have arrived between them (bounded: 300 rounds).
    for (int i = 0; i < 300 && (i < 20 || link.receiver->Counters().sentencesDecoded < 3); ++i) {
        EXPECT_EQ(mate.Get(par::RcvModel), L"FNK-600");
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    mate.DisableMessages(vok::CUR_TERM);
    EXPECT_GT(link.receiver->Counters().sentencesDecoded, 0u) << "NMEA arrived between the replies";
}

}  // namespace
