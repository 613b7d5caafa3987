// The tracking options sheet against a scripted receiver: the lock lists round trip (an item
// without "=" is dropped), the L5 lock keeps its fixed first element, SBAS slots are written
// with their slot numbers, and only changes go out.
#include <gtest/gtest.h>

#include <QPushButton>

#include "fenklib/config/CTrackingOptionsPS.h"
#include "integration/ConfigDialogRun.h"
#include "support/ScriptedReceiver.h"

using basekit::CSmartPtr;
using basekit::ustring;
using fenktest::CScriptedReceiver;

namespace {

const std::pair<const wchar_t*, const wchar_t*> kLockReads[] = {
    {L"print,lock/elm", L"5"},
    {L"print,ajm/mode", L"auto"},
    {L"print,lock/gps/l5", L"{off,off}"},
    {L"print,raw/corr/ca/code", L"on"},
    {L"print,raw/corr/ca/carrier", L"normal"},
    {L"print,lock/waas/sat:on", L"{120=y,junk,124=n,126=n}"},
    {L"print,lock/qzss/sat:on", L"{193=n,194=y}"},
};
enum { L_ELM, L_AJM, L_L5, L_CODE, L_CARRIER, L_SBAS, L_QZSS };

std::vector<ustring> SbasReads() {
    std::vector<ustring> reads{L"print,waas/numb"};
    for (int slot = 1; slot <= 3; ++slot)
        for (const wchar_t* item : {L"sat", L"ion", L"instead0"}) reads.push_back(ustring::Format(L"print,waas/%d/%s", slot, item));
    return reads;
}

CSmartPtr<CScriptedReceiver> Receiver() {
    CSmartPtr<CScriptedReceiver> rx(new CScriptedReceiver());
    for (const auto& [command, reply] : kLockReads) rx->On(command, CScriptedReceiver::Reply(reply));
    rx->On(L"print,waas/numb", CScriptedReceiver::Reply(L"off"));
    for (int slot = 1; slot <= 3; ++slot) {
        rx->On(ustring::Format(L"print,waas/%d/sat", slot), CScriptedReceiver::Reply(ustring::Format(L"%d", 129 + 2 * slot)));
        rx->On(ustring::Format(L"print,waas/%d/ion", slot), CScriptedReceiver::Reply(L"1"));
        rx->On(ustring::Format(L"print,waas/%d/instead0", slot), CScriptedReceiver::Reply(L"0"));
    }
    rx->Otherwise(CScriptedReceiver::Reply(L""));
    return rx;
}

using Values = CParamFields::Values;

QVariant Locks(std::initializer_list<std::pair<int, bool>> items) {
    QVariantList list;
    for (const auto& [sat, locked] : items) list.push_back(QVariantList{sat, locked});
    return list;
}

struct TRACK_CASE {
    const char* legend;
    bool openSbas;
    std::function<void(Values& locks, Values& sbas)> edit;
    int end;
    std::vector<ustring> written;
};

const TRACK_CASE kCases[] = {
    {"unchanged: the item without = is not written back either", true, [](Values&, Values&) {}, 1, {}},
    {"one SBAS satellite locked: the whole list goes, without the bad item", false,
     [](Values& l, Values&) { l[L_SBAS] = Locks({{120, true}, {124, true}, {126, false}}); }, 1,
     {L"set,lock/waas/sat,{120=y,124=y,126=n}"}},
    {"QZSS unlocked, L5 on, anti-jamming off", false,
     [](Values& l, Values&) {
         l[L_QZSS] = Locks({{193, false}, {194, false}});
         l[L_L5] = true;
         l[L_AJM] = 5;
     },
     1, {L"set,ajm/mode,off", L"set,lock/gps/l5,{off,on}", L"set,lock/qzss/sat,{193=n,194=n}"}},
    {"slot 2 satellite and slot 3 ionosphere", true,
     [](Values&, Values& s) {
         s[1 + 3 * 1] = 138;       // slot 2 satellite
         s[1 + 3 * 2 + 1] = 2;     // slot 3 ionosphere
         s[0] = true;
     },
     1, {L"set,waas/numb,on", L"set,waas/2/sat,138", L"set,waas/3/ion,2"}},
    {"Cancel writes nothing", true,
     [](Values& l, Values& s) { l[L_ELM] = 10; s[0] = true; }, 2, {}},
};

class TrackingWrite : public ::testing::TestWithParam<TRACK_CASE> {};

TEST_P(TrackingWrite, ExactlyTheChangedValues) {
    const TRACK_CASE& c = GetParam();
    auto rx = Receiver();
    CTrackingOptionsPS sheet(CSmartPtr<devio::IReceiver>(rx.Get()), nullptr);
    Values locks, sbas;
    const int result = fenktest::RunSteps(sheet, [&](int step) {
        if (step == 0 && c.openSbas) {
            sheet.SetActivePage(1);
            return;
        }
        locks = sheet.LocksPage().Collected().value_or(Values{});
        ASSERT_EQ(locks.size(), std::size(kLockReads));
        Values l = locks, s;
        if (c.openSbas) s = sheet.SbasPage().Collected().value_or(Values{});
        sbas = s;
        c.edit(l, s);
        sheet.LocksPage().Edit(l);
        if (c.openSbas) sheet.SbasPage().Edit(s);
        sheet.GetButton(c.end)->click();
    });
    EXPECT_EQ(result, c.end);
    EXPECT_EQ(locks[L_SBAS], Locks({{120, true}, {124, false}, {126, false}})) << "junk skipped";
    EXPECT_EQ(locks[L_QZSS], Locks({{193, false}, {194, true}}));
    EXPECT_FALSE(locks[L_L5].toBool()) << "the second element of {off,off}";
    EXPECT_EQ(locks[L_AJM].toInt(), 4);
    if (c.openSbas) {
        ASSERT_EQ(sbas.size(), 10u);
        EXPECT_EQ(sbas[1 + 3].toInt(), 133) << "slot 2 satellite";
    }
    std::vector<ustring> expected;
    for (const auto& read : kLockReads) expected.push_back(read.first);
    if (c.openSbas)
        for (const auto& read : SbasReads()) expected.push_back(read);
    expected.insert(expected.end(), c.written.begin(), c.written.end());
    EXPECT_EQ(rx->Sent(), expected);
}

INSTANTIATE_TEST_SUITE_P(Cases, TrackingWrite, ::testing::ValuesIn(kCases));

}  // namespace
