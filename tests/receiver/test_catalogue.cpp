#include <gtest/gtest.h>

#include "support/ScriptedReceiver.h"
#include "fenklib/receiver/CVokReceiverMate.h"
#include "platform/basekit/CCommException.h"

using namespace devio;
using fenktest::CScriptedReceiver;
using basekit::ustring;

namespace {

struct CatalogueTest : ::testing::Test {
    CSmartPtr<CScriptedReceiver> rx{new CScriptedReceiver()};
    CVokReceiverMate mate{CSmartPtr<IReceiver>(rx.Get())};
    // Answers `command` with `reply`, runs `call` and checks that exactly `command` was sent.
    template <typename F>
    auto Exchange(const ustring& command, const ustring& reply, F&& call) {
        rx->ClearLog();
        rx->On(command, CScriptedReceiver::Reply(reply));
        auto result = call();
        EXPECT_EQ(rx->Sent(), std::vector<ustring>{command});
        return result;
    }
};

// An answer no table knows reads as that getter's own default, as the receiver's firmware
// documents it for each setting.
TEST_F(CatalogueTest, UnknownKeywordsReadAsEachTablesDefault) {
    rx->Otherwise(CScriptedReceiver::Reply(L"bogus"));
    struct Case { const char* legend; int got; int want; };
    const Case cases[] = {
        {"DION mode: off", mate.Get(par::PosDionMode), 0},
        {"RTK dynamics: static", mate.Get(par::PosRtkDynamic), 0},
        {"ambiguity fixing: medium", mate.Get(par::PosPdAflevel), 1},
        {"position computation: sp", mate.Get(par::PosModeCur), 0},
        {"antenna input: auto", mate.Get(par::AntennaInput), 2},
        {"anti-jamming: auto", mate.Get(par::AjmMode), 4},
        {"button dynamics: static", mate.Get(par::ButtonDyn), 0},
        {"port rate: 115200", mate.Get(par::PortRate, vok::DEV_SER_A), 9},
        {"byte size: 8", mate.Get(par::PortBits, vok::DEV_SER_A), 3},
        {"parity: N", mate.Get(par::PortParity, vok::DEV_SER_A), 0},
        {"stop bits: 1", mate.Get(par::PortStops, vok::DEV_SER_A), 0},
        {"RTS/CTS: off", mate.Get(par::PortRtsCts, vok::DEV_SER_A), 0},
        {"input mode: none", mate.Get(par::PortIMode, vok::DEV_SER_A), 0},
        {"ionospheric corrections: a word reads as 0", mate.Get(par::WaasIon, 1), 0},
    };
    for (const auto& c : cases) EXPECT_EQ(c.got, c.want) << c.legend;
}

TEST_F(CatalogueTest, GettersSendTheirTextAndConvert) {
    using vok::DEV_SER_B;
    EXPECT_EQ(Exchange(L"print,rcv/model", L" FNK-600 \r", [&] { return mate.Get(par::RcvModel); }), L"FNK-600 \r")
        << "texts are trimmed of blanks only";
    EXPECT_EQ(Exchange(L"print,rcv/mem", L"65536", [&] { return mate.Get(par::RcvMem); }), 65536);
    EXPECT_EQ(Exchange(L"print,rcv/mem", L"lots", [&] { return mate.Get(par::RcvMem); }), 0) << "not a number reads 0";
    EXPECT_EQ(Exchange(L"print,dev/blk/a/blocks", L"4000000000", [&] { return mate.Get(par::DevBlkABlocks); }), 4000000000u);
    EXPECT_DOUBLE_EQ(Exchange(L"print,pos/pdop", L"12.5", [&] { return mate.Get(par::PosPdop); }), 12.5);
    EXPECT_TRUE(Exchange(L"print,log/rot/mode", L"none", [&] { return mate.Get(par::LogRotMode); }))
        << "none holds on";
    EXPECT_FALSE(Exchange(L"print,/ext/bt/power", L"yes", [&] { return mate.Get(par::ExtBtPower); }));
    EXPECT_EQ(Exchange(L"print,dev/ser/b/rate", L" 4800 ", [&] { return mate.Get(par::PortRate, DEV_SER_B); }),
              vok::BAUD_4800) << "keyword getters trim first";
    EXPECT_EQ(Exchange(L"print,dev/ser/b/echo", L"/dev/tcp/c", [&] { return mate.Get(par::PortEcho, DEV_SER_B); }),
              vok::DEV_TCP_C);
    EXPECT_EQ(Exchange(L"print,waas/2/ion", L"1", [&] { return mate.Get(par::WaasIon, 2); }), vok::IONO_1);
    EXPECT_EQ(Exchange(L"print,ref/avg/list/pnts/03/name", L" Hill ", [&] { return mate.Get(par::RefAvgPointName, 3); }),
              L" Hill ") << "stored point names are untrimmed";
    EXPECT_EQ(Exchange(L"print,ref/avg/list/pnts/01/date", L"2024/06/02 15:40:27", [&] { return mate.Get(par::RefAvgPointDate, 1); }),
              QDateTime(QDate(2024, 6, 2), QTime(15, 40, 27), QTimeZone::utc())) << "a stored point's date is a date value";
    EXPECT_FALSE(Exchange(L"print,ref/avg/list/pnts/01/date", L"never", [&] { return mate.Get(par::RefAvgPointDate, 1); }).isValid());
    EXPECT_EQ(Exchange(L"print,/cur/file/a", L"/log/base0101a.fnk", [&] { return mate.GetCurrentFile(L'a'); }),
              L"base0101a.fnk") << "the log folder is removed";
    EXPECT_EQ(Exchange(L"print,/cur/term", L"/dev/tcp/a", [&] { return mate.GetCurrentTerminal(); }), vok::DEV_TCP_A);
}

TEST_F(CatalogueTest, SettersFormatTheirArguments) {
    rx->Otherwise(CScriptedReceiver::Reply(L"ok"));
    struct Case { const char* legend; std::function<void()> call; const wchar_t* sent; };
    const Case cases[] = {
        {"boolean", [&] { mate.Set(par::LogRotRmold, true); }, L"set,log/rot/rmold,on"},
        {"integer", [&] { mate.Set(par::LogRotScPeriod, 3600); }, L"set,log/rot/sc/period,3600"},
        {"real in six decimals", [&] { mate.Set(par::LogScPeriod, 0.5); }, L"set,log/sc/period,0.500000"},
        {"enumeration", [&] { mate.Set(par::AjmMode, vok::AJM_MANUAL); }, L"set,ajm/mode,manual"},
        {"port keyword", [&] { mate.Set(par::PortIMode, vok::IMODE_RTCM3, vok::DEV_TCP_B); }, L"set,dev/tcp/b/imode,rtcm3"},
        {"echo target after a slash", [&] { mate.Set(par::PortEcho, vok::DEV_SER_C, vok::DEV_SER_A); }, L"set,dev/ser/a/echo,/dev/ser/c"},
        {"quoted text", [&] { mate.Set(par::PortEoff, L"+++", vok::DEV_SER_A); }, L"set,dev/ser/a/eoff,\"+++\""},
        {"multipath on", [&] { mate.Set(par::RawCorrCaCode, true); }, L"set,raw/corr/ca/code,mpnew"},
        {"multipath off", [&] { mate.Set(par::RawCorrCaCarrier, false); }, L"set,raw/corr/ca/carrier,normal"},
        {"two-digit index", [&] { mate.Set(par::RefAvgPointOptionProtect, true, 7); }, L"set,ref/avg/list/pnts/07/option/protect,on"},
        {"script variable", [&] { mate.Set(par::PortVarName, L"apn", vok::COM_A, 2); }, L"set,com/a/var/2/name,\"apn\""},
        {"action", [&] { mate.Do(par::PortClear, vok::COM_B); }, L"set,/par/com/b/clr,y"},
        {"action with an index", [&] { mate.Do(par::ExtAudioPlay, 4); }, L"set,/ext/audio/play/4,on"},
        {"lock list", [&] { mate.SetSatLocks(L"waas", {{120, true}, {124, false}}); }, L"set,lock/waas/sat,{120=y,124=n}"},
        {"L5 lock", [&] { mate.SetGpsL5Lock(true); }, L"set,lock/gps/l5,{off,on}"},
        {"log imp flags", [&] { mate.SetLogImp(false, true); }, L"set,log/imp,{n,y}"},
        {"event", [&] { mate.SendEvent(L"_SIT", L"Hill 7"); }, L"event,\"_SIT=Hill 7\""},
        {"one message", [&] { mate.EnableMessage(vok::DEV_SER_A, {L"/msg/nmea/GGA", 1, 0.5, 0, 0x1f}); },
         L"em,/dev/ser/a,/msg/nmea/GGA:{1.000000,0.500000,0,0x1f}"},
        {"default schedule", [&] { mate.SetDefaultSchedule({L"fnk/PO", 0.2, 0, 3, 0}); },
         L"set,/msg/def/fnk/PO,{0.200000,0.000000,3,0x0}"},
        {"reference position", [&] { mate.SetReferencePosition(L"arp", vok::POS_XYZ{1, 2, 3}); },
         L"set,ref/arp//xyz,{W84,1.0000,2.0000,3.0000}"},
        {"remove quoted", [&] { mate.RemoveItem(L"/log/a b"); }, L"remove,\"/log/a b\""},
    };
    for (const auto& c : cases) {
        rx->ClearLog();
        c.call();
        EXPECT_EQ(rx->Sent(), std::vector<ustring>{c.sent}) << c.legend;
    }
    rx->ClearLog();
    mate.SetPortMessages(vok::CUR_FILE_B, {{L"nmea/GSV", 5, 1, -256, 0x81}, {L"/msg/qls/PV", 0.1, 0, 32767, 0}});
    EXPECT_EQ(rx->Sent(), (std::vector<ustring>{L"dm,/cur/file/b", L"em,/cur/file/b,nmea/GSV:{5.000000,1.000000,-256,0x81}",
                                                 L"em,/cur/file/b,/msg/qls/PV:{0.100000,0.000000,32767,0x0}"}))
        << "a port's list: disable all, then each message in order";
}

TEST_F(CatalogueTest, CombinedSerialCommandExpectsNoReply) {
    mate.SetSerialParameters(vok::DEV_SER_B, vok::BAUD_9600, vok::RTS_ON, vok::STOPS_2, vok::PARITY_EVEN, vok::BITS_7);
    EXPECT_EQ(rx->Sent(), std::vector<ustring>{
        L"set,dev/ser/b/rate,9600;set,dev/ser/b/rtscts,on;set,dev/ser/b/stops,2;set,dev/ser/b/parity,even;set,dev/ser/b/bits,7"});
    EXPECT_EQ(rx->Flags().back(), std::make_pair(false, false)) << "sendFlag false";
}

TEST_F(CatalogueTest, ListsAndTheirShapes) {
    const auto locks = Exchange(L"print,lock/qzss/sat:on", L"{193=y,194,195=n,x=y}", [&] { return mate.GetSatLocks(L"qzss"); });
    EXPECT_EQ(locks, (std::vector<vok::SAT_LOCK>{{193, true}, {195, false}})) << "items without = are skipped";

    const auto ports = Exchange(L"list,/par/dev/ser", L"{/par/dev/ser/={a=on,b =off, c=x,a=on}}",
                                [&] { return mate.ListPorts(L"dev/ser"); });
    EXPECT_EQ(ports, (std::vector<vok::EDev>{vok::DEV_SER_A, vok::DEV_SER_B, vok::DEV_SER_C})) << "echoed path, trimmed, once";

    rx->On(L"list,/par/dev/mvp", CScriptedReceiver::Error(L"{2,,wrong 1st parameter}"));
    EXPECT_TRUE(mate.ListPorts(L"dev/mvp").empty()) << "an unknown class lists nothing";
    rx->On(L"list,/par/dev/usb", CScriptedReceiver::Error(L"{2,,busy}"));
    EXPECT_THROW(mate.ListPorts(L"dev/usb"), basekit::CCommException) << "other errors pass";

    const auto msgs = Exchange(L"print,out/dev/tcp/a:on", L"{/msg/nmea/GGA={1.00,0.00,0,0x0},bad=1,/msg/fnk/DL={0.5,0.25,10,0x1A}}",
                               [&] { return mate.GetPortMessages(vok::DEV_TCP_A); });
    ASSERT_EQ(msgs.size(), 2u) << "entries of another shape are skipped";
    EXPECT_EQ(msgs[1], (vok::MSG{L"/msg/fnk/DL", 0.5, 0.25, 10, 0x1a}));
    EXPECT_TRUE(Exchange(L"print,out/dev/ser/d:on", L"{}", [&] { return mate.GetPortMessages(vok::DEV_SER_D); }).empty());

    bool a = false, b = true;
    Exchange(L"print,log/imp", L"{y,n}", [&] { mate.GetLogImp(a, b); return 0; });
    EXPECT_TRUE(a);
    EXPECT_FALSE(b);

    rx->On(L"print,com/a/var/3/name", CScriptedReceiver::Error(L"{2,,wrong 1st parameter}"));
    EXPECT_EQ(mate.GetScriptVariableName(L"com/a", 3), L"") << "an unknown variable has the empty name";
    EXPECT_EQ(Exchange(L"print,dev/tcp/a/scripts", L"{ntrip,{x,y},ftp}",
                       [&] { return mate.GetPortScriptList(vok::DEV_TCP_A, L"scripts"); }),
              (std::vector<ustring>{L"ntrip", L"{x,y}", L"ftp"}));
}

}  // namespace
