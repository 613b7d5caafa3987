#include <gtest/gtest.h>

#include "fenklib/receiver/CVokReceiverMateCore.h"

using devio::CVokReceiverMateCore;
using basekit::ustring;

namespace {

TEST(Replies, ExtractBracedText) {
    struct Case { const char* legend; const wchar_t* reply; bool keep; bool ok; const wchar_t* out; };
    const Case cases[] = {
        {"inner text", L"x{a,{b}}y", false, true, L"a,{b}"},
        {"braces kept", L"x{a,{b}}y", true, true, L"{a,{b}}"},
        {"first open, last close", L"{a}{b}", false, true, L"a}{b"},
        {"empty pair", L"{}", false, true, L""},
        {"close before open", L"}a{", false, false, L"unchanged"},
        {"no braces", L"abc", false, false, L"unchanged"},
    };
    for (const auto& c : cases) {
        ustring out = L"unchanged";
        EXPECT_EQ(CVokReceiverMateCore::ExtractBracedText(c.reply, c.keep, out), c.ok) << c.legend;
        EXPECT_EQ(out, c.out) << c.legend;
    }
    ustring same = L"{in place}";
    EXPECT_TRUE(CVokReceiverMateCore::ExtractBracedText(same, false, same));
    EXPECT_EQ(same, L"in place");
}

TEST(Replies, SplitTopLevelList) {
    struct Case { const char* legend; const wchar_t* text; std::vector<ustring> items; };
    const Case cases[] = {
        {"nested braces stay in one item", L"a,{b,c},d", {L"a", L"{b,c}", L"d"}},
        {"an empty item in the middle is kept", L"a,,b", {L"a", L"", L"b"}},
        {"a trailing comma adds nothing", L"a,", {L"a"}},
        {"the empty text gives no item", L"", {}},
        {"a lone comma gives one empty item", L",", {L""}},
        {"schedules", L"GGA={1.00,0.00,0,0x0},RMC={1,0,0,0x1}", {L"GGA={1.00,0.00,0,0x0}", L"RMC={1,0,0,0x1}"}},
    };
    for (const auto& c : cases) {
        std::vector<ustring> items{L"stale"};
        CVokReceiverMateCore::SplitTopLevelList(c.text, items);
        EXPECT_EQ(items, c.items) << c.legend;
    }
}

TEST(Replies, OnOff) {
    struct Case { const char* legend; const wchar_t* reply; bool value; };
    const Case cases[] = {
        {"on", L"on", true}, {"none holds on", L"none", true}, {"yes does not", L"yes", false},
        {"ON is case-sensitive", L"ON", false}, {"off", L"off", false}, {"empty", L"", false},
    };
    for (const auto& c : cases) EXPECT_EQ(CVokReceiverMateCore::ParseOnOff(c.reply), c.value) << c.legend;
    EXPECT_EQ(CVokReceiverMateCore::FormatOnOff(true), L"on");
    EXPECT_EQ(CVokReceiverMateCore::FormatOnOff(false), L"off");
}

TEST(Replies, W84Texts) {
    const devio::vok::POS_GEO geo{-33.5, -70.25, 512.5};
    const ustring text = CVokReceiverMateCore::FormatW84(geo);
    EXPECT_EQ(text, L"{W84,S33d30m0.000000s,W070d15m0.000000s,512.500000}");
    const auto back = CVokReceiverMateCore::ParseW84Geo(text);
    EXPECT_NEAR(back.lat, geo.lat, 1e-9);
    EXPECT_NEAR(back.lon, geo.lon, 1e-9);
    EXPECT_NEAR(back.height, geo.height, 1e-9);
    EXPECT_EQ(CVokReceiverMateCore::FormatW84(devio::vok::POS_XYZ{1.23456, -2, 3}), L"{W84,1.2346,-2.0000,3.0000}");
    const auto fine = CVokReceiverMateCore::ParseW84Geo(CVokReceiverMateCore::FormatW84(devio::vok::POS_GEO{55.123456789, 37.5, 0}));
    EXPECT_NEAR(fine.lat, 55.123456789, 1e-8) << "six decimals of seconds keep sub-millimetre precision";
    EXPECT_EQ(CVokReceiverMateCore::ParseW84Geo(L"{W84,garbage}"), devio::vok::POS_GEO{});
}

}  // namespace
