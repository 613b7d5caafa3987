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
    const wchar_t* text;   // nullptr: no such entry, the text comes back empty
    const char* legend;
};

// Texts that hosts, users or saved files see verbatim, with the quirks they have always had;
// only texts that code fetches.
const TextCase kExactTexts[] = {
    {IDS_APP_VERSION, L"Version 2.3 [September 9, 2011]", "application version"},
    {IDS_APP_NAME, L"Lyn Utility", "application name, long and short"},
    {IDS_INFO_TXT, L"info.txt", "default listing file name"},
    {IDS_TEXT_FILE_FILTER, L"Text Files (*.txt)|*.txt|All Files (*.*)|*.*||", "classic filter, double bar at end"},
    {IDS_FMT_POWER_BOARD_VERSION, L"hw=%d, fw=%s", "format: its conversions take an int, then a text"},
    {IDS_CREATED_BY, L"Created by", "listing header"},
    {IDS_NORTH, L"N", "sky plot mark and hemisphere letter"},
    {IDS_UNPOWERED_RECEIVER_ZED, L"You are connecting to the unpowered receiver. Please use the Setup dialog (Device -> "
         L"Zed/Zer Tools, Receiver tab) to turn power on manualy, or allow Lyn Utility to change "
         L"power state of the receiver.", "typo manualy kept"},
    {IDS_UNPOWERED_RECEIVER_BACKPACK, L"You are connecting to the unpowered receiver. Please use the Setup dialog "
         L"(Device -> Backpack Tools, Receiver tab) to turn power on manualy, or allow Lyn Utility to "
         L"change power state of the receiver.", "Pad7 variant names Backpack Tools"},
    {IDS_ROW_POWER_BOARD_VERSION, L"Power board version", "lower-case b, unlike Power Board, V"},
    {IDS_ROW_POWER_BOARD, L"Power Board, V", "last info row"},
    {0, nullptr, "below the first entry"},
    {3000, nullptr, "between entries"},
    {4999, nullptr, "in a gap between families"},
    {UINT_MAX, nullptr, "above the last"},
};

TEST(StringTable, ExactTextsAndMissingNumbers) {
    for (const auto& c : kExactTexts) {
        ustring text(L"stale");
        EXPECT_EQ(text.load(FenkResources(), c.id), c.text != nullptr) << c.id << ": " << c.legend;
        EXPECT_EQ(text, std::wstring(c.text ? c.text : L"")) << c.id << ": " << c.legend;
    }
}

// Every entry is reachable through the binary search, so none is shadowed by a misordered row.
// Texts come out of a UTF-8 source into wide strings: a wrong source charset would show as
// mojibake (Â°) or replacement characters; a stray blank at either end is a copy slip.
TEST(StringTable, EveryEntryIsFoundByItsNumberAndIsClean) {
    const auto table = FenkStringTable();
    ASSERT_GT(table.size(), 150u);
    for (const auto& entry : table) {
        EXPECT_EQ(FindFenkString(entry.id), entry.text) << entry.id;
        const std::wstring text(entry.text);
        ASSERT_FALSE(text.empty()) << entry.id;
        EXPECT_EQ(text.find_first_of(L"\uFFFD\u00C2"), std::wstring::npos) << entry.id;
        if (entry.id == IDS_FMT_GEO_ANGLE) continue;   // its trailing blank belongs to the format
        EXPECT_NE(text.front(), L' ') << entry.id;
        EXPECT_NE(text.back(), L' ') << entry.id;
    }
}

}  // namespace
