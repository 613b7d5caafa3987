#pragma once
#include <cwchar>
#include <optional>
#include <string_view>

#include "fenklib/receiver/VokEnums.h"
#include "platform/basekit/ustring.h"

namespace devio::vok {

// Converts one enumeration value to and from its receiver keyword. N is the value an
// unrecognised keyword reads as (unless the table fixes it).
template <typename E, E N>
class CReceiverEnumWrapper {
public:
    explicit CReceiverEnumWrapper(E value = N) : m_value(value) {}
    virtual ~CReceiverEnumWrapper() = default;

    virtual CReceiverEnumWrapper& FromKeyword(const basekit::ustring& text) {
        m_value = static_cast<E>(Read(text));
        return *this;
    }
    virtual basekit::ustring ToKeyword() const {
        const KeywordTable& t = KeywordTableOf<E>::kTable;
        const int v = static_cast<int>(m_value);
        if (v >= 0 && static_cast<size_t>(v) < t.words.size()) return t.words[v];
        return t.outOfRangeRow < 0 ? basekit::ustring() : basekit::ustring(t.words[t.outOfRangeRow]);
    }

    E Value() const { return m_value; }
    operator E() const { return m_value; }
    static constexpr E Default() { return N; }

private:
    static int Unknown() {
        const int fixed = KeywordTableOf<E>::kTable.fixedUnknown;
        return fixed >= 0 ? fixed : static_cast<int>(N);
    }
    static int Read(const basekit::ustring& text) {
        const KeywordTable& t = KeywordTableOf<E>::kTable;
        if (t.match == KeywordMatch::Integer) return ReadInteger(text, t);
        for (size_t row = 0; row < t.words.size(); ++row) {
            const bool hit = t.match == KeywordMatch::Exact ? text == t.words[row]
                                                            : text.find(t.words[row]) != basekit::ustring::npos;
            if (hit) return static_cast<int>(row);
        }
        return Unknown();
    }
    static int ReadInteger(const basekit::ustring& text, const KeywordTable& t) {
        const long n = std::wcstol(text.c_str(), nullptr, 10);
        return n >= 0 && static_cast<size_t>(n) < t.words.size() ? static_cast<int>(n) : Unknown();
    }

    E m_value;
};

// The wrapper with the table's usual N, and the two conversions through it.
template <typename E>
using EnumWrapper = CReceiverEnumWrapper<E, KeywordTableOf<E>::kDefault>;
template <typename E>
basekit::ustring ToKeyword(E value) { return EnumWrapper<E>(value).ToKeyword(); }
template <typename E>
E FromKeyword(const basekit::ustring& text) { return EnumWrapper<E>().FromKeyword(text).Value(); }

// The row whose keyword is exactly text; nothing when text is not one of the table's members
// (windows that must show "no selection" for a value they do not know).
template <typename E>
std::optional<E> MemberOf(const basekit::ustring& text) {
    const KeywordTable& t = KeywordTableOf<E>::kTable;
    for (size_t row = 0; row < t.words.size(); ++row)
        if (text == t.words[row]) return static_cast<E>(row);
    return std::nullopt;
}
// The number of members of a table.
template <typename E>
int MemberCount() { return static_cast<int>(KeywordTableOf<E>::kTable.words.size()); }

// Letter codes of the data-link message.
basekit::ustring DataLinkFormatName(wchar_t letter);
basekit::ustring DataLinkPortName(wchar_t letter);

}  // namespace devio::vok
