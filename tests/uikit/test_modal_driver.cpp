// The one driver of modal windows: a step sees the window's changes as they come, and a failed
// assertion inside it ends the run at once instead of hanging until the deadline.
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QProcess>
#include <QTimer>

#include "platform/uikit/CResizableDialog.h"
#include "support/ModalDriver.h"

namespace {

class CountingDialog : public uikit::CResizableDialog {
public:
    CountingDialog() : CResizableDialog(nullptr, L"CountingDialog") {}
    int count = 0;
    // Work that reaches the window in three posted parts, as a job's results do.
    void StartWork() {
        for (int i = 0; i < 3; ++i) QTimer::singleShot(0, this, [this] { setProperty("count", ++count); });
    }
};

TEST(ModalDriver, AStepSeesEachChangeAndEndsTheWindow) {
    CountingDialog dlg;
    std::vector<int> seen;
    const int result = fenktest::DriveModal(dlg, [&] {
        if (seen.empty() && dlg.count == 0) dlg.StartWork();
        if (seen.empty() || seen.back() != dlg.count) seen.push_back(dlg.count);
        if (dlg.count < 3) return false;
        dlg.EndDialog(1);
        return true;
    });
    EXPECT_EQ(result, 1);
    EXPECT_EQ(seen.back(), 3) << "woken until the last part came";
}

TEST(ModalDriver, AScriptAwaitsAStateAndEndsTheWindow) {
    CountingDialog dlg;
    const int result = fenktest::DriveModal(dlg, [&] {
        dlg.StartWork();
        ASSERT_TRUE(fenktest::Await(&dlg, [&] { return dlg.count == 3; }));
        dlg.EndDialog(1);
    });
    EXPECT_EQ(result, 1);
}

// Run only in a child process by the case below: its assertion fails inside a script.
TEST(ModalDriver, DISABLED_FailingScript) {
    CountingDialog dlg;
    const int result = fenktest::DriveModal(dlg, [&] { ASSERT_EQ(dlg.count, 42) << "the planted failure"; });
    EXPECT_EQ(result, 2) << "the run ended with Cancel";
}

TEST(ModalDriver, AFailedAssertionInsideEndsTheRunNotTheDeadline) {
    QProcess child;
    child.start(QCoreApplication::applicationFilePath(),
                {QStringLiteral("--gtest_filter=ModalDriver.DISABLED_FailingScript"), QStringLiteral("--gtest_also_run_disabled_tests")});
    ASSERT_TRUE(child.waitForFinished(180000)) << "hang guard, past the driver's own deadline";
    const QString out = QString::fromUtf8(child.readAllStandardOutput() + child.readAllStandardError());
    EXPECT_NE(child.exitCode(), 0) << out.toStdString();
    EXPECT_TRUE(out.contains(QStringLiteral("the planted failure"))) << out.toStdString();
    EXPECT_FALSE(out.contains(QStringLiteral("did not reach its end"))) << "ended by the deadline, not by the failure:\n"
                                                                       << out.toStdString();
    EXPECT_FALSE(out.contains(QStringLiteral("Value of: result"))) << "the run ended with Cancel:\n" << out.toStdString();
}

}  // namespace
