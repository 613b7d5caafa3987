#include <gtest/gtest.h>

#include <thread>

#include "support/ScriptedReceiver.h"
#include "fenklib/receiver/CVokReceiverMate.h"
#include "platform/basekit/CCommException.h"
#include "platform/basekit/CWinException.h"

using namespace devio;
using fenktest::CScriptedReceiver;
using basekit::CCommException;
using basekit::CWinException;

namespace {

CSmartPtr<CScriptedReceiver> MakeReceiver(int rate = 115200, bool noRate = false) {
    return CSmartPtr<CScriptedReceiver>(new CScriptedReceiver(rate, noRate));
}

// Runs f and returns the code of the CWinException it throws (0 if none).
template <typename F>
unsigned WinCode(F&& f) {
    try {
        f();
    } catch (const CWinException& e) {
        return e.Code();
    }
    return 0;
}

TEST(CommandChannel, DefaultTimeoutFollowsTheLineRate) {
    struct Case { const char* legend; int rate; unsigned timeoutMs; };
    const Case cases[] = {
        {"rate 0: five seconds", 0, 5000},
        {"9600 bit/s", 9600, 13335},
        {"115200 bit/s", 115200, 5695},
        {"a network port counts as 9600", -1, 13335},
    };
    for (const auto& c : cases) {
        const CVokReceiverMate mate(MakeReceiver(c.rate));
        EXPECT_EQ(mate.GetCommandTimeout(1000), c.timeoutMs) << c.legend;
    }
    EXPECT_EQ(CVokReceiverMateCore::CalcTransferTime(0, 1000), 0u);
    EXPECT_EQ(CVokReceiverMateCore::CalcTransferTime(115200, 1), 1u) << "rounded up";
}

TEST(CommandChannel, MissingPortObjectsAreAnInternalError) {
    EXPECT_EQ(WinCode([] { CVokReceiverMate mate(MakeReceiver(9600, true)); }), basekit::kErrorInternal);
    EXPECT_EQ(WinCode([] { CVokReceiverMate mate{CSmartPtr<IReceiver>()}; }), basekit::kErrorInternal);
}

TEST(CommandChannel, RepliesErrorsAndFailures) {
    const auto rx = MakeReceiver();
    rx->On(L"print,a", CScriptedReceiver::Reply(L"  text  "));
    rx->On(L"print,b", CScriptedReceiver::Error(L"{2,,wrong 1st parameter}"));
    rx->On(L"print,c", CScriptedReceiver::LinkLost());
    rx->On(L"print,d", CScriptedReceiver::Silence());
    CVokReceiverMate mate(CSmartPtr<IReceiver>(rx.Get()));
    EXPECT_EQ(mate.ExecuteCommand(L"print,a", true), L"text");
    EXPECT_EQ(mate.ExecuteCommand(L"print,a", false), L"  text  ");
    try {
        mate.ExecuteCommand(L"print,b");
        FAIL() << "an error reply must throw";
    } catch (const CCommException& e) {
        EXPECT_EQ(e.Reply(), L"{2,,wrong 1st parameter}");
        EXPECT_EQ(e.Command(), L"print,b");
        EXPECT_EQ(e.Device(), L"Receiver");
    }
    EXPECT_EQ(WinCode([&] { mate.ExecuteCommand(L"print,c"); }), basekit::kErrorLinkLost);
    const size_t cancelsBefore = rx->Cancels();
    EXPECT_EQ(WinCode([&] { mate.ExecuteCommand(L"print,d", false, 30); }), basekit::kErrorTimeout);
    EXPECT_EQ(rx->Cancels(), cancelsBefore + 1) << "a timed-out command is cancelled before the exception";
    EXPECT_EQ(mate.ExecuteCommand(L"print,a", true), L"text") << "the next command goes at once";
}

// The abort comes while the command waits; the command ends as cancelled, not by its time-out.
TEST(CommandChannel, AbortFromASecondThread) {
    const auto rx = MakeReceiver();
    rx->On(L"print,slow", CScriptedReceiver::Silence());
    basekit::CEvent abort(basekit::CEvent::Mode::Auto);
    CVokReceiverMate mate(CSmartPtr<IReceiver>(rx.Get()), &abort);
    std::thread stopper([&] {
        EXPECT_TRUE(rx->WaitIssued(L"print,slow"));
        abort.Set();
    });
    const unsigned code = WinCode([&] { mate.ExecuteCommand(L"print,slow"); });
    stopper.join();
    EXPECT_EQ(code, basekit::kErrorCancelled) << "a time-out would be " << basekit::kErrorTimeout;
    EXPECT_EQ(rx->Cancels(), 1u);
}

TEST(CommandChannel, UserTextCannotStartASecondCommand) {
    const auto rx = MakeReceiver();
    rx->Otherwise(CScriptedReceiver::Reply(L""));
    CVokReceiverMate mate(CSmartPtr<IReceiver>(rx.Get()));
    struct Case { const char* legend; std::function<void()> call; };
    const Case cases[] = {
        {"line feed in a quoted name", [&] { mate.Set(par::ExtBtName, L"a\nset,reset,yes"); }},
        {"carriage return in a PIN", [&] { mate.Set(par::ExtBtPincode, L"12\r34"); }},
        {"double quote closes the quoting", [&] { mate.Set(par::CmdCreatePrefix, L"x\",set,reset,yes"); }},
        {"semicolon in an unquoted name", [&] { mate.Set(par::RefAvgCurPointName, L"a;set,reset,yes"); }},
        {"comma in an unquoted name", [&] { mate.Set(par::RefAvgCurPointName, L"a,b"); }},
        {"tab in an event value", [&] { mate.SendEvent(L"_DSC", L"a\tb"); }},
        {"control character in a raw command", [&] { mate.ExecuteCommand(L"print,a\x1b"); }},
        {"NEL in a file name", [&] { mate.SetCurrentFile(L'a', L"f\u0085"); }},
    };
    for (const auto& c : cases) {
        EXPECT_THROW(c.call(), basekit::CStdException) << c.legend;
    }
    EXPECT_TRUE(rx->Sent().empty()) << "nothing was sent";
    mate.Set(par::ExtBtName, L"Rover, north; 2");
    EXPECT_EQ(rx->Sent().back(), L"set,/ext/bt/name,\"Rover, north; 2\"") << "commas and semicolons are fine in quotes";
}

TEST(CommandChannel, GuardedOperations) {
    struct Case {
        const char* legend;
        std::vector<std::pair<const wchar_t*, CScriptedReceiver::Step>> script;
        std::function<void(CVokReceiverMate&)> run;
        std::vector<basekit::ustring> sent;
    };
    using S = CScriptedReceiver;
    const Case cases[] = {
        {"init falls back to the parameter form",
         {{L"init,/setup/", S::Error(L"{2,,wrong command}")}, {L"init,/par/", S::Reply(L"")}},
         [](auto& m) { m.InitParameters(); },
         {L"print,/cur/term", L"init,/setup/", L"print,/cur/term", L"init,/par/"}},
        {"init that restarts without an answer", {{L"init,/setup/", S::TimedOut()}},
         [](auto& m) { m.InitParameters(); }, {L"print,/cur/term", L"init,/setup/"}},
        {"nvram init that restarts", {{L"init,/dev/nvm/a", S::TimedOut()}},
         [](auto& m) { m.InitNvram(); }, {L"print,/cur/term", L"init,/dev/nvm/a"}},
        {"reset returns at once", {{L"set,reset,yes", S::Silence()}},
         [](auto& m) { m.ResetReceiver(); }, {L"print,/cur/term", L"set,reset,yes"}},
    };
    for (const auto& c : cases) {
        const auto rx = MakeReceiver(0);   // rate 0: five-second time-outs
        rx->On(L"print,/cur/term", S::Reply(L"/dev/ser/a"));
        for (const auto& [cmd, step] : c.script) rx->On(cmd, step);
        CVokReceiverMate mate(CSmartPtr<IReceiver>(rx.Get()));
        EXPECT_NO_THROW(c.run(mate)) << c.legend;
        EXPECT_EQ(rx->Sent(), c.sent) << c.legend;
    }
}

// The channel is given the same time-out the mate waits for; a silent receiver makes the channel
// give up at it, so a wrong value here would hang a dialog for that long.
TEST(CommandChannel, FixedTimeOutsReachTheChannel) {
    struct Case {
        const char* legend;
        std::function<void(CVokReceiverMate&)> run;
        const wchar_t* command;
        unsigned timeoutMs;
    };
    const Case cases[] = {
        {"reset gives up after 1 ms", [](auto& m) { m.ResetReceiver(); }, L"set,reset,yes", 1},
        {"disabling a port's messages", [](auto& m) { m.DisableMessages(devio::vok::DEV_SER_A); }, L"dm,/dev/ser/a", 20000},
        {"the antenna database list", [](auto& m) { m.ListAntennaIds(); }, L"list,/par/antdb/ids/id", 60000},
        {"any other command at rate 0", [](auto& m) { m.Get(par::RcvModel); }, L"print,rcv/model", 5000},
    };
    for (const auto& c : cases) {
        const auto rx = MakeReceiver(0);
        rx->Otherwise(CScriptedReceiver::Reply(L""));
        rx->On(L"set,reset,yes", CScriptedReceiver::Silence());
        CVokReceiverMate mate(CSmartPtr<IReceiver>(rx.Get()));
        EXPECT_NO_THROW(c.run(mate)) << c.legend;
        const auto sent = rx->Sent();
        const auto at = std::find(sent.begin(), sent.end(), basekit::ustring(c.command));
        ASSERT_NE(at, sent.end()) << c.legend;
        EXPECT_EQ(rx->Timeouts()[static_cast<size_t>(at - sent.begin())], c.timeoutMs) << c.legend;
    }
}

TEST(CommandChannel, InitRejectedOtherwisePassesTheError) {
    const auto rx = MakeReceiver();
    rx->On(L"print,/cur/term", CScriptedReceiver::Reply(L"dev/ser/a"));
    rx->On(L"init,/setup/", CScriptedReceiver::Error(L"{2,,busy}"));
    CVokReceiverMate mate(CSmartPtr<IReceiver>(rx.Get()));
    EXPECT_THROW(mate.InitParameters(), CCommException);
}

TEST(CommandChannel, ExtFamilyModel) {
    struct Case { const wchar_t* model; bool ext; };
    const Case cases[] = {{L"lyn1/xt", true}, {L"ARCOII", true}, {L"RV-9000", true}, {L"RV-900", false}, {L"FNK-600", false}};
    for (const auto& c : cases) {
        const auto rx = MakeReceiver();
        rx->On(L"print,rcv/model", CScriptedReceiver::Reply(c.model));
        CVokReceiverMate mate(CSmartPtr<IReceiver>(rx.Get()));
        EXPECT_EQ(mate.IsExtFamilyModel(), c.ext) << basekit::ustring(c.model).ToUtf8();
    }
}

}  // namespace
