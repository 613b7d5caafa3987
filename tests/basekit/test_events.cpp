#include <gtest/gtest.h>

#include "platform/basekit/CEvent.h"
#include "platform/basekit/CThread.h"

using basekit::CEvent;
using basekit::CThread;
using basekit::WaitResult;

namespace {

TEST(Event, ResetModes) {
    struct Case { const char* legend; CEvent::Mode mode; bool setAfterFirstWait; };
    const Case cases[] = {
        {"auto reset is consumed by the wait that it releases", CEvent::Mode::Auto, false},
        {"manual reset stays set until Reset", CEvent::Mode::Manual, true},
    };
    for (const auto& c : cases) {
        CEvent e(c.mode);
        EXPECT_EQ(e.Wait(0).kind, WaitResult::Timeout) << c.legend;
        e.Set();
        EXPECT_EQ(e.Wait(0).kind, WaitResult::Signalled) << c.legend;
        EXPECT_EQ(e.IsSet(), c.setAfterFirstWait) << c.legend;
        e.Reset();
        EXPECT_FALSE(e.IsSet()) << c.legend;
    }
}

TEST(Event, WaitAnyReportsWhichOneFired) {
    struct Case { const char* legend; bool setFirst; bool setSecond; WaitResult::Kind kind; size_t index; };
    const Case cases[] = {
        {"only the second", false, true, WaitResult::Signalled, 1},
        {"both: the lower index wins", true, true, WaitResult::Signalled, 0},
        {"none: time-out", false, false, WaitResult::Timeout, 0},
    };
    for (const auto& c : cases) {
        CEvent completion(CEvent::Mode::Auto), abort(CEvent::Mode::Auto);
        if (c.setFirst) completion.Set();
        if (c.setSecond) abort.Set();
        const WaitResult r = CEvent::WaitAny({&completion, &abort}, 30);
        EXPECT_EQ(r.kind, c.kind) << c.legend;
        EXPECT_EQ(r.index, c.kind == WaitResult::Signalled ? c.index : r.index) << c.legend;
    }
}

TEST(Thread, ExitCodeWaitAndRestart) {
    CThread t;
    CEvent go(CEvent::Mode::Manual);
    t.Start([&] { go.Wait(basekit::kInfinite); return 7u; });
    EXPECT_TRUE(t.IsRunning());
    EXPECT_FALSE(t.Wait(20)) << "still blocked on its event";
    go.Set();
    EXPECT_TRUE(t.Wait(10000));
    t.Close();
    EXPECT_EQ(t.ExitCode(), 7u);
    t.Start([] { return 9u; });
    t.Close();
    EXPECT_EQ(t.ExitCode(), 9u);
    EXPECT_FALSE(t.IsRunning());
    t.Start([]() -> unsigned { throw 1; });
    t.Close();
    EXPECT_EQ(t.ExitCode(), 0xFFFFFFFFu) << "an escaped exception marks the exit code";
}

}  // namespace
