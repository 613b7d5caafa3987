#include <gtest/gtest.h>

#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QTabWidget>
#include <QTimer>
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
    bool OnApply() override { Log("apply=" + edit->text().toStdString()); return !refuseApply; }
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

TEST(PropertySheet, ApplyReachesEveryInitialisedPageThenOkCloses) {
    Journal journal;
    ProbeSheet sheet(journal);
    bool applyEnabledBefore = true, applyEnabledAfterEdit = false, applyEnabledAfterApply = true;
    const int result = RunSheet(sheet, [&] {
        applyEnabledBefore = sheet.Apply()->isEnabled();
        sheet.ClickTab(1);
        sheet.b.edit->setText(QStringLiteral("42"));
        sheet.b.SetModified(true);
        applyEnabledAfterEdit = sheet.Apply()->isEnabled();
        sheet.Apply()->click();
        applyEnabledAfterApply = sheet.Apply()->isEnabled();
        sheet.Ok()->click();
    });
    EXPECT_EQ(result, IDOK);
    EXPECT_FALSE(applyEnabledBefore) << "nothing modified yet";
    EXPECT_TRUE(applyEnabledAfterEdit);
    EXPECT_FALSE(applyEnabledAfterApply) << "applied changes are no longer pending";
    const Journal expected = {
        "a:init", "a:set",                         // first page shown when the sheet opens
        "a:kill", "b:init", "b:set",               // tab switch
        "b:kill", "a:apply=", "b:apply=42",        // Apply: current page validates, all apply
        "b:kill", "a:apply=", "b:apply=42",        // OK: the same ...
        "a:ok", "b:ok",                            // ... then OnOK of each page
        "sheet:destroy", "a:destroy", "b:destroy", // the sheet's window ends before its pages'
    };
    EXPECT_EQ(journal, expected);
    EXPECT_EQ(sheet.shown, 1);
}

TEST(PropertySheet, RefusedValidationKeepsThePageAndTheSheet) {
    Journal journal;
    ProbeSheet sheet(journal);
    int tabAfterRefusal = -1;
    bool stillRunningAfterOk = false;
    const int result = RunSheet(sheet, [&] {
        sheet.a.refuseLeave = true;
        sheet.ClickTab(1);
        tabAfterRefusal = sheet.GetTabControl()->currentIndex();
        sheet.Ok()->click();
        stillRunningAfterOk = sheet.IsModalRunning();
        sheet.Cancel()->click();
    });
    EXPECT_EQ(result, IDCANCEL);
    EXPECT_EQ(tabAfterRefusal, 0);
    EXPECT_TRUE(stillRunningAfterOk);
    const Journal expected = {
        "a:init", "a:set",
        "a:kill",                   // refused: b is never initialised
        "a:kill",                   // OK refused before any apply
        "a:cancel",                 // Cancel reaches initialised pages only
        "sheet:destroy", "a:destroy",
    };
    EXPECT_EQ(journal, expected);
}

TEST(PropertySheet, RefusedApplyShowsTheRefusingPage) {
    Journal journal;
    ProbeSheet sheet(journal);
    int tabAfterOk = -1;
    CResizablePropertyPage* activeAfterOk = nullptr;
    const int result = RunSheet(sheet, [&] {
        sheet.ClickTab(1);
        sheet.a.refuseApply = true;
        sheet.Ok()->click();
        tabAfterOk = sheet.GetTabControl()->currentIndex();
        activeAfterOk = sheet.GetActivePage();
        sheet.EndDialog(IDCANCEL);
    });
    EXPECT_EQ(result, IDCANCEL);
    EXPECT_EQ(tabAfterOk, 0);
    EXPECT_EQ(activeAfterOk, &sheet.a);
    const Journal expected = {
        "a:init", "a:set", "a:kill", "b:init", "b:set",
        "b:kill", "a:apply=",   // a refuses: b is not applied, nobody gets OnOK
        "a:set",                // a is shown again
        "sheet:destroy", "a:destroy", "b:destroy",
    };
    EXPECT_EQ(journal, expected);
}

TEST(PropertySheet, PageEndingTheSheetDuringInitialisationShowsNothing) {
    Journal journal;
    ProbeSheet sheet(journal, CResizablePropertySheet::ApplyButton::Hidden);
    sheet.a.endSheetOnInit = 3;
    EXPECT_EQ(sheet.DoModal(), 3);
    EXPECT_EQ(sheet.shown, 0);
    EXPECT_EQ(sheet.Apply(), nullptr) << "created without Apply";
    const Journal expected = {"a:init", "a:set", "sheet:destroy", "a:destroy"};
    EXPECT_EQ(journal, expected);
}

TEST(PropertySheet, SecondRunInitialisesPagesAgain) {
    Journal journal;
    ProbeSheet sheet(journal);
    EXPECT_EQ(RunSheet(sheet, [&] { sheet.Cancel()->click(); }), IDCANCEL);
    journal.clear();
    EXPECT_EQ(RunSheet(sheet, [&] { sheet.Ok()->click(); }), IDOK);
    const Journal expected = {"a:init", "a:set", "a:kill", "a:apply=", "a:ok", "sheet:destroy", "a:destroy"};
    EXPECT_EQ(journal, expected);
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
