// The raw measurement dialog against a scripted receiver: the group read on open, exactly the
// changed values written on OK, nothing on Cancel, a refusal keeping the dialog open.
#include <gtest/gtest.h>

#include <QCheckBox>
#include <QLineEdit>

#include "fenklib/config/CRawMeasurementDlg.h"
#include "integration/ConfigDialogRun.h"
#include "platform/uikit/CMessageBoxResponder.h"
#include "support/ScriptedReceiver.h"

using basekit::CSmartPtr;
using basekit::ustring;
using fenktest::CScriptedReceiver;
using RAW = CRawMeasurementDlg::RAW_SETTINGS;

namespace {

const std::vector<ustring> kReads = {L"print,raw/msint", L"print,raw/clp/static", L"print,raw/corr/ca/code",
                                     L"print,raw/corr/ca/carrier"};

CSmartPtr<CScriptedReceiver> FactoryReceiver() {
    CSmartPtr<CScriptedReceiver> rx(new CScriptedReceiver());
    rx->On(L"print,raw/msint", CScriptedReceiver::Reply(L"1000"));
    rx->On(L"print,raw/clp/static", CScriptedReceiver::Reply(L"off"));
    rx->On(L"print,raw/corr/ca/code", CScriptedReceiver::Reply(L"on"));
    rx->On(L"print,raw/corr/ca/carrier", CScriptedReceiver::Reply(L"normal"));
    rx->Otherwise(CScriptedReceiver::Reply(L""));
    return rx;
}

struct RAW_CASE {
    const char* legend;
    RAW edit;                        // what the user leaves in the controls
    int end;                         // 1 OK, 2 Cancel
    std::vector<ustring> written;    // after the reading
};

const RAW_CASE kRawCases[] = {
    {"OK without a change writes nothing", {1000, false, true, false}, 1, {}},
    {"interval changed", {200, false, true, false}, 1, {L"set,raw/msint,200"}},
    {"clock option on", {1000, true, true, false}, 1, {L"set,raw/clp/static,on"}},
    {"corrections swapped: mpnew and normal",
     {1000, false, false, true},
     1,
     {L"set,raw/corr/ca/code,normal", L"set,raw/corr/ca/carrier,mpnew"}},
    {"everything changed, catalogue order",
     {50, true, false, true},
     1,
     {L"set,raw/msint,50", L"set,raw/clp/static,on", L"set,raw/corr/ca/code,normal", L"set,raw/corr/ca/carrier,mpnew"}},
    {"Cancel after changes writes nothing", {50, true, false, true}, 2, {}},
};

class RawWrite : public ::testing::TestWithParam<RAW_CASE> {};

TEST_P(RawWrite, ExactlyTheChangedValues) {
    const RAW_CASE& c = GetParam();
    auto rx = FactoryReceiver();
    CRawMeasurementDlg dlg(CSmartPtr<devio::IReceiver>(rx.Get()), nullptr);
    const int result = fenktest::RunSteps(dlg, [&](int) {
        const auto shown = dlg.Shown();
        ASSERT_TRUE(shown.has_value());
        EXPECT_EQ(shown->intervalMs, 1000);
        EXPECT_FALSE(shown->clpStatic);
        EXPECT_TRUE(shown->codeMultipath);
        EXPECT_FALSE(shown->carrierMultipath) << "\"normal\" holds no \"on\"";
        dlg.Show(c.edit);
        if (c.end == 1) dlg.accept();
        else dlg.reject();
    });
    EXPECT_EQ(result, c.end);
    std::vector<ustring> expected = kReads;
    expected.insert(expected.end(), c.written.begin(), c.written.end());
    EXPECT_EQ(rx->Sent(), expected);
}

INSTANTIATE_TEST_SUITE_P(Cases, RawWrite, ::testing::ValuesIn(kRawCases));

TEST(RawMeasurement, RefusedWriteIsShownAndTheDialogStays) {
    auto rx = FactoryReceiver();
    rx->On(L"set,raw/msint,5", CScriptedReceiver::Error(L"{2,,wrong 2nd parameter}"));
    const uikit::CMessageBoxResponder boxes;
    CRawMeasurementDlg dlg(CSmartPtr<devio::IReceiver>(rx.Get()), nullptr);
    bool stayed = false;
    const int result = fenktest::RunSteps(dlg, [&](int step) {
        if (step == 0) {
            dlg.Show({5, false, true, false});
            dlg.accept();   // the write runs as a job; the next step comes when it has ended
            return;
        }
        stayed = dlg.isVisible();
        dlg.reject();
    });
    EXPECT_EQ(result, 2);
    EXPECT_TRUE(stayed);
    ASSERT_EQ(boxes.Requests().size(), 1u);
    EXPECT_NE(boxes.Requests()[0].details.find(L"wrong 2nd parameter"), std::wstring::npos);
}

TEST(RawMeasurement, OkWaitsForTheReadingAndARealInterval) {
    auto rx = FactoryReceiver();
    rx->On(L"print,raw/msint", CScriptedReceiver::Error(L"{2,,wrong 1st parameter}"));
    const uikit::CMessageBoxResponder boxes;
    CRawMeasurementDlg dlg(CSmartPtr<devio::IReceiver>(rx.Get()), nullptr);
    bool okAfterFailedRead = true;
    fenktest::RunSteps(dlg, [&](int) {
        okAfterFailedRead = dlg.IsOkEnabled();
        dlg.accept();   // does nothing: there is nothing read to write back
        dlg.reject();
    });
    EXPECT_FALSE(okAfterFailedRead);
    EXPECT_EQ(boxes.Requests().size(), 1u) << "the reading's error";
    EXPECT_EQ(rx->Sent().size(), 1u);

    auto good = FactoryReceiver();
    CRawMeasurementDlg again(CSmartPtr<devio::IReceiver>(good.Get()), nullptr);
    bool okWithEmptyInterval = true;
    bool okWhenRead = false;
    fenktest::RunSteps(again, [&](int) {
        okWhenRead = again.IsOkEnabled();
        again.findChild<QLineEdit*>()->setText(QString());
        okWithEmptyInterval = again.IsOkEnabled();
        again.reject();
    });
    EXPECT_TRUE(okWhenRead);
    EXPECT_FALSE(okWithEmptyInterval);
}

}  // namespace
