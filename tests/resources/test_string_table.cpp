#include <gtest/gtest.h>

#include <climits>
#include <string>

#include "fenklib/resources/FenkResources.h"
#include "fenklib/resources/StringIds.h"
#include "fenklib/resources/StringTable.h"
#include "platform/basekit/ustring.h"

using basekit::ustring;

namespace {

struct TextCase {
    unsigned id;
    const wchar_t* text;
    const char* legend;
};

// Texts that hosts, users or saved files see verbatim, with the quirks they have always had.
const TextCase kExactTexts[] = {
    {1, L"Version 2.3 [September 9, 2011]", "application version"},
    {3368, L"Lyn Utility", "application name, long and short"},
    {3001, L"Name", "info list first column"},
    {3002, L"Value", "info list second column"},
    {3017, L"info.txt", "default listing file name"},
    {3018, L".txt", "listing extension"},
    {3019, L"Text Files (*.txt)|*.txt|All Files (*.*)|*.*||", "classic filter, double bar at end"},
    {3139, L"hw=%d, fw=%s", "power board version format"},
    {3435, L"Saving Receiver Settings", "tip while saving"},
    {3440, L"Created by", "listing header"},
    {3152, L"Status", "status sheet caption"},
    {3153, L"Close", "status sheet cancel relabelled"},
    {3436, L"Real-Time Logging is in progress. Would you like to stop it?", "close guard"},
    {3169, L"N", "north / sky plot mark"},
    {3170, L"S", "south"},
    {3171, L"E", "east"},
    {3172, L"W", "west"},
    {3220, L"m", "metres"},
    {3166, L"Unused", "system 0"},
    {3100, L"Reserved", "system 5: string 3100, not the SVs List page"},
    {3462, L"QZSS", "system 4"},
    {3188, L"Alert flag (from the word \u201CHOW\u201D) is set", "curly quotes kept"},
    {3197, L"Differential data from reference station unavailable for given satellite "
           L"(applicable only when receiver runs in DGPS)", "status 20"},
    {3198, L"This SV is excluded from OmniSTAR HP position computation", "status 32 out of order"},
    {3461, L"This SV is not used in DION processing", "status 24 far from its neighbours"},
    {3213, L"Satellite navigation status is undefined", "status 63, last of the block"},
    {3214, L"You are connecting to the unpowered receiver. Please use the Setup dialog (Device -> "
           L"Zed/Zer Tools, Receiver tab) to turn power on manualy, or allow Lyn Utility to change "
           L"power state of the receiver.", "typo manualy kept"},
    {3464, L"You are connecting to the unpowered receiver. Please use the Setup dialog (Device -> "
           L"Backpack Tools, Receiver tab) to turn power on manualy, or allow Lyn Utility to "
           L"change power state of the receiver.", "Pad7 variant names Backpack Tools"},
    {3247, L"You are connecting to the unpowered modem. Please use the Setup dialog (Device -> "
           L"Zed/Zer Tools, Modem tab) to turn power on manualy, or allow Lyn Utility to change "
           L"power state of the modem.", "modem variant"},
    {IDS_NOTE_VARIABLES, L"To viev and edit the valiables list.", "typos viev, valiables kept"},
    {IDS_FMT_ELEVATION_RING, L"%d\u00B0", "degree sign is one character"},
    {IDS_FMT_GEO_ANGLE, L"%02d\u00B0%02d'%.4f''%s; ", "trailing blank belongs to the format"},
    {IDS_ROW_POWER_BOARD_VERSION, L"Power board version", "lower-case b, unlike Power Board, V"},
    {IDS_ROW_POWER_BOARD, L"Power Board, V", "last info row"},
    {IDS_ROW_ID, L"Id", "row whose value names the file"},
    {IDS_PAGE_POS_IN_TIME, L"Pos In Time", "wide-screen title"},
};

TEST(StringTable, ExactTexts) {
    for (const auto& c : kExactTexts) {
        ustring text;
        EXPECT_TRUE(text.load(FenkResources(), c.id)) << c.legend;
        EXPECT_EQ(text, std::wstring(c.text)) << c.id << ": " << c.legend;
    }
}

TEST(StringTable, MissingNumbersGiveEmptyText) {
    const unsigned missing[] = {0, 2, 3000, 3003, 3021, 3176, 3469, 4999, 5400, UINT_MAX};
    for (const unsigned id : missing) {
        ustring text(L"stale");
        EXPECT_FALSE(text.load(FenkResources(), id)) << id;
        EXPECT_TRUE(text.empty()) << id;
    }
}

// Every entry is reachable through the binary search, so none is shadowed by a misordered row.
TEST(StringTable, EveryEntryIsFoundByItsNumber) {
    const auto table = FenkStringTable();
    ASSERT_GT(table.size(), 150u);
    for (const auto& entry : table) EXPECT_EQ(FindFenkString(entry.id), entry.text) << entry.id;
}

// Texts come out of a UTF-8 source into wide strings: a wrong source charset would show as
// mojibake (Â°) or replacement characters; a stray blank at either end is a copy slip.
TEST(StringTable, TextsAreCleanAndNonEmpty) {
    for (const auto& entry : FenkStringTable()) {
        const std::wstring text(entry.text);
        ASSERT_FALSE(text.empty()) << entry.id;
        EXPECT_EQ(text.find(L'\uFFFD'), std::wstring::npos) << entry.id;
        EXPECT_EQ(text.find(L'\u00C2'), std::wstring::npos) << entry.id;
        if (entry.id == IDS_FMT_GEO_ANGLE) continue;
        EXPECT_NE(text.front(), L' ') << entry.id;
        EXPECT_NE(text.back(), L' ') << entry.id;
    }
}

TEST(StringTable, ScopeMakesTheLibraryTableCurrent) {
    ustring text;
    {
        const basekit::CResourceScope scope(FenkResources());
        EXPECT_TRUE(text.load(IDS_APP_NAME));
        EXPECT_EQ(text, L"Lyn Utility");
    }
    EXPECT_FALSE(text.load(IDS_APP_NAME)) << "the host's table is back after the scope";
}

}  // namespace
