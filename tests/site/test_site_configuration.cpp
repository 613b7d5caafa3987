// The site configuration dialog offscreen over a scripted receiver: what it shows from the
// settings and the antenna list, what OK refuses, and the exact events it sends.
#include <gtest/gtest.h>

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QRadioButton>
#include <QSettings>
#include <QTemporaryDir>
#include <QTimer>
#include <functional>
#include <optional>
#include <tuple>

#include "fenklib/frame/LibraryHelpers.h"
#include "fenklib/resources/StringIds.h"
#include "fenklib/site/CSiteConfigurationDlg.h"
#include "platform/uikit/CKeypadLineEdit.h"
#include "platform/uikit/CMessageBoxResponder.h"
#include "support/ScriptedReceiver.h"

using basekit::CSmartPtr;
using basekit::ustring;
using fenktest::CScriptedReceiver;

namespace {

constexpr const wchar_t* kAntennaList = L"list,/par/antdb/ids/id";

class SiteConfiguration : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(m_store.isValid());
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, m_store.path());
        m_rx->Otherwise(CScriptedReceiver::Reply(L""));
    }
    static void Store(const SiteParameters& site) { CFenkGlobalSettings::Ref().SetSiteParameters(site); }
    static SiteParameters Stored() { return CFenkGlobalSettings::Ref().GetSiteParameters(); }
    std::vector<ustring> Events() const {
        std::vector<ustring> events;
        for (const ustring& c : m_rx->Sent())
            if (c.starts_with(L"event,")) events.push_back(c);
        return events;
    }

    QTemporaryDir m_store;
    CSmartPtr<CScriptedReceiver> m_rx{new CScriptedReceiver()};
};

template <typename W>
W* Ctl(const CSiteConfigurationDlg& dlg, unsigned id) { return dlg.Controls().Get<W>(id); }

// Runs the dialog and hands it to `act` inside its modal loop.
int RunModal(CSiteConfigurationDlg& dlg, const std::function<void()>& act) {
    QTimer::singleShot(0, &dlg, act);
    return dlg.DoModal();
}

// The five events OK sends, in their order.
std::vector<ustring> Sent(const wchar_t* site, const wchar_t* description, const wchar_t* height, const wchar_t* dynamics,
                          const wchar_t* antenna) {
    const auto event = [](const wchar_t* key, const wchar_t* value) { return ustring(L"event,\"_") + key + L"=" + value + L"\""; };
    return {event(L"SIT", site), event(L"DSC", description), event(L"ANH", height), event(L"DYM", dynamics), event(L"ANT", antenna)};
}

SiteParameters Site(const wchar_t* name, const wchar_t* type, float height = 0, bool slant = false, bool dynamic = false) {
    SiteParameters s;
    s.SiteName = name;
    s.Description = L"north pillar";
    s.AntennaType = type;
    s.AntennaHeight = height;
    s.Slant = slant;
    s.Dynamics = dynamic;
    return s;
}

TEST_F(SiteConfiguration, AntennaTypeIsMatchedWithoutCaseOrKeptAsTyped) {
    struct Case { const char* legend; CScriptedReceiver::Step list; const wchar_t* stored; int index; const char* text; size_t boxes; };
    const Case cases[] = {
        {"match ignoring case shows the receiver's spelling", CScriptedReceiver::Reply(L"{FNK-GA3 NONE,ARC-G2 NONE}"),
         L"fnk-ga3 none", 0, "FNK-GA3 NONE", 0},
        {"several match: the last one added", CScriptedReceiver::Reply(L"{ANT-X,B,Ant-x}"), L"ant-X", 2, "Ant-x", 0},
        {"not in the list: kept as typed text", CScriptedReceiver::Reply(L"{A,B}"), L"MY OWN ANT", -1, "MY OWN ANT", 0},
        {"a prefix is no match", CScriptedReceiver::Reply(L"{FNK-GA3 NONE}"), L"FNK-GA3", -1, "FNK-GA3", 0},
        {"list refused: the error is shown, the dialog still opens", CScriptedReceiver::Error(L"{2,,wrong 1st parameter}"),
         L"X2", -1, "X2", 1},
    };
    for (const Case& c : cases) {
        m_rx->On(kAntennaList, c.list);
        Store(Site(L"P1", c.stored));
        const uikit::CMessageBoxResponder boxes;
        CSiteConfigurationDlg dlg(m_rx, nullptr);
        int index = -2;
        QString text;
        const int modal = RunModal(dlg, [&] {
            auto* combo = Ctl<QComboBox>(dlg, 3079);
            index = combo->currentIndex();
            text = combo->currentText();
            dlg.reject();
        });
        EXPECT_EQ(modal, 2) << c.legend;
        EXPECT_EQ(index, c.index) << c.legend;
        EXPECT_EQ(text, QString(c.text)) << c.legend;
        EXPECT_EQ(boxes.Requests().size(), c.boxes) << c.legend;
        EXPECT_EQ(Stored().AntennaType, c.stored) << c.legend << ": Cancel keeps the settings";
    }
    EXPECT_TRUE(Events().empty()) << "Cancel sends nothing";
}

TEST_F(SiteConfiguration, OkStoresAndSendsTheFiveEventsInOrder) {
    struct Case {
        const char* legend;
        SiteParameters stored;
        std::function<void(CSiteConfigurationDlg&)> edit;
        std::vector<ustring> events;
        std::optional<SiteParameters> kept;   // none: as stored
    };
    const Case cases[] = {
        {"unchanged values, height 0 without slant is 0.000000", Site(L"P1", L"A"), {},
         Sent(L"P1", L"north pillar", L"0.000000", L"STATIC", L"A"), {}},
        {"slant height and dynamic", Site(L"P1", L"A", 1.5f, true, true), {},
         Sent(L"P1", L"north pillar", L"1.500000s", L"DYNAMIC", L"A"), {}},
        {"double quotes become single quotes in name and description", Site(L"P1", L"A"),
         [](CSiteConfigurationDlg& d) {
             Ctl<QLineEdit>(d, 3077)->setText("Pt \"A\"");
             Ctl<QLineEdit>(d, 3078)->setText("the \"old\" one");
         },
         Sent(L"Pt 'A'", L"the 'old' one", L"0.000000", L"STATIC", L"A"),
         [] { auto s = Site(L"Pt 'A'", L"A"); s.Description = L"the 'old' one"; return s; }()},
        {"a stored type the receiver does not know is written back unchanged", Site(L"P1", L"Custom Ant 7"), {},
         Sent(L"P1", L"north pillar", L"0.000000", L"STATIC", L"Custom Ant 7"), {}},
        {"20 characters, a chosen antenna, edited height, static chosen", Site(L"P1", L"A", 2.0f, true, true),
         [](CSiteConfigurationDlg& d) {
             Ctl<QLineEdit>(d, 3077)->setText("ABCDEFGHIJKLMNOPQRST");
             Ctl<QComboBox>(d, 3079)->setCurrentIndex(1);
             Ctl<QLineEdit>(d, 3080)->setText("1.25");
             Ctl<QCheckBox>(d, 3211)->setChecked(false);
             Ctl<QRadioButton>(d, 3232)->setChecked(true);
         },
         Sent(L"ABCDEFGHIJKLMNOPQRST", L"north pillar", L"1.250000", L"STATIC", L"FNK-GA3 NONE"),
         Site(L"ABCDEFGHIJKLMNOPQRST", L"FNK-GA3 NONE", 1.25f)},
    };
    const auto fields = [](const SiteParameters& s) {
        return std::tuple(s.SiteName, s.Description, s.AntennaType, s.AntennaHeight, s.Slant, s.Dynamics);
    };
    m_rx->On(kAntennaList, CScriptedReceiver::Reply(L"{A,FNK-GA3 NONE}"));
    for (const Case& c : cases) {
        Store(c.stored);
        m_rx->ClearLog();
        CSiteConfigurationDlg dlg(m_rx, nullptr);
        const int modal = RunModal(dlg, [&] {
            if (c.edit) c.edit(dlg);
            dlg.accept();
        });
        EXPECT_EQ(modal, 1) << c.legend;
        EXPECT_EQ(Events(), c.events) << c.legend;
        EXPECT_TRUE(fields(Stored()) == fields(c.kept.value_or(c.stored))) << c.legend;
    }
}

TEST_F(SiteConfiguration, RefusedValuesKeepTheDialogOpenAndChangeNothing) {
    struct Case { const char* legend; unsigned id; QString text; ustring message; };
    const Case cases[] = {
        {"height that is not a number", 3080, "abc", LoadResString(IDS_ENTER_A_NUMBER)},
        {"empty height", 3080, "", LoadResString(IDS_ENTER_A_NUMBER)},
    };
    m_rx->On(kAntennaList, CScriptedReceiver::Reply(L"{A}"));
    for (const Case& c : cases) {
        Store(Site(L"P1", L"A", 1.0f));
        m_rx->ClearLog();
        const uikit::CMessageBoxResponder boxes;
        CSiteConfigurationDlg dlg(m_rx, nullptr);
        bool stillOpen = false;
        const int modal = RunModal(dlg, [&] {
            Ctl<QLineEdit>(dlg, c.id)->setText(c.text);
            dlg.accept();
            stillOpen = dlg.isVisible();
            dlg.reject();
        });
        EXPECT_TRUE(stillOpen) << c.legend;
        EXPECT_EQ(modal, 2) << c.legend;
        ASSERT_EQ(boxes.Requests().size(), 1u) << c.legend;
        EXPECT_EQ(boxes.Requests()[0].text, c.message) << c.legend;
        EXPECT_TRUE(Events().empty()) << c.legend;
        EXPECT_EQ(Stored().SiteName, L"P1") << c.legend;
        EXPECT_EQ(Stored().AntennaHeight, 1.0f) << c.legend;
    }
}

// The name and the description stop taking characters at their limits, and the antenna type
// is typed with the on-screen keypad like the other texts.
TEST_F(SiteConfiguration, TextLimitsAndTheKeypad) {
    m_rx->On(kAntennaList, CScriptedReceiver::Reply(L"{A}"));
    Store(Site(L"P1", L"A"));
    CSiteConfigurationDlg dlg(m_rx, nullptr);
    struct Row { const char* legend; unsigned id; int limit; };
    const Row rows[] = {{"site name", 3077, 20}, {"description", 3078, 100}};
    RunModal(dlg, [&] {
        for (const Row& row : rows) {
            auto* edit = Ctl<QLineEdit>(dlg, row.id);
            edit->setText(QString(row.limit + 1, 'N'));
            EXPECT_EQ(edit->text().size(), row.limit) << row.legend;
        }
        EXPECT_NE(dynamic_cast<uikit::CKeypadLineEdit*>(Ctl<QComboBox>(dlg, 3079)->lineEdit()), nullptr) << "antenna type";
        dlg.reject();
    });
}

// A value the receiver cannot take is refused before anything is kept or sent; an event that
// fails closes the dialog after its error, so the events already sent are never sent twice.
TEST_F(SiteConfiguration, NothingIsKeptOrSentTwice) {
    struct Row {
        const char* legend;
        QString type;                 // typed as the antenna type
        const wchar_t* failing;       // the event the receiver refuses, nullptr: none
        std::vector<ustring> events;  // what reaches the receiver
        bool stored;                  // the new name kept in the settings
        bool open;                    // the dialog stays open
        int result;
    };
    const Row rows[] = {
        {"a double quote in the antenna type: refused first", "AX\"1", nullptr, {}, false, true, 2},
        {"the third event refused: shown, closed", "A", L"event,\"_ANH=0.000000\"",
         {L"event,\"_SIT=P2\"", L"event,\"_DSC=north pillar\"", L"event,\"_ANH=0.000000\""}, true, false, 2},
    };
    for (const Row& row : rows) {
        m_rx->On(kAntennaList, CScriptedReceiver::Reply(L"{A}"));
        m_rx->On(L"event,\"_ANH=0.000000\"", CScriptedReceiver::Reply(L""));
        if (row.failing) m_rx->On(row.failing, CScriptedReceiver::Error(L"{2,,no medium}"));
        Store(Site(L"P1", L"A"));
        m_rx->ClearLog();
        const uikit::CMessageBoxResponder boxes;
        CSiteConfigurationDlg dlg(m_rx, nullptr);
        bool stillOpen = false;
        const int modal = RunModal(dlg, [&] {
            Ctl<QLineEdit>(dlg, 3077)->setText("P2");
            Ctl<QComboBox>(dlg, 3079)->setEditText(row.type);
            dlg.accept();
            stillOpen = dlg.isVisible();
            if (stillOpen) dlg.accept();   // pressed again
            if (dlg.isVisible()) dlg.reject();
        });
        EXPECT_EQ(Events(), row.events) << row.legend;
        EXPECT_EQ(stillOpen, row.open) << row.legend;
        EXPECT_EQ(modal, row.result) << row.legend;
        EXPECT_GE(boxes.Requests().size(), 1u) << row.legend;
        EXPECT_EQ(Stored().SiteName, row.stored ? L"P2" : L"P1") << row.legend;
    }
}

}  // namespace
