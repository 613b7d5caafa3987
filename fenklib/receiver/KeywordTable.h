#pragma once
#include <array>
#include <span>

namespace devio::vok {

// How FromKeyword matches a text against a table's keywords.
enum class KeywordMatch {
    Exact,       // the whole text equals a keyword (case-sensitive)
    Substring,   // the first keyword, in row order, that occurs anywhere in the text
    Integer,     // the text read as a decimal integer; a text that is not a number reads as 0
};

// One keyword table: rows are the enumeration values 0, 1, 2 ...
struct KeywordTable {
    std::span<const wchar_t* const> words;
    KeywordMatch match;
    int outOfRangeRow;   // row whose keyword an out-of-range value writes; -1 writes the empty text
    int fixedUnknown;    // value an unknown keyword reads as whatever N is; -1 reads as N
};

template <typename E>
struct KeywordTableOf;   // specialised once per enumeration in VokEnums.h

}  // namespace devio::vok
