// The automatic file rotation page inside a sheet against a scripted receiver: what it sends,
// in which order, and what it refuses to send.
#include <gtest/gtest.h>

#include <QCheckBox>
#include <QEventLoop>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>
#include <functional>

#include "fenklib/files/CExplorerAFRMPP.h"
#include "fenklib/frame/CFenkPropertySheet.h"
#include "fenklib/frame/LibraryHelpers.h"
#include "fenklib/resources/StringIds.h"
#include "platform/uikit/CMessageBoxResponder.h"
#include "support/EventTrigger.h"
#include "support/ScriptedReceiver.h"

using basekit::ustring;
using fenktest::CScriptedReceiver;
using fenktest::WaitIdle;
using P = CExplorerAFRMPP;

namespace {

const std::vector<ustring> kFirstReading = {L"print,log/rot/mode", L"print,log/rot/rmold", L"print,log/rot/sc/period",
                                            L"print,log/rot/sc/phase", L"print,log/rot/sc/count"};
const ustring kRunning = L"print,log/rot/count";

std::vector<ustring> Sets(const std::vector<ustring>& sent) {
    std::vector<ustring> sets;
    for (const ustring& c : sent)
        if (c.rfind(L"set,", 0) == 0) sets.push_back(c);
    return sets;
}

// A sheet with the rotation page first and an empty page to switch to.
class AfrmPage : public ::testing::Test {
protected:
    AfrmPage() {
        m_rcv->On(L"print,log/rot/mode", CScriptedReceiver::Reply(L"on"));
        m_rcv->On(L"print,log/rot/rmold", CScriptedReceiver::Reply(L"off"));
        m_rcv->On(L"print,log/rot/sc/period", CScriptedReceiver::Reply(L"3600"));
        m_rcv->On(L"print,log/rot/sc/phase", CScriptedReceiver::Reply(L"120"));
        m_rcv->On(L"print,log/rot/sc/count", CScriptedReceiver::Reply(L"24"));
        m_rcv->On(kRunning, CScriptedReceiver::Reply(L"7"));
        m_rcv->Otherwise(CScriptedReceiver::Reply(L""));
    }

    // Runs the sheet; body runs inside its modal loop, then the sheet is cancelled.
    void Run(const std::function<void()>& body) {
        m_sheet.AddPage(&m_page);
        m_sheet.AddPage(&m_other);
        QTimer::singleShot(0, &m_sheet, [&] {
            body();
            m_sheet.EndDialog(2);
        });
        m_sheet.DoModal();
    }
    QLineEdit* Edit(unsigned id) { return m_page.Controls().Get<QLineEdit>(id); }
    // Waits for the running counter to show text (its timer's own tick); bounded.
    void WaitRunningCounter(const QString& text) {
        QEventLoop loop;
        QTimer bound;
        bound.setSingleShot(true);
        QObject::connect(&bound, &QTimer::timeout, &loop, &QEventLoop::quit);
        QObject::connect(Edit(P::IDC_RUNNING_COUNTER), &QLineEdit::textChanged, &loop, [&](const QString& t) {
            if (t == text) loop.quit();
        });
        bound.start(30000);
        loop.exec();
    }

    basekit::CSmartPtr<CScriptedReceiver> m_rcv{new CScriptedReceiver()};
    P m_page{basekit::CSmartPtr<devio::IReceiver>(m_rcv.Get())};
    CFenkPropertyPage m_other{basekit::CSmartPtr<devio::IReceiver>(m_rcv.Get()), 0, L"other"};
    CFenkPropertySheet m_sheet{basekit::CSmartPtr<devio::IReceiver>(m_rcv.Get()), L"sheet", nullptr};
};

TEST_F(AfrmPage, FirstActivationReadsFiveValuesInOrderAndNoLaterOneReadsAgain) {
    Run([&] {
        ASSERT_TRUE(WaitIdle(&m_sheet));
        EXPECT_EQ(m_rcv->SentWithout(kRunning), kFirstReading);
        EXPECT_TRUE(m_page.Controls().Get<QCheckBox>(P::IDC_ENABLE)->isChecked());
        EXPECT_FALSE(m_page.Controls().Get<QCheckBox>(P::IDC_REMOVE_OLD)->isChecked());
        EXPECT_EQ(Edit(P::IDC_PERIOD)->text(), "3600");
        EXPECT_EQ(Edit(P::IDC_PHASE)->text(), "120");
        EXPECT_EQ(Edit(P::IDC_COUNTER)->text(), "24");
        Edit(P::IDC_PERIOD)->setText("7200");   // the user's value survives the round trip
        ASSERT_TRUE(m_sheet.SetActivePage(1));
        ASSERT_TRUE(m_sheet.SetActivePage(0));
        EXPECT_EQ(m_rcv->SentWithout(kRunning), kFirstReading) << "a return re-read the receiver";
        EXPECT_EQ(Edit(P::IDC_PERIOD)->text(), "7200");
    });
}

// A number outside its range stops Apply before anything is sent and names the range.
TEST_F(AfrmPage, OutOfRangeNumbersAreRefusedAndNothingIsSent) {
    struct Row {
        const char* legend;
        unsigned id;
        const char* text;
        long long min, max;
    };
    const Row rows[] = {
        {"period below 60", P::IDC_PERIOD, "59", 60, 86400},
        {"period above a day", P::IDC_PERIOD, "86401", 60, 86400},
        {"phase above a day", P::IDC_PHASE, "86401", 0, 86400},
        {"negative phase", P::IDC_PHASE, "-1", 0, 86400},
        {"negative counter", P::IDC_COUNTER, "-1", 0, 2147483647},
        {"counter beyond 32 bits", P::IDC_COUNTER, "2147483648", 0, 2147483647},
        {"period not a number", P::IDC_PERIOD, "1h", 60, 86400},
        {"empty phase", P::IDC_PHASE, "", 0, 86400},
    };
    Run([&] {
        ASSERT_TRUE(WaitIdle(&m_sheet));
        for (const Row& row : rows) {
            const uikit::CMessageBoxResponder boxes;
            const QString good = Edit(row.id)->text();
            Edit(row.id)->setText(row.text);
            EXPECT_FALSE(m_sheet.ApplyNow()) << row.legend;
            EXPECT_FALSE(m_sheet.IsApplying()) << row.legend;
            EXPECT_TRUE(Sets(m_rcv->Sent()).empty()) << row.legend;
            EXPECT_EQ(Edit(row.id)->text(), row.text) << row.legend << ": what the user typed stays";
            ASSERT_EQ(boxes.Requests().size(), 1u) << row.legend;
            EXPECT_EQ(boxes.Requests()[0].text,
                      ustring::Format(LoadResString(IDS_ENTER_INTEGER_BETWEEN).c_str(), ustring::Format(L"%lld", row.min),
                                     ustring::Format(L"%lld", row.max)))
                << row.legend;
            EXPECT_EQ(m_sheet.GetActivePage(), &m_page) << row.legend;
            Edit(row.id)->setText(good);
        }
    });
}

// Apply writes all five, in order, whatever is enabled or changed; the bounds themselves pass.
TEST_F(AfrmPage, ApplyWritesAllFiveValuesEveryTime) {
    struct Row {
        const char* legend;
        const wchar_t* mode;
        const char *period, *phase, *counter;
        bool othersEnabled;
        std::vector<ustring> sets;
    };
    const Row rows[] = {
        {"enabled, unchanged", L"on", nullptr, nullptr, nullptr, true,
         {L"set,log/rot/mode,on", L"set,log/rot/rmold,off", L"set,log/rot/sc/period,3600", L"set,log/rot/sc/phase,120",
          L"set,log/rot/sc/count,24"}},
        {"disabled: the controls are off, the values still go", L"off", nullptr, nullptr, nullptr, false,
         {L"set,log/rot/mode,off", L"set,log/rot/rmold,off", L"set,log/rot/sc/period,3600", L"set,log/rot/sc/phase,120",
          L"set,log/rot/sc/count,24"}},
        {"lowest bounds", L"on", "60", "0", "0", true,
         {L"set,log/rot/mode,on", L"set,log/rot/rmold,off", L"set,log/rot/sc/period,60", L"set,log/rot/sc/phase,0",
          L"set,log/rot/sc/count,0"}},
        {"highest bounds", L"on", "86400", "86400", "2147483647", true,
         {L"set,log/rot/mode,on", L"set,log/rot/rmold,off", L"set,log/rot/sc/period,86400",
          L"set,log/rot/sc/phase,86400", L"set,log/rot/sc/count,2147483647"}},
    };
    for (const Row& row : rows) {
        AfrmPage::TearDown();
        basekit::CSmartPtr<CScriptedReceiver> rcv(new CScriptedReceiver());
        for (const ustring& c : kFirstReading) rcv->On(c, CScriptedReceiver::Reply(L"0"));
        rcv->On(L"print,log/rot/mode", CScriptedReceiver::Reply(row.mode));
        rcv->On(L"print,log/rot/rmold", CScriptedReceiver::Reply(L"off"));
        rcv->On(L"print,log/rot/sc/period", CScriptedReceiver::Reply(L"3600"));
        rcv->On(L"print,log/rot/sc/phase", CScriptedReceiver::Reply(L"120"));
        rcv->On(L"print,log/rot/sc/count", CScriptedReceiver::Reply(L"24"));
        rcv->Otherwise(CScriptedReceiver::Reply(L""));
        const basekit::CSmartPtr<devio::IReceiver> r(rcv.Get());
        P page(r);
        CFenkPropertySheet sheet(r, L"sheet", nullptr);
        sheet.AddPage(&page);
        QTimer::singleShot(0, &sheet, [&] {
            ASSERT_TRUE(WaitIdle(&sheet));
            const auto edit = [&](unsigned id) { return page.Controls().Get<QLineEdit>(id); };
            for (const unsigned id : {P::IDC_REMOVE_OLD, P::IDC_PERIOD, P::IDC_PHASE, P::IDC_COUNTER,
                                      P::IDC_RUNNING_COUNTER, P::IDC_FORCE})
                EXPECT_EQ(page.Controls().Item(id)->isEnabled(), row.othersEnabled) << row.legend << " control " << id;
            EXPECT_TRUE(page.Controls().Item(P::IDC_ENABLE)->isEnabled()) << row.legend;
            if (row.period) edit(P::IDC_PERIOD)->setText(row.period);
            if (row.phase) edit(P::IDC_PHASE)->setText(row.phase);
            if (row.counter) edit(P::IDC_COUNTER)->setText(row.counter);
            EXPECT_TRUE(sheet.ApplyNow()) << row.legend;
            ASSERT_TRUE(WaitIdle(&sheet));
            EXPECT_TRUE(sheet.LastApplySucceeded()) << row.legend;
            EXPECT_EQ(Sets(rcv->Sent()), row.sets) << row.legend;
            rcv->ClearLog();
            EXPECT_TRUE(sheet.ApplyNow()) << row.legend;
            ASSERT_TRUE(WaitIdle(&sheet));
            EXPECT_EQ(Sets(rcv->Sent()), row.sets) << row.legend << " (second Apply)";
            sheet.EndDialog(1);
        });
        sheet.DoModal();
    }
}

TEST_F(AfrmPage, EnableCheckBoxSwitchesTheOtherControls) {
    Run([&] {
        ASSERT_TRUE(WaitIdle(&m_sheet));
        auto* enable = m_page.Controls().Get<QCheckBox>(P::IDC_ENABLE);
        enable->click();
        EXPECT_FALSE(m_page.Controls().Item(P::IDC_FORCE)->isEnabled());
        EXPECT_FALSE(m_page.Controls().Item(P::IDC_PERIOD)->isEnabled());
        enable->click();
        EXPECT_TRUE(m_page.Controls().Item(P::IDC_FORCE)->isEnabled());
        EXPECT_TRUE(m_page.Controls().Item(P::IDC_RUNNING_COUNTER)->isEnabled());
        EXPECT_TRUE(m_rcv->Sent().size() >= kFirstReading.size());
        EXPECT_TRUE(Sets(m_rcv->Sent()).empty()) << "a click wrote to the receiver";
    });
}

TEST_F(AfrmPage, ForceSendsOneCommandAndChangesNothing) {
    Run([&] {
        ASSERT_TRUE(WaitIdle(&m_sheet));
        m_rcv->ClearLog();
        m_page.Controls().Get<QPushButton>(P::IDC_FORCE)->click();
        ASSERT_TRUE(WaitIdle(&m_sheet));
        EXPECT_EQ(m_rcv->SentWithout(kRunning), std::vector<ustring>{L"set,log/rot/force,on"});
        EXPECT_EQ(Edit(P::IDC_PERIOD)->text(), "3600");
    });
}

TEST_F(AfrmPage, RunningCounterStopsOnAnotherPageAndResumesOnReturn) {
    Run([&] {
        EXPECT_TRUE(m_page.IsTimerRunning());
        WaitRunningCounter("7");
        EXPECT_EQ(Edit(P::IDC_RUNNING_COUNTER)->text(), "7");
        ASSERT_TRUE(m_sheet.SetActivePage(1));
        m_rcv->ClearLog();
        m_page.OnTimerTick();   // a tick while another page is shown
        EXPECT_TRUE(m_rcv->Sent().empty()) << "an inactive page issued a command";
        m_rcv->On(kRunning, CScriptedReceiver::Reply(L"8"));
        ASSERT_TRUE(m_sheet.SetActivePage(0));
        WaitRunningCounter("8");
        EXPECT_EQ(Edit(P::IDC_RUNNING_COUNTER)->text(), "8");
    });
}

// Each failure shows the receiver's error in a box; the page stays and works afterwards.
TEST_F(AfrmPage, FailuresAreShownAndThePageStaysUsable) {
    m_rcv->On(L"print,log/rot/sc/phase", CScriptedReceiver::Error(L"{2,,wrong command}"));
    m_rcv->On(kRunning, CScriptedReceiver::Error(L"{2,,wrong command}"));
    m_rcv->On(L"set,log/rot/force,on", CScriptedReceiver::Error(L"{2,,wrong command}"));
    m_rcv->On(L"set,log/rot/sc/period,3600", CScriptedReceiver::Error(L"{2,,wrong command}"));
    const uikit::CMessageBoxResponder boxes;
    Run([&] {
        ASSERT_TRUE(WaitIdle(&m_sheet));
        EXPECT_FALSE(m_page.HasRead()) << "a failed first reading counts as read";
        EXPECT_EQ(boxes.Requests().size(), 1u);
        m_rcv->On(L"print,log/rot/sc/phase", CScriptedReceiver::Reply(L"120"));
        ASSERT_TRUE(m_sheet.SetActivePage(1));
        m_rcv->ClearLog();
        ASSERT_TRUE(m_sheet.SetActivePage(0));
        ASSERT_TRUE(WaitIdle(&m_sheet));
        EXPECT_TRUE(m_page.HasRead()) << "the next activation did not try again";
        EXPECT_EQ(m_rcv->SentWithout(kRunning), kFirstReading);

        const size_t before = boxes.Requests().size();
        m_page.OnTimerTick();
        ASSERT_TRUE(WaitIdle(&m_sheet));
        m_page.Controls().Get<QPushButton>(P::IDC_FORCE)->click();
        ASSERT_TRUE(WaitIdle(&m_sheet));
        EXPECT_TRUE(m_sheet.ApplyNow());
        ASSERT_TRUE(WaitIdle(&m_sheet));
        EXPECT_FALSE(m_sheet.LastApplySucceeded());
        ASSERT_EQ(boxes.Requests().size(), before + 3);
        for (size_t i = before; i < boxes.Requests().size(); ++i)
            EXPECT_EQ(boxes.Requests()[i].flags & uikit::MB_ICONMASK, unsigned(uikit::MB_ICONERROR));
        EXPECT_TRUE(m_sheet.isVisible());
        m_rcv->On(L"set,log/rot/sc/period,3600", CScriptedReceiver::Reply(L""));
        EXPECT_TRUE(m_sheet.ApplyNow());
        ASSERT_TRUE(WaitIdle(&m_sheet));
        EXPECT_TRUE(m_sheet.LastApplySucceeded()) << "the page did not recover";
    });
}

// A dead link fails the counter's poll once: one box, and the poll rests instead of showing a
// box every second; showing the page again tries once more.
TEST_F(AfrmPage, ADeadLinkStopsTheCounterAfterOneMessage) {
    m_rcv->On(kRunning, CScriptedReceiver::LinkLost());
    const uikit::CMessageBoxResponder boxes;
    Run([&] {
        ASSERT_TRUE(WaitIdle(&m_sheet));
        ASSERT_TRUE(m_page.IsTimerRunning());
        m_page.OnTimerTick();
        ASSERT_TRUE(WaitIdle(&m_sheet));
        EXPECT_EQ(boxes.Requests().size(), 1u);
        EXPECT_FALSE(m_page.IsTimerRunning());
        m_rcv->ClearLog();
        m_page.OnTimerTick();   // a tick already queued when the poll stopped
        EXPECT_TRUE(m_rcv->Sent().empty()) << "the stopped poll still asked the receiver";
        EXPECT_EQ(boxes.Requests().size(), 1u);
        ASSERT_TRUE(m_sheet.SetActivePage(1));
        ASSERT_TRUE(m_sheet.SetActivePage(0));
        EXPECT_TRUE(m_page.IsTimerRunning()) << "coming back to the page tries again";
    });
}

// While the receiver holds its reply back the page shows it is busy and the user-interface
// thread goes on with its events; the values appear when the reply comes.
TEST_F(AfrmPage, ASlowReadingKeepsTheWindowResponsive) {
    m_rcv->On(L"print,log/rot/mode", CScriptedReceiver::Held());
    const uikit::CMessageBoxResponder boxes;
    Run([&] {
        EXPECT_FALSE(m_sheet.property("fenkIdle").toBool()) << "the page does not show it is working";
        bool handled = false;
        QEventLoop loop;
        QTimer::singleShot(0, &m_sheet, [&] {
            handled = true;
            loop.quit();
        });
        loop.exec();
        EXPECT_TRUE(handled);
        EXPECT_FALSE(m_page.Controls().Item(P::IDC_ENABLE)->isEnabled()) << "controls usable while reading";
        EXPECT_EQ(m_page.cursor().shape(), Qt::BusyCursor);
        EXPECT_FALSE(m_page.HasRead());
        ASSERT_TRUE(m_rcv->ReleaseHeld(L"on")) << "the reading was not waiting for its reply";
        ASSERT_TRUE(WaitIdle(&m_sheet));
        EXPECT_TRUE(m_page.HasRead());
        EXPECT_EQ(m_page.cursor().shape(), Qt::ArrowCursor);
        EXPECT_TRUE(m_page.Controls().Get<QCheckBox>(P::IDC_ENABLE)->isChecked());
        EXPECT_EQ(Edit(P::IDC_PERIOD)->text(), "3600");
        EXPECT_TRUE(boxes.Requests().empty());
    });
}

}  // namespace
