// The automatic base set-up windows against the simulator: what the receiver holds is shown
// when they open and written back on OK; stored points listed, deleted and added.
#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QSettings>
#include <QTemporaryDir>
#include <QTimer>
#include <QTreeWidget>

#include "support/EventTrigger.h"
#include "support/ScriptedReceiver.h"
#include "SimLink.h"
#include "fenklib/frame/LibraryHelpers.h"
#include "fenklib/receiver/CVokReceiverMate.h"
#include "fenklib/receiver/ParamCatalogue.h"
#include "fenklib/site/CAutoSeedDlg.h"
#include "fenklib/site/CAutoSeed_NewPointDlg.h"
#include "fenklib/site/CAutoSeed_PointListDlg.h"
#include "platform/uikit/CMessageBoxResponder.h"

using basekit::ustring;
using fenktest::SimLink;
namespace par = devio::par;

namespace {

enum : unsigned { IDC_AVERAGING = 3301, IDC_CHECK, IDC_SPAN, IDC_LIMIT, IDC_POINT_ID, IDC_POINT_NAME, IDC_POINT_ARP };
constexpr unsigned IDC_POINTS = 3331, IDC_NEW_POINT_NAME = 3341;

void Screenshot(QWidget& window, const char* name) {
    if (!qEnvironmentVariableIsEmpty("FENK_BUILD_DIR"))
        window.grab().save(qEnvironmentVariable("FENK_BUILD_DIR") + "/tour-" + name + ".png");
}

// Runs a receiver window; onIdle runs each time it becomes idle and ends it by returning a result.
template <typename Dlg>
int RunWhenIdle(Dlg& dlg, const std::function<std::optional<int>()>& onIdle) {
    const fenktest::CIdleTrigger idle(&dlg, [&] {
        if (const std::optional<int> end = onIdle()) dlg.EndDialog(*end);
    });
    fenktest::EndAfterMinute(&dlg, [&] { dlg.EndDialog(2); });
    return dlg.DoModal();
}

class AutoSeed : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(m_store.isValid());
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, m_store.path());
    }
    void TearDown() override { CFenkGlobalSettings::Ref().SetCoordSystem(COORD_GEODETIC); }
    QTemporaryDir m_store;
};

TEST_F(AutoSeed, OpensWithTheReceiversValuesAndWritesThemBackOnOk) {
    struct Case { const char* legend; ECoordSystem system; };
    const Case cases[] = {
        {"geodetic setting: positions shown and written as latitude, longitude, height", COORD_GEODETIC},
        {"Cartesian setting: positions shown and written as X, Y, Z", COORD_CARTESIAN},
    };
    for (const Case& c : cases) {
        CFenkGlobalSettings::Ref().SetCoordSystem(c.system);
        SimLink link;
        devio::CVokReceiverMate mate(link.Receiver());
        mate.Set(par::RefAvgMode, true);
        mate.Set(par::RefAvgSpan, 240);
        mate.Set(par::RefAvgLimit, 2.5);
        mate.Set(par::RefAvgCurPointId, 7);
        mate.Set(par::RefAvgCurPointName, ustring(L"PILLAR9"));
        const devio::vok::POS_GEO arp = mate.GetCurrentPointGeo(L"arp");
        const ustring arpText = c.system == COORD_GEODETIC ? FormatGeoText(arp) : FormatXyzText(mate.GetCurrentPointXyz(L"arp"));

        CAutoSeedDlg dlg(link.Receiver(), nullptr);
        const CDialogControls& ctl = dlg.Controls();
        QString shownSpan, shownName, shownArp;
        bool shownMode = false, shownCheck = true;
        const int result = RunWhenIdle(dlg, [&]() -> std::optional<int> {
            shownMode = ctl.Get<QCheckBox>(IDC_AVERAGING)->isChecked();
            shownCheck = ctl.Get<QCheckBox>(IDC_CHECK)->isChecked();
            shownSpan = ctl.Get<QLineEdit>(IDC_SPAN)->text();
            shownName = ctl.Get<QLineEdit>(IDC_POINT_NAME)->text();
            shownArp = ctl.Get<QLabel>(IDC_POINT_ARP)->text();
            Screenshot(dlg, c.system == COORD_GEODETIC ? "AutoSeedDlg" : "AutoSeedDlg-xyz");
            ctl.Get<QCheckBox>(IDC_CHECK)->setChecked(true);
            ctl.Get<QLineEdit>(IDC_SPAN)->setText("600");
            ctl.Get<QLineEdit>(IDC_LIMIT)->setText(QLocale().toString(0.75));
            ctl.Get<QLineEdit>(IDC_POINT_NAME)->setText("ROOF2");
            dlg.accept();
            return std::nullopt;   // accept ends it
        });
        ASSERT_EQ(result, 1) << c.legend;
        EXPECT_TRUE(shownMode) << c.legend;
        EXPECT_FALSE(shownCheck) << c.legend;
        EXPECT_EQ(shownSpan, "240") << c.legend;
        EXPECT_EQ(shownName, "PILLAR9") << c.legend;
        EXPECT_EQ(shownArp.remove(u'\n'), arpText.ToQString()) << c.legend << " (line breaks aside)";

        EXPECT_TRUE(mate.Get(par::RefAvgCheck)) << c.legend;
        EXPECT_EQ(mate.Get(par::RefAvgSpan), 600) << c.legend;
        EXPECT_DOUBLE_EQ(mate.Get(par::RefAvgLimit), 0.75) << c.legend << " (written in the C locale)";
        EXPECT_EQ(mate.Get(par::RefAvgCurPointId), 7) << c.legend;
        EXPECT_EQ(mate.Get(par::RefAvgCurPointName), L"ROOF2") << c.legend;
        const devio::vok::POS_GEO written = c.system == COORD_GEODETIC ? mate.GetCurrentPointGeo(L"arp")
                                                                       : wgs84::ToGeo(mate.GetCurrentPointXyz(L"arp"));
        EXPECT_NEAR(written.lat, arp.lat, 1e-8) << c.legend << " position written back unchanged";
        EXPECT_NEAR(written.lon, arp.lon, 1e-8) << c.legend;
        EXPECT_NEAR(written.height, arp.height, 1e-3) << c.legend;
    }
}

TEST_F(AutoSeed, PointListShowsTheStoredPointsWithTheirDates) {
    SimLink link;
    CAutoSeed_PointListDlg dlg(link.Receiver(), nullptr);
    QStringList dates;
    RunWhenIdle(dlg, [&]() -> std::optional<int> {
        auto* list = dlg.Controls().Get<QTreeWidget>(IDC_POINTS);
        for (int i = 0; i < list->topLevelItemCount(); ++i) dates << list->topLevelItem(i)->text(2);
        Screenshot(dlg, "AutoSeed_PointListDlg");
        return 1;
    });
    struct Row { int slot; const wchar_t* name; QDateTime date; };
    const Row rows[] = {
        {0, L"PILLAR-1", QDateTime(QDate(2024, 5, 20), QTime(8, 14, 3), QTimeZone::utc())},
        {1, L"ROOF-NE", QDateTime(QDate(2024, 6, 2), QTime(15, 40, 27), QTimeZone::utc())},
    };
    ASSERT_EQ(dlg.Points().size(), std::size(rows));
    ASSERT_EQ(dates.size(), static_cast<qsizetype>(std::size(rows)));
    for (size_t i = 0; i < std::size(rows); ++i) {
        const auto& p = dlg.Points()[i];
        EXPECT_EQ(p.slot, rows[i].slot) << i;
        EXPECT_EQ(p.name, rows[i].name) << i;
        EXPECT_EQ(p.date, rows[i].date) << i;
        EXPECT_EQ(dates[static_cast<qsizetype>(i)], QLocale().toString(rows[i].date.toLocalTime(), QLocale::ShortFormat)) << i;
        EXPECT_GT(p.distance, 0) << i;
    }
}

// One point in place 3 of an otherwise empty list; the receiver's answers are scripted so
// that every command sent is seen.
TEST_F(AutoSeed, DeleteAsksFirst) {
    struct Case { const char* legend; int answer; std::vector<ustring> writes; };
    const Case cases[] = {
        {"No: nothing is sent", uikit::IDNO, {}},
        {"Yes: the point's place is deleted", uikit::IDYES, {L"set,ref/avg/list/pnts/del,3"}},
    };
    for (const Case& c : cases) {
        const basekit::CSmartPtr<fenktest::CScriptedReceiver> rcv(new fenktest::CScriptedReceiver);
        rcv->Otherwise(fenktest::CScriptedReceiver::Error(L"{2,,wrong 1st parameter}"));
        using R = fenktest::CScriptedReceiver;
        rcv->On(L"print,ref/avg/list/pnts/03/id", R::Reply(L"4"));
        rcv->On(L"print,ref/avg/list/pnts/03/name", R::Reply(L"MARK4"));
        rcv->On(L"print,ref/avg/list/pnts/03/date", R::Reply(L"2024/07/01 10:00:00"));
        rcv->On(L"print,ref/avg/list/pnts/03/dist", R::Reply(L"12.5"));
        rcv->On(L"print,ref/avg/list/pnts/03/protect", R::Reply(L"off"));
        rcv->On(L"print,ref/avg/list/pnts/03/auto", R::Reply(L"off"));
        rcv->On(L"print,ref/avg/list/pnts/03/arp/geo", R::Reply(L"{W84,N50d05m00.000000s,E014d25m00.000000s,250.0}"));
        rcv->On(L"set,ref/avg/list/pnts/del,3", R::Reply(L""));
        const uikit::CMessageBoxResponder responder([&](const uikit::MessageBoxRequest&) { return c.answer; });
        CAutoSeed_PointListDlg dlg(basekit::CSmartPtr<devio::IReceiver>(rcv.Get()), nullptr);
        int idles = 0;
        RunWhenIdle(dlg, [&]() -> std::optional<int> {
            if (idles++ > 0) return 1;   // the list read again (or never asked for)
            dlg.Select(0);
            dlg.DeletePoint();
            return c.writes.empty() ? std::optional<int>(1) : std::nullopt;
        });
        ASSERT_EQ(responder.Requests().size(), 1u) << c.legend;
        EXPECT_NE(responder.Requests()[0].text.find(L"MARK4"), ustring::npos) << c.legend;
        std::vector<ustring> writes;
        for (const ustring& s : rcv->Sent())
            if (s.rfind(L"set,", 0) == 0) writes.push_back(s);
        EXPECT_EQ(writes, c.writes) << c.legend;
    }
}

TEST_F(AutoSeed, NewPointStoredAppearsInTheList) {
    SimLink link;
    CAutoSeed_PointListDlg dlg(link.Receiver(), nullptr);
    const devio::vok::POS_GEO where{50.1, 14.4, 260.0};
    bool added = false;
    RunWhenIdle(dlg, [&]() -> std::optional<int> {
        if (added) return 1;
        added = true;
        QTimer::singleShot(0, &dlg, [&] {
            for (QWidget* w : QApplication::topLevelWidgets())
                if (auto* entry = dynamic_cast<CAutoSeed_NewPointDlg*>(w)) {
                    auto* idle = new fenktest::CIdleTrigger(entry, [entry, where] {
                        entry->SetPosition(where);
                        entry->Controls().Get<QLineEdit>(IDC_NEW_POINT_NAME)->setText("TRIG7");
                        if (!qEnvironmentVariableIsEmpty("FENK_BUILD_DIR"))
                            entry->grab().save(qEnvironmentVariable("FENK_BUILD_DIR") + "/tour-AutoSeed_NewPointDlg.png");
                        entry->accept();
                    });
                    idle->setParent(entry);
                }
        });
        dlg.AddPoint();
        return std::nullopt;
    });
    ASSERT_EQ(dlg.Points().size(), 3u);
    const auto& p = dlg.Points().back();
    EXPECT_EQ(p.slot, 2) << "the first free place";
    EXPECT_EQ(p.name, L"TRIG7");
    EXPECT_NEAR(p.position.lat, where.lat, 1e-7);
    EXPECT_NEAR(p.position.lon, where.lon, 1e-7);
    EXPECT_TRUE(p.date.isValid());
}

}  // namespace
