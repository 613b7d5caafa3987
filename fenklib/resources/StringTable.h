#pragma once
#include <span>

// The library's string table: every user text, sorted by number.
struct FenkStringEntry {
    unsigned id;
    const wchar_t* text;
};

// The whole table, in ascending order of id, each id once.
std::span<const FenkStringEntry> FenkStringTable();

// The text of entry id, or nullptr when the table has none.
const wchar_t* FindFenkString(unsigned id);
