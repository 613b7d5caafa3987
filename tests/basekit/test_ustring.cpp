#include <gtest/gtest.h>

#include <QString>

#include "platform/basekit/CResourceInstance.h"
#include "platform/basekit/ustring.h"

using basekit::ustring;

namespace {

TEST(Ustring, FormatTakesWideTexts) {
    struct Case { const char* legend; ustring got; ustring want; };
    const ustring port = L"dev/ser/a", big(10000, L'x');
    const Case cases[] = {
        {"two texts and a number", ustring::Format(L"set,%s/var/%d/name,\"%s\"", port, 3, L"x y"),
         L"set,dev/ser/a/var/3/name,\"x y\""},
        {"%c takes a wide char", ustring::Format(L"%c%02dd", L'N', 5), L"N05d"},
        {"%% is kept", ustring::Format(L"100%% %s", L"ok"), L"100% ok"},
        {"widths and precision", ustring::Format(L"%-4s|%.4f|%6.2f", L"a", 1.5, 2.0), L"a   |1.5000|  2.00"},
        {"schedule pattern", ustring::Format(L"{%f,%f,%d,0x%x}", 1.0, 0.5, 0, 255u),
         L"{1.000000,0.500000,0,0xff}"},
        {"explicit %ls is not doubled", ustring::Format(L"%ls", L"w"), L"w"},
        {"grows for long texts", ustring::Format(L"<%s>", big), L"<" + big + L">"},
    };
    for (const auto& c : cases) EXPECT_EQ(c.got, c.want) << c.legend;
}

TEST(Ustring, FixedPointAndTrimming) {
    EXPECT_EQ(ustring::fcvt(12.345, 2), L"12.35");
    EXPECT_EQ(ustring::fcvt(-0.5, 0), L"-0");
    EXPECT_EQ(ustring::fcvt(7, 2), L"7.00");
    EXPECT_EQ(ustring(L"  a b  ").Trimmed(), L"a b");
    EXPECT_EQ(ustring(L"   ").Trimmed(), L"");
    EXPECT_EQ(ustring(L"\ta ").Trimmed(), L"\ta") << "only blanks are trimmed by default";
}

TEST(Ustring, Utf8AndQStringRoundTrip) {
    const ustring text = L"55\u00b030'\u00e9\u4e2d\U0001F600";
    EXPECT_EQ(ustring::FromUtf8(text.ToUtf8()), text);
    EXPECT_EQ(ustring::FromQString(text.ToQString()), text);
    EXPECT_EQ(text.ToUtf8(), "55\xc2\xb0" "30'\xc3\xa9\xe4\xb8\xad\xf0\x9f\x98\x80");
}

const wchar_t* TestTable(unsigned id) {
    switch (id) {
        case 7: return L"seven";
        case 8: return L"";
        default: return nullptr;
    }
}

TEST(Ustring, LoadFollowsTheCurrentInstance) {
    const basekit::CResourceInstance table("test", &TestTable);
    ustring s = L"old";
    EXPECT_FALSE(s.load(7)) << "no table is current by default";
    EXPECT_EQ(s, L"");
    {
        const basekit::CResourceScope scope(table);
        EXPECT_TRUE(s.load(7));
        EXPECT_EQ(s, L"seven");
        EXPECT_TRUE(s.load(8)) << "an empty entry exists";
        EXPECT_FALSE(s.load(9));
        EXPECT_EQ(s, L"") << "a missing entry gives the empty text";
    }
    EXPECT_FALSE(s.load(7)) << "the scope restores the previous instance";
    basekit::CResourceInstance::SetTranslator([](const std::wstring& t) { return L"[" + t + L"]"; });
    EXPECT_TRUE(s.xload(table, 7));
    EXPECT_EQ(s, L"[seven]");
    basekit::CResourceInstance::SetTranslator(nullptr);
}

}  // namespace
