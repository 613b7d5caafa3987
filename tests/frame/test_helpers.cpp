#include <gtest/gtest.h>

#include "fenklib/frame/CFenkLibDoc.h"
#include "fenklib/frame/LibraryHelpers.h"

namespace {

TEST(Helpers, CoordinateTexts) {
    struct Case { const char* legend; basekit::ustring got; const wchar_t* want; };
    const Case cases[] = {
        {"the documented example", FormatGeoText({55.5, 37.25, 150}), L"55\u00b030'0.0000''N; 37\u00b015'0.0000''E; 150.00m"},
        {"south and west", FormatGeoText({-33.5, -70.75, -12.345}), L"33\u00b030'0.0000''S; 70\u00b045'0.0000''W; -12.35m"},
        // In double precision these seconds would print as 53.6302.
        {"seconds kept in single precision", FormatGeoText({16.731563931, 0.5 / 3600, 0}),
         L"16\u00b043'53.6301''N; 00\u00b000'0.5000''E; 0.00m"},
        {"Cartesian in four decimals", FormatXyzText({2845456.12346, 2160954.1, 5265993.0}), L"2845456.1235,2160954.1000,5265993.0000"},
    };
    for (const auto& c : cases) EXPECT_EQ(c.got, c.want) << c.legend;
}

TEST(Helpers, ApplicationTexts) {
    EXPECT_EQ(CFenkLibDoc::GetLongApplicationName(false), L"Lyn Utility");
    EXPECT_EQ(CFenkLibDoc::GetShortApplicationName(true), CFenkLibDoc::GetLongApplicationName(true));
    EXPECT_EQ(CFenkLibDoc::GetApplicationVersion(false), L"Version 2.3 [September 9, 2011]");
    EXPECT_EQ(LoadResString(4999), L"") << "a missing entry is the empty text";
    EXPECT_EQ(GetBoldFont().weight(), QFont::Bold);
}

TEST(Helpers, DataFilesLieBesideTheHost) {
    const basekit::ustring path = GetDataFilePath(L"ReceiverMessageRegistry", L".xml");
    EXPECT_TRUE(path.ToQString().endsWith(QStringLiteral("/DATA/ReceiverMessageRegistry.xml"))) << path.ToUtf8();
}

}  // namespace
