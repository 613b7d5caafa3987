#include <gtest/gtest.h>

#include "support/ScriptedReceiver.h"
#include "fenklib/receiver/CVokReceiverMate.h"

using namespace devio;
using fenktest::CScriptedReceiver;
using basekit::ustring;

namespace {

void ScriptPort(CScriptedReceiver& rx) {
    rx.On(L"print,dev/ser/b/echo", CScriptedReceiver::Reply(L"/dev/null"));
    rx.On(L"print,dev/ser/b/dup", CScriptedReceiver::Reply(L"/dev/ser/c"));
    rx.On(L"print,dev/ser/b/eoff", CScriptedReceiver::Reply(L"\"+++\""));
    rx.On(L"print,dev/ser/b/imode", CScriptedReceiver::Reply(L"rtcm3"));
    rx.On(L"print,out/dev/ser/b:on", CScriptedReceiver::Reply(L"{/msg/nmea/GGA={1.00,0.00,0,0x0}}"));
    rx.On(L"print,dev/ser/b/rate", CScriptedReceiver::Reply(L"57600"));
    rx.On(L"print,dev/ser/b/rtscts", CScriptedReceiver::Reply(L"on"));
    rx.On(L"print,dev/ser/b/stops", CScriptedReceiver::Reply(L"1"));
    rx.On(L"print,dev/ser/b/parity", CScriptedReceiver::Reply(L"N"));
    rx.On(L"print,dev/ser/b/bits", CScriptedReceiver::Reply(L"8"));
    rx.Otherwise(CScriptedReceiver::Reply(L""));
}

TEST(SettingsRestorer, SerialPortIsPutBackInOrder) {
    const CSmartPtr<CScriptedReceiver> rx(new CScriptedReceiver());
    ScriptPort(*rx);
    CVokReceiverMate mate{CSmartPtr<IReceiver>(rx.Get())};
    {
        const CReceiverSettingsRestorer::CSerialPortSettings saved(mate, vok::DEV_SER_B);
        rx->ClearLog();
        mate.Set(par::PortRate, vok::BAUD_921600, vok::DEV_SER_B);
        rx->ClearLog();
    }
    EXPECT_EQ(rx->Sent(), (std::vector<ustring>{
        L"set,dev/ser/b/rate,57600", L"set,dev/ser/b/rtscts,on", L"set,dev/ser/b/stops,1",
        L"set,dev/ser/b/parity,N", L"set,dev/ser/b/bits,8",
        L"set,dev/ser/b/echo,/dev/null", L"set,dev/ser/b/dup,/dev/ser/c", L"set,dev/ser/b/eoff,\"+++\"",
        L"set,dev/ser/b/imode,rtcm3", L"dm,/dev/ser/b", L"em,/dev/ser/b,/msg/nmea/GGA:{1.000000,0.000000,0,0x0}"}));
}

TEST(SettingsRestorer, AFailingStepDoesNotStopTheOthersNorEscape) {
    const CSmartPtr<CScriptedReceiver> rx(new CScriptedReceiver());
    ScriptPort(*rx);
    rx->On(L"set,dev/ser/b/rate,57600", CScriptedReceiver::Error(L"{2,,wrong 1st parameter}"));
    rx->On(L"dm,/dev/ser/b", CScriptedReceiver::LinkLost());
    CVokReceiverMate mate{CSmartPtr<IReceiver>(rx.Get())};
    EXPECT_NO_THROW({
        const CReceiverSettingsRestorer::CSerialPortSettings saved(mate, vok::DEV_SER_B);
        rx->ClearLog();
    });
    const auto sent = rx->Sent();
    EXPECT_EQ(sent.size(), 11u) << "every step was tried";
    EXPECT_EQ(sent.back(), L"em,/dev/ser/b,/msg/nmea/GGA:{1.000000,0.000000,0,0x0}");
}

}  // namespace
