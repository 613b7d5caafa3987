// The positioning sheet against a scripted receiver: each page reads its group when first
// shown, OK writes exactly what changed (in the receiver's C-locale numbers), Cancel nothing,
// and the RTK solution reset is asked first.
#include <gtest/gtest.h>

#include <QPushButton>

#include "fenklib/config/CPositioningPS.h"
#include "integration/ConfigDialogRun.h"
#include "platform/uikit/CMessageBoxResponder.h"
#include "support/ScriptedReceiver.h"

using basekit::CSmartPtr;
using basekit::ustring;
using fenktest::CScriptedReceiver;

namespace {

// The general page's reads in field order, with the receiver's answers.
const std::pair<const wchar_t*, const wchar_t*> kGeneralReads[] = {
    {L"print,pos/mode/cur", L"sp"},      {L"print,pos/mode/sp", L"on"},     {L"print,pos/mode/cd", L"off"},
    {L"print,pos/dion/mode", L"local"},  {L"print,pos/rtk/dynamic", L"kinematic"}, {L"print,pos/pd/aflevel", L"medium"},
    {L"print,pos/pdop", L"30.0"},        {L"print,pos/elm", L"5"},
    // the output masks: the ports listed by class, then one mask per port
    {L"list,/par/dev/ser", L"{a=port,b=port}"}, {L"list,/par/dev/usb", L"{}"}, {L"list,/par/dev/tcp", L"{}"},
    {L"list,/par/dev/mvp", L"{}"},       {L"print,out/elm/dev/ser/a", L"10"}, {L"print,out/elm/dev/ser/b", L"5"},
    {L"print,pos/msint", L"100"},        {L"print,raw/msint", L"1000"},     {L"print,/par/ant/inp", L"auto"},
    {L"print,/par/ant/curinp", L"ext"},
};
const std::pair<const wchar_t*, const wchar_t*> kSolutionReads[] = {
    {L"print,pos/pd/mode", L"delay"}, {L"print,pos/pd/dyn", L"1.00"}, {L"print,pos/pd/textr", L"10.00"},
    {L"print,pos/pd/period", L"1.00"}, {L"print,pos/pd/ver", L"3"},
};
enum GeneralField { F_MODE, F_SP, F_CD, F_DION, F_RTK, F_AFL, F_PDOP, F_ELM, F_OUT_ELM, F_POS_INT, F_RAW_INT, F_ANT, F_ANT_USE, F_COUNT };
QVariantList Masks(int serA, int serB) { return {QVariantList{QStringLiteral("dev/ser/a"), serA}, QVariantList{QStringLiteral("dev/ser/b"), serB}}; }
enum SolutionField { S_MODE, S_DYN, S_TEXTR, S_PERIOD, S_VER };

CSmartPtr<CScriptedReceiver> Receiver() {
    CSmartPtr<CScriptedReceiver> rx(new CScriptedReceiver());
    for (const auto& [command, reply] : kGeneralReads) rx->On(command, CScriptedReceiver::Reply(reply));
    for (const auto& [command, reply] : kSolutionReads) rx->On(command, CScriptedReceiver::Reply(reply));
    rx->Otherwise(CScriptedReceiver::Reply(L""));
    return rx;
}

using Values = CParamFields::Values;
using Edit = std::function<void(Values& general, Values& solution)>;

struct POS_CASE {
    const char* legend;
    bool openSolution;               // the second page shown (and so read) before the end
    Edit edit;
    int end;                         // 1 OK, 2 Cancel
    std::vector<ustring> written;
};

const POS_CASE kCases[] = {
    {"OK unchanged: reads only", true, [](Values&, Values&) {}, 1, {}},
    {"mode and PDOP: keyword and six decimals", false,
     [](Values& g, Values&) { g[F_MODE] = 3; g[F_PDOP] = 12.5; }, 1,
     {L"set,pos/mode/cur,pd", L"set,pos/pdop,12.500000"}},
    {"switches, masks and one port's output mask: only that port written", false,
     [](Values& g, Values&) { g[F_CD] = true; g[F_ELM] = 15; g[F_OUT_ELM] = Masks(10, -5); g[F_ANT] = 0; }, 1,
     {L"set,pos/mode/cd,on", L"set,pos/elm,15", L"set,out/elm/dev/ser/b,-5", L"set,/par/ant/inp,int"}},
    {"solution page: output mode and period", true,
     [](Values&, Values& s) { s[S_MODE] = 0; s[S_PERIOD] = 0.2; }, 1,
     {L"set,pos/pd/mode,extrap", L"set,pos/pd/period,0.200000"}},
    {"Cancel after changes on both pages", true,
     [](Values& g, Values& s) { g[F_DION] = 2; s[S_DYN] = 4.0; }, 2, {}},
};

class PositioningWrite : public ::testing::TestWithParam<POS_CASE> {};

TEST_P(PositioningWrite, ExactlyTheChangedValues) {
    const POS_CASE& c = GetParam();
    auto rx = Receiver();
    CPositioningPS sheet(CSmartPtr<devio::IReceiver>(rx.Get()), nullptr);
    Values general, solution;
    const int result = fenktest::RunSteps(sheet, [&](int step) {
        if (step == 0 && c.openSolution) {
            sheet.SetActivePage(1);
            return;
        }
        general = sheet.GeneralPage().Collected().value_or(Values{});
        if (c.openSolution) solution = sheet.SolutionPage().Collected().value_or(Values{});
        ASSERT_EQ(general.size(), size_t{F_COUNT});
        EXPECT_EQ(general[F_MODE].toInt(), 0);
        EXPECT_EQ(general[F_DION].toInt(), 1);
        EXPECT_EQ(general[F_OUT_ELM].toList(), Masks(10, 5));
        Values g = general, s = solution;
        c.edit(g, s);
        sheet.GeneralPage().Edit(g);
        if (c.openSolution) sheet.SolutionPage().Edit(s);
        sheet.GetButton(c.end)->click();
    });
    EXPECT_EQ(result, c.end);
    std::vector<ustring> expected;
    for (const auto& read : kGeneralReads) expected.push_back(read.first);
    if (c.openSolution)
        for (const auto& read : kSolutionReads) expected.push_back(read.first);
    expected.insert(expected.end(), c.written.begin(), c.written.end());
    EXPECT_EQ(rx->Sent(), expected);
}

INSTANTIATE_TEST_SUITE_P(Cases, PositioningWrite, ::testing::ValuesIn(kCases));

struct RESET_CASE {
    const char* legend;
    int answer;
    bool sent;
};
const RESET_CASE kResetCases[] = {
    {"confirmed: the solution is reset", uikit::IDYES, true},
    {"declined: nothing sent", uikit::IDNO, false},
};
class SolutionReset : public ::testing::TestWithParam<RESET_CASE> {};

TEST_P(SolutionReset, AskedFirst) {
    const RESET_CASE& c = GetParam();
    auto rx = Receiver();
    const uikit::CMessageBoxResponder boxes([&](const uikit::MessageBoxRequest&) { return c.answer; });
    CPositioningPS sheet(CSmartPtr<devio::IReceiver>(rx.Get()), nullptr);
    sheet.SetActivePage(1);
    bool done = false;
    fenktest::RunSteps(sheet, [&](int step) {
        if (step == 0) {
            EXPECT_EQ(sheet.SolutionPage().OnResetSolution(), c.sent);
            done = true;
            if (c.sent) return;   // the reset runs as a job: the sheet closes once it has ended
        }
        sheet.GetButton(2)->click();
    });
    EXPECT_TRUE(done);
    EXPECT_EQ(boxes.Requests().size(), 1u);
    const auto sent = rx->Sent();
    EXPECT_EQ(std::count(sent.begin(), sent.end(), ustring(L"set,pos/pd/reset,on")), c.sent ? 1 : 0);
}

INSTANTIATE_TEST_SUITE_P(Cases, SolutionReset, ::testing::ValuesIn(kResetCases));

}  // namespace
