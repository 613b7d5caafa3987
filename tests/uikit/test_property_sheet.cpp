#include <gtest/gtest.h>

#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QTabBar>
#include <QTabWidget>
#include <QTimer>
#include <memory>
#include <string>
#include <vector>

#include "platform/uikit/CResizablePropertyPage.h"
#include "platform/uikit/CResizablePropertySheet.h"
#include "platform/uikit/MessageBoxTypes.h"

using namespace uikit;
using Journal = std::vector<std::string>;

namespace {

// Writes every call of the page protocol into the journal as "page:call".
class ProbePage : public CResizablePropertyPage {
public:
    ProbePage(Journal& journal, std::string name)
        : CResizablePropertyPage(100, basekit::ustring::FromUtf8(name)), m_journal(journal), m_name(std::move(name)) {}

    bool refuseLeave = false;
    bool refuseApply = false;
    bool applyLater = false;   // the write runs in the background: the script ends it
    int endSheetOnInit = 0;
    QPointer<QLineEdit> edit;   // null in OnDestroy would mean controls died first

    bool OnInitDialog() override {
        Log("init");
        edit = new QLineEdit(this);
        if (endSheetOnInit) EndDialog(endSheetOnInit);
        return CResizablePropertyPage::OnInitDialog();
    }
    bool OnSetActive() override { Log("set"); return true; }
    bool OnKillActive() override { Log("kill"); return !refuseLeave; }
    bool OnApply() override {
        Log("apply=" + edit->text().toStdString());
        if (applyLater) ApplyLater();
        return !refuseApply;
    }
    void OnOK() override { Log("ok"); }
    void OnCancel() override { Log("cancel"); }
    void OnDestroy() override { Log(edit ? "destroy" : "destroy-without-controls"); }

private:
    void Log(const std::string& call) { m_journal.push_back(m_name + ":" + call); }
    Journal& m_journal;
    std::string m_name;
};

class ProbeSheet : public CResizablePropertySheet {
public:
    ProbeSheet(Journal& journal, ApplyButton apply = ApplyButton::Shown)
        : CResizablePropertySheet(nullptr, L"Probe", L"ProbeSheet", apply), a(journal, "a"), b(journal, "b"),
          m_journal(journal) {
        AddPage(&a);
        AddPage(&b);
        // A script that forgets to close must not hang the suite.
        QTimer::singleShot(10000, this, [this] { EndDialog(99); });
    }
    ProbePage a, b;
    int shown = 0;

    QPushButton* Ok() const { return GetButton(IDOK); }
    QPushButton* Cancel() const { return GetButton(IDCANCEL); }
    QPushButton* Apply() const { return GetButton(ID_APPLY_NOW); }
    void ClickTab(int index) { GetTabControl()->setCurrentIndex(index); }

protected:
    void showEvent(QShowEvent* e) override { ++shown; CResizablePropertySheet::showEvent(e); }
    void OnDestroy() override { m_journal.push_back("sheet:destroy"); }

private:
    Journal& m_journal;
};

// Runs script once the sheet's modal loop is running.
int RunSheet(ProbeSheet& sheet, std::function<void()> script) {
    QTimer::singleShot(0, &sheet, std::move(script));
    return sheet.DoModal();
}

struct SheetCase {
    const char* legend;
    std::function<void(ProbeSheet&)> script;   // run inside the modal loop; nullptr: page a ends it in init
    int result;
    Journal journal;                           // the page protocol, in order
};

TEST(PropertySheet, PagesHearTheProtocolInOrder) {
    const SheetCase cases[] = {
        {"Apply reaches every initialised page, then OK closes",
         [](ProbeSheet& sheet) {
             EXPECT_FALSE(sheet.Apply()->isEnabled()) << "nothing modified yet";
             sheet.ClickTab(1);
             sheet.b.edit->setText(QStringLiteral("42"));
             sheet.b.SetModified(true);
             EXPECT_TRUE(sheet.Apply()->isEnabled());
             sheet.Apply()->click();
             EXPECT_FALSE(sheet.Apply()->isEnabled()) << "applied changes are no longer pending";
             sheet.Ok()->click();
         },
         IDOK,
         {"a:init", "a:set",                         // first page shown when the sheet opens
          "a:kill", "b:init", "b:set",               // tab switch
          "b:kill", "a:apply=", "b:apply=42",        // Apply: current page validates, all apply
          "b:kill", "a:apply=", "b:apply=42",        // OK: the same ...
          "a:ok", "b:ok",                            // ... then OnOK of each page
          "sheet:destroy", "a:destroy", "b:destroy"}},  // the sheet's window ends before its pages'
        {"refused validation keeps the page and the sheet",
         [](ProbeSheet& sheet) {
             sheet.a.refuseLeave = true;
             sheet.ClickTab(1);
             EXPECT_EQ(sheet.GetTabControl()->currentIndex(), 0);
             sheet.Ok()->click();
             EXPECT_TRUE(sheet.IsModalRunning());
             sheet.Cancel()->click();
         },
         IDCANCEL,
         {"a:init", "a:set", "a:kill",   // refused: b is never initialised
          "a:kill",                      // OK refused before any apply
          "a:cancel",                    // Cancel reaches initialised pages only
          "sheet:destroy", "a:destroy"}},
        {"refused apply shows the refusing page",
         [](ProbeSheet& sheet) {
             sheet.ClickTab(1);
             sheet.a.refuseApply = true;
             sheet.Ok()->click();
             EXPECT_EQ(sheet.GetTabControl()->currentIndex(), 0);
             EXPECT_EQ(sheet.GetActivePage(), &sheet.a);
             sheet.EndDialog(IDCANCEL);
         },
         IDCANCEL,
         {"a:init", "a:set", "a:kill", "b:init", "b:set",
          "b:kill", "a:apply=",   // a refuses: b is not applied, nobody gets OnOK
          "a:set",                // a is shown again
          "sheet:destroy", "a:destroy", "b:destroy"}},
        {"OK waits for a write in the background and closes when it worked",
         [](ProbeSheet& sheet) {
             sheet.ClickTab(1);
             sheet.a.applyLater = true;
             sheet.Ok()->click();
             EXPECT_TRUE(sheet.IsApplying());
             EXPECT_FALSE(sheet.Ok()->isEnabled()) << "a second OK while the first one's write runs";
             EXPECT_TRUE(sheet.Cancel()->isEnabled());
             EXPECT_TRUE(sheet.IsModalRunning());
             sheet.a.ApplyEnded(true);
         },
         IDOK,
         {"a:init", "a:set", "a:kill", "b:init", "b:set",
          "b:kill", "a:apply=",       // a's write runs: b waits for its end
          "b:apply=", "a:ok", "b:ok",
          "sheet:destroy", "a:destroy", "b:destroy"}},
        {"a failed background write keeps the sheet on its page with the user's values",
         [](ProbeSheet& sheet) {
             sheet.ClickTab(1);
             sheet.a.applyLater = true;
             sheet.a.edit->setText(QStringLiteral("typed"));
             sheet.a.SetModified(true);
             EXPECT_TRUE(sheet.ApplyNow()) << "nothing refused yet";
             sheet.a.ApplyEnded(false);
             EXPECT_FALSE(sheet.IsApplying());
             EXPECT_FALSE(sheet.LastApplySucceeded());
             EXPECT_EQ(sheet.GetActivePage(), &sheet.a);
             EXPECT_EQ(sheet.a.edit->text(), QStringLiteral("typed"));
             EXPECT_TRUE(sheet.Apply()->isEnabled()) << "the change is still pending";
             EXPECT_TRUE(sheet.Ok()->isEnabled());
             sheet.b.ApplyEnded(true);   // not the page being waited for: ignored
             EXPECT_TRUE(sheet.IsModalRunning());
             sheet.Cancel()->click();
         },
         IDCANCEL,
         {"a:init", "a:set", "a:kill", "b:init", "b:set",
          "b:kill", "a:apply=typed",   // b never applies: a's write failed
          "a:set",                     // a is shown again
          "a:cancel", "b:cancel", "sheet:destroy", "a:destroy", "b:destroy"}},
        {"a page ending the sheet during initialisation shows nothing", nullptr, 3,
         {"a:init", "a:set", "sheet:destroy", "a:destroy"}},
    };
    for (const auto& c : cases) {
        Journal journal;
        ProbeSheet sheet(journal);
        sheet.a.endSheetOnInit = c.script ? 0 : 3;
        EXPECT_EQ(c.script ? RunSheet(sheet, [&] { c.script(sheet); }) : sheet.DoModal(), c.result) << c.legend;
        EXPECT_EQ(sheet.shown, c.script ? 1 : 0) << c.legend;
        EXPECT_EQ(journal, c.journal) << c.legend;
    }
}

TEST(PropertySheet, WithoutApplyAndRunTwice) {
    Journal journal;
    ProbeSheet sheet(journal, CResizablePropertySheet::ApplyButton::Hidden);
    EXPECT_EQ(sheet.Apply(), nullptr) << "created without Apply";
    EXPECT_EQ(RunSheet(sheet, [&] { sheet.Cancel()->click(); }), IDCANCEL);
    journal.clear();
    EXPECT_EQ(RunSheet(sheet, [&] { sheet.Ok()->click(); }), IDOK);
    const Journal expected = {"a:init", "a:set", "a:kill", "a:apply=", "a:ok", "sheet:destroy", "a:destroy"};
    EXPECT_EQ(journal, expected) << "a second run initialises its pages again";
}

TEST(PropertySheet, OpensWideEnoughForEveryTab) {
    Journal journal;
    CResizablePropertySheet sheet(nullptr, L"Probe", L"SheetOfLongTitles");   // no placement kept yet
    std::vector<std::unique_ptr<ProbePage>> pages;
    for (const char* title : {"Position", "Data Link", "Position In Time", "Real-Time Logging", "Satellites List", "Data Link Status"}) {
        pages.push_back(std::make_unique<ProbePage>(journal, title));
        sheet.AddPage(pages.back().get());
    }
    int shownWidth = 0, tabsWidth = 0;
    QTimer::singleShot(0, &sheet, [&] {
        shownWidth = sheet.GetTabControl()->width();
        tabsWidth = sheet.GetTabControl()->tabBar()->sizeHint().width();
        sheet.EndDialog(IDCANCEL);
    });
    sheet.DoModal();
    EXPECT_GE(shownWidth, tabsWidth) << "no tab scrolled out of sight";
}

TEST(PropertySheet, APageAndItsSheetMayEndInEitherOrder) {
    Journal journal;
    ProbePage longLived(journal, "long");
    {
        CResizablePropertySheet sheet(nullptr, L"Probe");
        sheet.AddPage(&longLived);
        {
            ProbePage shortLived(journal, "short");
            sheet.AddPage(&shortLived);
            EXPECT_EQ(sheet.GetPageCount(), 2);
        }
        EXPECT_EQ(sheet.GetPageCount(), 1) << "a page destroyed first leaves the sheet";
        EXPECT_EQ(sheet.GetTabControl()->count(), 1);
    }
    EXPECT_EQ(longLived.GetSheet(), nullptr) << "a page outliving the sheet is not deleted by it";
    EXPECT_EQ(longLived.parent(), nullptr);
}

}  // namespace
