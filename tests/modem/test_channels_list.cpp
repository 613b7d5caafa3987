// The channel picker offscreen: its lines, their order by text, and what OK and Cancel return.
#include <gtest/gtest.h>

#include <QListWidget>
#include <QSettings>
#include <QTemporaryDir>
#include <QTimer>
#include <functional>

#include "fenklib/modem/CChannelsListDlg.h"

namespace {

class ChannelsList : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(m_store.isValid());
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, m_store.path());
    }
    QTemporaryDir m_store;
};

// Runs the dialog and hands it to `act` inside its modal loop.
int RunModal(CChannelsListDlg& dlg, const std::function<void()>& act) {
    QTimer::singleShot(0, &dlg, act);
    return dlg.DoModal();
}

QStringList Lines(const QListWidget* list) {
    QStringList lines;
    for (int i = 0; i < list->count(); ++i) lines << list->item(i)->text();
    return lines;
}

TEST_F(ChannelsList, LinesStandInTheOrderOfTheirTexts) {
    struct Case { const char* legend; std::vector<double> channels; QStringList lines; };
    const Case cases[] = {
        {"no channels: an empty list", {}, {}},
        {"text order, not the caller's: 1000 before 450", {450.0, 1000.0}, {"1000.00000", "450.00000"}},
        {"equal frequencies give two lines", {433.125, 433.125}, {"433.12500", "433.12500"}},
        {"five decimals, leading zero kept", {0.5, 12.345678}, {"0.50000", "12.34568"}},
        {"the caller's order is not kept", {464.5, 410.0, 469.975}, {"410.00000", "464.50000", "469.97500"}},
    };
    for (const Case& c : cases) {
        double result = -1;
        CChannelsListDlg dlg(nullptr, c.channels, result);
        QStringList shown;
        bool okEnabled = true;
        RunModal(dlg, [&] {
            shown = Lines(dlg.List());
            okEnabled = dlg.IsOkEnabled();
            dlg.reject();
        });
        EXPECT_EQ(shown, c.lines) << c.legend;
        EXPECT_FALSE(okEnabled) << c.legend << ": no line is selected at first";
        EXPECT_EQ(result, -1) << c.legend;
    }
}

TEST_F(ChannelsList, OkReturnsTheFrequencyOfTheChosenLine) {
    struct Case { const char* legend; std::vector<double> channels; int row; int modal; double result; };
    const Case cases[] = {
        {"first line is 1000 though the caller gave it second", {450.0, 1000.0}, 0, 1, 1000.0},
        {"second line is 450", {450.0, 1000.0}, 1, 1, 450.0},
        {"either of two equal lines returns that value", {433.125, 433.125}, 1, 1, 433.125},
        {"the value itself, not its five-decimal text", {12.345678}, 0, 1, 12.345678},
        {"Cancel leaves the caller's value", {450.0, 1000.0}, -1, 2, 77.0},
    };
    for (const Case& c : cases) {
        double result = 77.0;
        CChannelsListDlg dlg(nullptr, c.channels, result);
        const int modal = RunModal(dlg, [&] {
            if (c.row < 0) return dlg.reject();
            dlg.List()->setCurrentRow(c.row);
            EXPECT_TRUE(dlg.IsOkEnabled()) << c.legend;
            dlg.accept();
        });
        EXPECT_EQ(modal, c.modal) << c.legend;
        EXPECT_EQ(result, c.result) << c.legend;
    }
}

TEST_F(ChannelsList, OkWithoutASelectionKeepsTheDialogOpen) {
    struct Case { const char* legend; std::vector<double> channels; };
    const Case cases[] = {
        {"empty list: only Cancel closes", {}},
        {"selection cleared again", {450.0}},
    };
    for (const Case& c : cases) {
        double result = 5.0;
        CChannelsListDlg dlg(nullptr, c.channels, result);
        bool stillOpen = false;
        bool okEnabled = true;
        const int modal = RunModal(dlg, [&] {
            if (dlg.List()->count()) {
                dlg.List()->setCurrentRow(0);
                dlg.List()->clearSelection();
            }
            okEnabled = dlg.IsOkEnabled();
            dlg.accept();
            stillOpen = dlg.isVisible();
            if (!qEnvironmentVariableIsEmpty("FENK_BUILD_DIR") && c.channels.empty())
                dlg.grab().save(qEnvironmentVariable("FENK_BUILD_DIR") + "/tour-ChannelsListDlg-empty.png");
            dlg.reject();
        });
        EXPECT_FALSE(okEnabled) << c.legend;
        EXPECT_TRUE(stillOpen) << c.legend;
        EXPECT_EQ(modal, 2) << c.legend;
        EXPECT_EQ(result, 5.0) << c.legend;
    }
}

TEST_F(ChannelsList, Screenshot) {
    const std::vector<double> channels{464.5, 410.0, 469.975, 1000.0, 433.125};
    double result = 0;
    CChannelsListDlg dlg(nullptr, channels, result);
    RunModal(dlg, [&] {
        dlg.List()->setCurrentRow(2);
        if (!qEnvironmentVariableIsEmpty("FENK_BUILD_DIR")) {
            EXPECT_TRUE(dlg.grab().save(qEnvironmentVariable("FENK_BUILD_DIR") + "/tour-ChannelsListDlg.png"));
        }
        dlg.accept();
    });
    EXPECT_EQ(result, 433.125) << "third line by text: 1000, 410, then 433.125";
}

}  // namespace
