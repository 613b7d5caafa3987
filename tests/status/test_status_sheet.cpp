// The status sheet against a scripted receiver whose listener host is the real one: set-up,
// the notice dispatcher, the closing guard, the teardown and the final "dm,/cur/term".
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QPushButton>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTimeZone>
#include <QTimer>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>
#include <functional>

#include "fenklib/frame/LibraryHelpers.h"
#include "fenklib/resources/DialogIds.h"
#include "fenklib/resources/StringIds.h"
#include "fenklib/status/CReceiverStatusPS.h"
#include "fenklib/status/CSkyPlot.h"
#include "platform/basekit/CWinException.h"
#include "platform/uikit/CMessageBoxResponder.h"
#include "support/EventTrigger.h"
#include "support/ScriptedReceiver.h"

using basekit::CSmartPtr;
using fenktest::CScriptedReceiver;

namespace {

CSmartPtr<CScriptedReceiver> NewReceiver() {
    CSmartPtr<CScriptedReceiver> rx(new CScriptedReceiver());
    rx->On(L"print,lock/elm", CScriptedReceiver::Reply(L"10"));
    rx->Otherwise(CScriptedReceiver::Reply(L""));
    return rx;
}

CSmartPtr<devio::IReceiver> AsReceiver(const CSmartPtr<CScriptedReceiver>& rx) { return CSmartPtr<devio::IReceiver>(rx.Get()); }

// Runs the sheet; `up` runs once when it is up and listening.
int RunSheet(CReceiverStatusPS& sheet, const std::function<void()>& up) {
    bool started = false;
    const fenktest::CIdleTrigger idle(&sheet, [&] {
        if (started) return;
        started = true;
        up();
    });
    fenktest::EndAfterMinute(&sheet, [&] { sheet.EndDialog(99); });
    return sheet.DoModal();
}

// Calls check after each window message the sheet has handled until it returns true.
class CAfterNotices {
public:
    CAfterNotices(CReceiverStatusPS& sheet, std::function<bool()> check)
        : m_trigger(&sheet, basekit::CWindowMessageEvent::EventType(), [&sheet, check = std::move(check)] {
              if (check()) sheet.EndDialog(1);
          }) {}

private:
    fenktest::CEventTrigger m_trigger;
};

TEST(StatusSheet, PagesCaptionAndButtons) {
    struct Row {
        const char* legend;
        const char* wide;
        unsigned templates[7];
        unsigned titles[7];
    };
    const Row rows[] = {
        {"normal screen", "0",
         {IDD_STATUS_POSITION, IDD_STATUS_DATA_LINK, IDD_STATUS_SAT_LIST, IDD_STATUS_SKY_PLOT, IDD_STATUS_SCATTER,
          IDD_STATUS_POSITION_IN_TIME, IDD_STATUS_LOGGING},
         {IDS_PAGE_POSITION, IDS_PAGE_DATA_LINK, IDS_PAGE_SVS_LIST, IDS_PAGE_SKY_PLOT, IDS_PAGE_SCATTER,
          IDS_PAGE_POSITION_IN_TIME, IDS_PAGE_LOGGING}},
        {"wide screen", "1",
         {IDD_STATUS_POSITION_WIDE, IDD_STATUS_DATA_LINK, IDD_STATUS_SAT_LIST, IDD_STATUS_SKY_PLOT, IDD_STATUS_SCATTER_WIDE,
          IDD_STATUS_POSITION_IN_TIME_WIDE, IDD_STATUS_LOGGING_WIDE},
         {IDS_PAGE_POSITION, IDS_PAGE_DATA_LINK, IDS_PAGE_SVS_LIST, IDS_PAGE_SKY_PLOT, IDS_PAGE_SCATTER,
          IDS_PAGE_POS_IN_TIME, IDS_PAGE_LOG}},
    };
    for (const auto& row : rows) {
        qputenv("FENK_WIDE_SCREEN", row.wide);
        const auto rx = NewReceiver();
        CReceiverStatusPS sheet(AsReceiver(rx), nullptr);
        qunsetenv("FENK_WIDE_SCREEN");
        ASSERT_EQ(sheet.GetPageCount(), 7) << row.legend;
        for (int i = 0; i < 7; ++i) {
            EXPECT_EQ(sheet.GetPage(i)->GetTemplateId(), row.templates[i]) << row.legend << " page " << i + 1;
            EXPECT_EQ(sheet.GetPage(i)->GetTitle(), LoadResString(row.titles[i])) << row.legend << " page " << i + 1;
        }
        EXPECT_EQ(sheet.windowTitle(), LoadResString(IDS_STATUS).ToQString());
        EXPECT_EQ(sheet.GetButton(uikit::CResizablePropertySheet::ID_APPLY_NOW), nullptr) << row.legend << ": no Apply";
        size_t listening = 0;
        bool okHidden = false;
        QString closeText;
        RunSheet(sheet, [&] {
            listening = rx->Host().Count();
            okHidden = sheet.GetButton(uikit::IDOK)->isHidden();
            closeText = sheet.GetButton(uikit::IDCANCEL)->text();
            EXPECT_EQ(sheet.GetActivePage(), &sheet.PositionPage()) << "the position page first";
            sheet.EndDialog(2);
        });
        EXPECT_EQ(listening, 4u) << row.legend << ": four listeners added";
        EXPECT_TRUE(okHidden) << row.legend;
        EXPECT_EQ(closeText, LoadResString(IDS_CLOSE).ToQString()) << row.legend;
        EXPECT_EQ(rx->Host().Count(), 0u) << row.legend << ": every listener removed at the end";
    }
}

// A host that refuses every listener, as one whose receiver went away between the calls.
class CRefusingHost final : public basekit::CRefCounted<devio::IListenerHost> {
public:
    void AddListener(const CSmartPtr<devio::IListener>&) override {
        throw basekit::CWinException("test", __LINE__, L"listener refused", basekit::kErrorNotConnected);
    }
    void RemoveListener(const CSmartPtr<devio::IListener>&) override {}
};

// A failed set-up shows the exception's text in an error box and ends the sheet with cancel.
TEST(StatusSheet, ASetUpFailureIsShownAndEndsWithCancel) {
    struct Row {
        const char* legend;
        CSmartPtr<devio::IListenerHost> host;
        basekit::ustring message;   // the exception's text
    };
    const Row rows[] = {
        {"no listener host", {}, basekit::CWinException("", 0, L"devio::IListenerHost", basekit::kErrorInternal).GetMessage()},
        {"the host refuses the first listener", CSmartPtr<devio::IListenerHost>(new CRefusingHost()),
         basekit::CWinException("", 0, L"listener refused", basekit::kErrorNotConnected).GetMessage()},
    };
    for (const auto& row : rows) {
        const auto rx = NewReceiver();
        rx->hostOverride = row.host;
        CReceiverStatusPS sheet(AsReceiver(rx), nullptr);
        const uikit::CMessageBoxResponder boxes;
        fenktest::EndAfterMinute(&sheet, [&] { sheet.EndDialog(99); });
        EXPECT_EQ(sheet.DoModal(), 2) << row.legend;
        ASSERT_EQ(boxes.Requests().size(), 1u) << row.legend;
        const auto box = boxes.Requests()[0];
        EXPECT_TRUE(box.flags & uikit::MB_ICONERROR) << row.legend;
        EXPECT_TRUE(box.text == row.message || box.details == row.message) << row.legend << ": " << box.text.ToUtf8();
        EXPECT_EQ(rx->Sent().back(), L"dm,/cur/term") << row.legend << ": the terminal is silenced all the same";
    }
}

devio::POSITION_RECORD Cartesian(double x, double y, double z) {
    devio::POSITION_RECORD r;
    r.xyzValid = 1;
    r.x = x, r.y = y, r.z = z;
    return r;
}

TEST(StatusSheet, ABurstOfTenPositionsArrivesInOrderInOneNotice) {
    const auto rx = NewReceiver();
    CReceiverStatusPS sheet(AsReceiver(rx), nullptr);
    const CAfterNotices done(sheet, [&] { return sheet.NoticesHandled(CReceiverStatusPS::kNoticePosition) > 0; });
    RunSheet(sheet, [&] {
        for (int i = 0; i < 10; ++i) rx->Host().Offer(Cartesian(6378137.0 + i, i, 0));
    });
    const auto& got = sheet.PositionInTimePage().Received();
    ASSERT_EQ(got.size(), 10u);
    for (int i = 0; i < 10; ++i) EXPECT_EQ(got[i].x, 6378137.0 + i) << "record " << i;
    EXPECT_EQ(sheet.PositionPage().PositionsReceived(), 10u);
    EXPECT_EQ(sheet.ScatterPage().Samples().Samples().size(), 10u);
}

// The sheet takes one date and time per notice: records that arrive together (RMC and ZDA of
// one epoch, or several periods while the user-interface thread was busy) must each bring their
// notice, or the clock on the Position page stops at the older one for good.
TEST(StatusSheet, TheClockShowsTheNewestTimeOfABurst) {
    struct Row {
        const char* legend;
        int records;
    };
    const Row rows[] = {{"RMC and ZDA of one epoch", 2}, {"five periods while the window was busy", 5}};
    for (const auto& row : rows) {
        const auto rx = NewReceiver();
        CReceiverStatusPS sheet(AsReceiver(rx), nullptr);
        const QDateTime newest(QDate(2026, 11, 23), QTime(12, 0, row.records), Qt::UTC);
        const CAfterNotices done(sheet, [&] { return sheet.PositionPage().ReceiverTime() == newest; });
        const int result = RunSheet(sheet, [&] {
            for (int i = 1; i <= row.records; ++i) {
                devio::DATETIME_RECORD t;
                t.year = 2026, t.month = 11, t.day = 23, t.hour = 12, t.second = i;
                rx->Host().Offer(t);
            }
        });
        EXPECT_EQ(result, 1) << row.legend << ": the clock reached " << newest.toString().toStdString() << ", shows "
                             << sheet.PositionPage().ReceiverTime().toString().toStdString();
    }
}

TEST(StatusSheet, TheMissingHalfIsFilledBeforeThePagesSeeIt) {
    struct Row {
        const char* legend;
        devio::POSITION_RECORD in;
        double x, y, z, lat, lon, height;
    };
    devio::POSITION_RECORD geo;
    geo.geoValid = 1, geo.lat = 0, geo.lon = 90, geo.height = 100, geo.geoExtra = 0x0501;
    const Row rows[] = {
        {"only geodetic", geo, 0, 6378237.0, 0, 0, 90, 100},
        {"only Cartesian: the north pole", Cartesian(0, 0, 6356752.314245179), 0, 0, 6356752.314245179, 90, 0, 0},
    };
    for (const auto& row : rows) {
        const auto rx = NewReceiver();
        CReceiverStatusPS sheet(AsReceiver(rx), nullptr);
        const CAfterNotices done(sheet, [&] { return sheet.PositionPage().PositionsReceived() > 0; });
        RunSheet(sheet, [&] { rx->Host().Offer(row.in); });
        const auto& r = sheet.PositionPage().LastPosition();
        ASSERT_TRUE(r.xyzValid && r.geoValid) << row.legend;
        EXPECT_LT(std::hypot(r.x - row.x, r.y - row.y, r.z - row.z), 1e-3) << row.legend;
        EXPECT_NEAR(r.lat, row.lat, 1e-8) << row.legend;
        if (row.lat != 90) {
            EXPECT_NEAR(r.lon, row.lon, 1e-8) << row.legend;
        }
        EXPECT_NEAR(r.height, row.height, 1e-3) << row.legend;
        EXPECT_EQ(r.xyzExtra, r.geoExtra) << row.legend;
        EXPECT_EQ(sheet.ScatterPage().Samples().Samples().size(), 1u) << row.legend << ": the scatter got the Cartesian half";
    }
}

TEST(StatusSheet, SatellitesDataLinksAndTimeReachTheirPages) {
    const auto rx = NewReceiver();
    CReceiverStatusPS sheet(AsReceiver(rx), nullptr);
    const CAfterNotices done(sheet, [&] {
        if (!sheet.NoticesHandled(CReceiverStatusPS::kNoticeSatList) || !sheet.NoticesHandled(CReceiverStatusPS::kNoticeDataLink) ||
            !sheet.NoticesHandled(CReceiverStatusPS::kNoticeDateTime))
            return false;
        sheet.SetActivePage(3);   // the sky plot opens after the list came
        return true;
    });
    devio::SATLIST_RECORD list(3);
    list[0].system = 1, list[0].number = 5, list[0].elevation = 60, list[0].azimuth = 45, list[0].navStatus = 0;
    list[1].system = 2, list[1].number = 7, list[1].elevation = 20, list[1].azimuth = 200, list[1].navStatus = 4;
    list[2].system = 6, list[2].number = 11, list[2].elevation = 35, list[2].azimuth = 300, list[2].navStatus = 55;
    RunSheet(sheet, [&] {
        devio::DATALINK_RECORD a;
        a.port = 'A', a.format = 'T', a.age = 1;
        devio::DATALINK_RECORD d;
        d.port = 'D', d.format = 'C', d.age = 2;
        rx->Host().Offer(a);
        rx->Host().Offer(d);
        rx->Host().Offer(list);
        devio::DATETIME_RECORD t;
        t.year = 2026, t.month = 11, t.day = 23, t.hour = 12;
        rx->Host().Offer(t);
    });
    EXPECT_EQ(sheet.SatListPage().Satellites().size(), 3u);
    EXPECT_EQ(sheet.DataLinkPage().Links().size(), 2u) << "both links drained from one notice";
    EXPECT_EQ(sheet.SkyPlotPage().ElevationMask(), 10.0) << "read with print,lock/elm";
    ASSERT_NE(sheet.SkyPlotPage().Plot(), nullptr);
    EXPECT_TRUE(sheet.SkyPlotPage().Plot()->Satellites().empty()) << "a list that came before the page existed is dropped";
    const auto sent = rx->Sent();
    EXPECT_EQ(std::count(sent.begin(), sent.end(), L"print,lock/elm"), 1) << "read once, when the page opened";
}

// The sheet asks for the live messages only where nothing would reach it otherwise.
TEST(StatusSheet, LiveOutputIsAskedOnlyOfASilentTerminal) {
    struct Row {
        const char* legend;
        const wchar_t* terminalOutput;   // reply to the terminal's output list
        bool takesCommands;
        bool enables;
    };
    const Row rows[] = {
        {"silent terminal: the live set is enabled", L"{}", true, true},
        {"the user's 20 Hz GGA on the terminal stands", L"{/msg/nmea/GGA={0.05,0,0,0x0}}", true, false},
        {"a streaming-only link is asked nothing", L"{}", false, false},
    };
    for (const auto& row : rows) {
        const auto rx = NewReceiver();
        rx->takesCommands = row.takesCommands;
        rx->On(L"print,out/cur/term:on", CScriptedReceiver::Reply(row.terminalOutput));
        CReceiverStatusPS sheet(AsReceiver(rx), nullptr);
        RunSheet(sheet, [&] { sheet.EndDialog(2); });
        const auto sent = rx->Sent();
        const auto em = std::find_if(sent.begin(), sent.end(), [](const basekit::ustring& c) { return c.starts_with(L"em,/cur/term,"); });
        EXPECT_EQ(em != sent.end(), row.enables) << row.legend;
        EXPECT_EQ(sheet.StartedOutput(), row.enables) << row.legend;
        if (em != sent.end()) {
            EXPECT_NE(em->find(L"/msg/nmea/GSV"), basekit::ustring::npos) << row.legend << ": satellites asked for";
        }
    }
}

// Every way the sheet ends sends "dm,/cur/term" afterwards, with its 20 s time-out, and its
// failure does not change the result.
TEST(StatusSheet, MessagesOnTheTerminalStopAfterEveryKindOfClose) {
    struct Row {
        const char* legend;
        std::function<void(CReceiverStatusPS&)> close;
        int result;
        bool dmFails;
    };
    const Row rows[] = {
        {"Close button", [](CReceiverStatusPS& s) { s.GetButton(uikit::IDCANCEL)->click(); }, 2, false},
        {"window frame", [](CReceiverStatusPS& s) { s.close(); }, 2, false},
        {"Escape", [](CReceiverStatusPS& s) { s.reject(); }, 2, false},
        {"ended by the host with OK", [](CReceiverStatusPS& s) { s.EndDialog(1); }, 1, false},
        {"Close button, dm refused", [](CReceiverStatusPS& s) { s.GetButton(uikit::IDCANCEL)->click(); }, 2, true},
    };
    for (const auto& row : rows) {
        const auto rx = NewReceiver();
        if (row.dmFails) rx->On(L"dm,/cur/term", CScriptedReceiver::Error(L"{2,,wrong command}"));
        CReceiverStatusPS sheet(AsReceiver(rx), nullptr);
        const uikit::CMessageBoxResponder boxes;
        EXPECT_EQ(RunSheet(sheet, [&] { row.close(sheet); }), row.result) << row.legend;
        const auto sent = rx->Sent();
        ASSERT_FALSE(sent.empty()) << row.legend;
        EXPECT_EQ(sent.back(), L"dm,/cur/term") << row.legend;
        EXPECT_EQ(rx->Timeouts().back(), 20000u) << row.legend;
        EXPECT_TRUE(boxes.Requests().empty()) << row.legend << ": nothing asked while logging was off";
    }
}

TEST(StatusSheet, ClosingWhileLoggingAsksFirst) {
    struct Row {
        const char* legend;
        std::function<void(CReceiverStatusPS&)> close;
    };
    const Row rows[] = {
        {"Close button", [](CReceiverStatusPS& s) { s.GetButton(uikit::IDCANCEL)->click(); }},
        {"window frame", [](CReceiverStatusPS& s) { s.close(); }},
    };
    for (const auto& row : rows) {
        const auto rx = NewReceiver();
        CReceiverStatusPS sheet(AsReceiver(rx), nullptr);
        QTemporaryDir dir;
        int answer = uikit::IDNO;
        const uikit::CMessageBoxResponder boxes([&](const uikit::MessageBoxRequest&) { return answer; });
        bool stayed = false, stillLogging = false;
        size_t listeners = 0;
        const int result = RunSheet(sheet, [&] {
            ASSERT_TRUE(sheet.LoggingPage().StartLogging(dir.filePath(QStringLiteral("rt.log"))));
            row.close(sheet);   // answered No
            stayed = sheet.IsModalRunning() && sheet.isVisible();
            stillLogging = sheet.LoggingPage().IsLoggingInProgress();
            listeners = rx->Host().Count();
            answer = uikit::IDYES;
            row.close(sheet);
        });
        EXPECT_TRUE(stayed) << row.legend << ": No keeps the sheet open";
        EXPECT_TRUE(stillLogging) << row.legend;
        EXPECT_EQ(listeners, 4u) << row.legend << ": and every listener running";
        EXPECT_EQ(result, 2) << row.legend << ": Yes closes";
        ASSERT_EQ(boxes.Requests().size(), 2u) << row.legend << ": asked once per attempt";
        EXPECT_EQ(boxes.Requests()[0].text, LoadResString(IDS_STOP_REALTIME_LOGGING)) << row.legend;
        EXPECT_EQ(boxes.Requests()[0].flags, unsigned(uikit::MB_YESNO | uikit::MB_ICONQUESTION)) << row.legend;
        EXPECT_FALSE(sheet.LoggingPage().IsLoggingInProgress()) << row.legend << ": closing stops the log";
    }
}

TEST(StatusSheet, TheWheelZoomsTheScatter) {
    const auto rx = NewReceiver();
    CReceiverStatusPS sheet(AsReceiver(rx), nullptr);
    double before = 0, after = 0;
    RunSheet(sheet, [&] {
        sheet.SetActivePage(4);
        before = sheet.ScatterPage().MetresAcross();
        QWheelEvent wheel(QPointF(10, 10), sheet.mapToGlobal(QPointF(10, 10)), QPoint(), QPoint(0, 240), Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(&sheet, &wheel);
        after = sheet.ScatterPage().MetresAcross();
        sheet.EndDialog(2);
    });
    EXPECT_LT(after, before) << "two notches towards the user zoom in";
}

// Screenshots of every page with live data, for a look at the layouts.
TEST(StatusSheet, Tour) {
    const auto rx = NewReceiver();
    CReceiverStatusPS sheet(AsReceiver(rx), nullptr);
    sheet.resize(480, 560);
    RunSheet(sheet, [&] {
        sheet.SetActivePage(3);   // a list reaches the sky plot only once its window exists
        devio::SATLIST_RECORD list;
        for (int i = 0; i < 24; ++i) {
            devio::SATELLITE_RECORD s;
            s.system = 1 + i % 7, s.number = 1 + i, s.elevation = static_cast<std::int8_t>(5 + (i * 37) % 85);
            s.azimuth = static_cast<std::uint16_t>((i * 53) % 360), s.navStatus = i % 3 ? 0 : 4, s.snr = 30 + i % 20;
            list.push_back(s);
        }
        for (int i = 0; i < 50; ++i) {
            auto r = Cartesian(2845456.3 + 0.01 * (i % 7), 2160948.9 + 0.01 * (i % 5), 5265993.2 + 0.02 * (i % 3));
            r.xyzExtra = devio::POSITION_RECORD::MakeExtra(4, 14, 0.8);
            rx->Host().Offer(r);
        }
        rx->Host().Offer(list);
        devio::DATALINK_RECORD a;
        a.port = 'A', a.format = 'T', a.age = 1, a.received = 1200, a.rate = 240;
        rx->Host().Offer(a);
        QTimer::singleShot(0, &sheet, [&] {
            for (int i = 0; i < sheet.GetPageCount(); ++i) {
                sheet.SetActivePage(i);
                sheet.grab().save(QCoreApplication::applicationDirPath() + QStringLiteral("/tour-status-%1.png").arg(i + 1));
            }
            sheet.EndDialog(2);
        });
    });
    EXPECT_EQ(sheet.SatListPage().Satellites().size(), 24u);
}

}  // namespace
