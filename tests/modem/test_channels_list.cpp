// The channel picker offscreen: its lines, their order by text, and what OK and Cancel return.
#include <gtest/gtest.h>

#include <QListWidget>
#include <QSettings>
#include <QTemporaryDir>
#include <QTimer>
#include <functional>

#include "fenklib/modem/CChannelsListDlg.h"
#include "support/SettingsSandbox.h"

namespace {

class ChannelsList : public fenktest::CSettingsSandboxTest {};

// Runs the dialog and hands it to `act` inside its modal loop.
int RunModal(CChannelsListDlg& dlg, const std::function<void()>& act) {
    QTimer::singleShot(0, &dlg, act);
    return dlg.DoModal();
}

// The tour of dialogs collects screenshots when FENK_BUILD_DIR is set.
void Screenshot(CChannelsListDlg& dlg, const char* name) {
    if (!qEnvironmentVariableIsEmpty("FENK_BUILD_DIR"))
        EXPECT_TRUE(dlg.grab().save(qEnvironmentVariable("FENK_BUILD_DIR") + "/tour-" + name + ".png"));
}

TEST_F(ChannelsList, LinesStandInTextOrderAndOkReturnsTheChosenFrequency) {
    struct Case { const char* legend; std::vector<double> channels; QStringList lines; int row; double result; };
    const Case cases[] = {   // row -1: Cancel, which leaves the caller's 77
        {"no channels: an empty list", {}, {}, -1, 77.0},
        {"text order, not the caller's: 1000 before 450", {450.0, 1000.0}, {"1000.00000", "450.00000"}, 0, 1000.0},
        {"second line is 450", {450.0, 1000.0}, {"1000.00000", "450.00000"}, 1, 450.0},
        {"equal frequencies give two lines, either returns the value", {433.125, 433.125}, {"433.12500", "433.12500"}, 1, 433.125},
        {"five decimals, leading zero kept; the value itself returned, not its text", {0.5, 12.345678},
         {"0.50000", "12.34568"}, 1, 12.345678},
        {"character by character whatever the collation: the point before a digit", {20.0, 2.9}, {"2.90000", "20.00000"}, 1,
         20.0},
        {"Cancel after a choice leaves the caller's value", {464.5, 410.0, 469.975},
         {"410.00000", "464.50000", "469.97500"}, -2, 77.0},
    };
    for (const Case& c : cases) {
        double result = 77.0;
        CChannelsListDlg dlg(nullptr, c.channels, result);
        QStringList shown;
        bool okAtFirst = true;
        const int modal = RunModal(dlg, [&] {
            for (int i = 0; i < dlg.List()->count(); ++i) shown << dlg.List()->item(i)->text();
            okAtFirst = dlg.IsOkEnabled();
            dlg.List()->setCurrentRow(c.row < 0 ? 0 : c.row);
            if (c.row == -1) return dlg.reject();
            EXPECT_TRUE(dlg.IsOkEnabled()) << c.legend;
            if (c.row == -2) return dlg.reject();
            dlg.accept();
        });
        EXPECT_EQ(shown, c.lines) << c.legend;
        EXPECT_FALSE(okAtFirst) << c.legend << ": no line is selected at first";
        EXPECT_EQ(modal, c.row < 0 ? 2 : 1) << c.legend;
        EXPECT_EQ(result, c.result) << c.legend;
    }
}

TEST_F(ChannelsList, OkWithoutASelectionKeepsTheDialogOpen) {
    struct Case { const char* legend; std::vector<double> channels; };
    const Case cases[] = {
        {"empty list: only Cancel closes", {}},
        {"selection cleared again", {464.5, 410.0, 469.975, 1000.0, 433.125}},
    };
    for (const Case& c : cases) {
        double result = 5.0;
        CChannelsListDlg dlg(nullptr, c.channels, result);
        bool stillOpen = false;
        bool okEnabled = true;
        const int modal = RunModal(dlg, [&] {
            if (dlg.List()->count()) {
                dlg.List()->setCurrentRow(2);
                Screenshot(dlg, "ChannelsListDlg");
                dlg.List()->clearSelection();
            } else {
                Screenshot(dlg, "ChannelsListDlg-empty");
            }
            okEnabled = dlg.IsOkEnabled();
            dlg.accept();
            stillOpen = dlg.isVisible();
            dlg.reject();
        });
        EXPECT_FALSE(okEnabled) << c.legend;
        EXPECT_TRUE(stillOpen) << c.legend;
        EXPECT_EQ(modal, 2) << c.legend;
        EXPECT_EQ(result, 5.0) << c.legend;
    }
}

}  // namespace
