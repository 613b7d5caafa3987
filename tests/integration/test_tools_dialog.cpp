// The receiver tools dialog offscreen against the simulator: each operation asked first, run
// on the worker, its restart's silence tolerated, and the dialog ending so the host reconnects.
#include <gtest/gtest.h>

#include "ConfigDialogRun.h"
#include "SimLink.h"
#include "fenklib/config/CToolsDlg.h"
#include "fenklib/frame/LibraryHelpers.h"
#include "fenklib/receiver/CVokReceiverMate.h"
#include "fenklib/resources/StringIds.h"
#include "platform/uikit/CMessageBoxResponder.h"

using fenktest::SimLink;
using Op = CToolsDlg::Operation;

namespace {

// A parameter changed away from its factory value, to see whether the receiver was reset.
constexpr int kChangedMask = 17;

int LockMask(SimLink& link) {
    devio::CVokReceiverMate mate(link.Receiver());
    return mate.Get(devio::par::LockElm);
}

struct TOOL_CASE {
    const char* legend;
    Op operation;
    unsigned question;
    bool oldFirmware;    // "init,/setup/" unknown: the parameters are initialised as "init,/par/"
    bool factoryAfter;   // parameters back to the factory's after the operation
};

const TOOL_CASE kToolCases[] = {
    {"parameters initialised, restart answered by silence", Op::InitParameters, IDS_CONFIRM_INIT_PARAMETERS, false, true},
    {"parameters initialised on firmware without /setup/", Op::InitParameters, IDS_CONFIRM_INIT_PARAMETERS, true, true},
    {"NVRAM initialised, restart answered by silence", Op::InitNvram, IDS_CONFIRM_INIT_NVRAM, false, true},
    {"reset: the receiver never answers", Op::ResetReceiver, IDS_CONFIRM_RESET_RECEIVER, false, true},
};

class ToolsOperation : public ::testing::TestWithParam<TOOL_CASE> {};

TEST_P(ToolsOperation, ConfirmedRunsAndEndsForReconnection) {
    const TOOL_CASE& c = GetParam();
    rcvsim::SimOptions options;
    options.silentInit = true;
    options.oldFirmware = c.oldFirmware;
    SimLink link(SimLink::Over::Pty, options, 921600);   // a fast line keeps the silent init's wait short
    { devio::CVokReceiverMate(link.Receiver()).Set(devio::par::LockElm, kChangedMask); }
    const uikit::CMessageBoxResponder boxes([](const uikit::MessageBoxRequest&) { return uikit::IDYES; });
    CToolsDlg dlg(link.Receiver(), nullptr);
    const int result = fenktest::RunSteps(dlg, [&](int step) {
        if (step == 0) {
            EXPECT_TRUE(dlg.IsOperationEnabled(c.operation));
            fenktest::SaveTourShot(dlg, "tools");
            EXPECT_TRUE(dlg.Run(c.operation));
            EXPECT_FALSE(dlg.IsOperationEnabled(c.operation)) << "busy while the receiver works";
        } else {
            dlg.EndDialog(-2);   // idle again without having ended: the operation failed
        }
    });
    EXPECT_EQ(result, CToolsDlg::kReconnect);
    ASSERT_EQ(boxes.Requests().size(), 1u) << "the question, and no error";
    EXPECT_EQ(boxes.Requests()[0].text, LoadResString(c.question));
    EXPECT_EQ(LockMask(link) != kChangedMask, c.factoryAfter);
}

INSTANTIATE_TEST_SUITE_P(Cases, ToolsOperation, ::testing::ValuesIn(kToolCases));

// Declined: nothing reaches the receiver and the dialog stays open.
TEST(ToolsDialog, DeclinedOperationSendsNothing) {
    SimLink link;
    { devio::CVokReceiverMate(link.Receiver()).Set(devio::par::LockElm, kChangedMask); }
    const uikit::CMessageBoxResponder boxes;   // answers No
    CToolsDlg dlg(link.Receiver(), nullptr);
    const int result = fenktest::RunSteps(dlg, [&](int) {
        for (const Op op : {Op::InitParameters, Op::InitNvram, Op::ResetReceiver}) EXPECT_FALSE(dlg.Run(op));
        dlg.EndDialog(2);
    });
    EXPECT_EQ(result, 2);
    EXPECT_EQ(boxes.Requests().size(), 3u);
    EXPECT_EQ(LockMask(link), kChangedMask);
}

// A refusal other than the restart's silence is shown with its text and the dialog stays.
TEST(ToolsDialog, RefusedOperationShowsTheReplyAndStaysOpen) {
    rcvsim::SimOptions options;
    options.faults.silentPaths = {"cur/term"};   // the liveness probe is not answered
    SimLink link(SimLink::Over::Pty, options, 921600);
    const uikit::CMessageBoxResponder boxes([](const uikit::MessageBoxRequest&) { return uikit::IDYES; });
    CToolsDlg dlg(link.Receiver(), nullptr);
    const int result = fenktest::RunSteps(dlg, [&](int step) {
        if (step == 0) dlg.Run(Op::InitNvram);
        else dlg.EndDialog(2);
    });
    EXPECT_EQ(result, 2);
    ASSERT_EQ(boxes.Requests().size(), 2u) << "question, then the error";
    EXPECT_NE(boxes.Requests()[1].details.find(L"timed out"), std::wstring::npos);
}

}  // namespace
