#pragma once
#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>

class QString;

namespace basekit {

class CResourceInstance;

// The wide string used for every text, command and reply.
class ustring : public std::wstring {
public:
    using std::wstring::wstring;
    ustring() = default;
    ustring(const std::wstring& s) : std::wstring(s) {}
    ustring(std::wstring&& s) noexcept : std::wstring(std::move(s)) {}
    ustring(std::wstring_view s) : std::wstring(s) {}

    static ustring FromUtf8(std::string_view utf8);
    static ustring FromLatin1(std::string_view bytes);
    static ustring FromQString(const QString& s);
    std::string ToUtf8() const;
    QString ToQString() const;

    // printf-style formatting; "%s" and "%c" take wide arguments, as everywhere in the library.
    template <typename... Args>
    ustring& sprintf(const wchar_t* format, const Args&... args) {
        assign(FormatImpl(format, Pass(args)...));
        return *this;
    }
    template <typename... Args>
    static ustring Format(const wchar_t* format, const Args&... args) {
        return ustring(FormatImpl(format, Pass(args)...));
    }

    // String-table entries by number. load() gives false and the empty text when the entry is
    // missing; xload() also passes the text through the translation hook.
    bool load(unsigned id);
    bool load(const CResourceInstance& instance, unsigned id);
    bool xload(unsigned id);
    bool xload(const CResourceInstance& instance, unsigned id);

    // Fixed-point text of value with the given number of fraction digits ("%.*f").
    static ustring fcvt(double value, int digits);

    ustring& TrimLeft(wchar_t blank = L' ');
    ustring& TrimRight(wchar_t blank = L' ');
    ustring& Trim(wchar_t blank = L' ') { return TrimLeft(blank).TrimRight(blank); }
    ustring Trimmed(wchar_t blank = L' ') const { return ustring(*this).Trim(blank); }

    bool Contains(std::wstring_view part) const { return find(part) != npos; }
    bool EqualsNoCase(std::wstring_view other) const;

private:
    static const wchar_t* Pass(const ustring& s) { return s.c_str(); }
    static const wchar_t* Pass(const std::wstring& s) { return s.c_str(); }
    static const wchar_t* Pass(const wchar_t* s) { return s; }
    static const wchar_t* Pass(wchar_t* s) { return s; }
    template <typename T>
    static T Pass(const T& v) {
        static_assert(std::is_arithmetic_v<T> || std::is_enum_v<T> || std::is_pointer_v<T>,
                      "format arguments must be numbers or wide texts");
        return v;
    }
    static std::wstring FormatImpl(const wchar_t* format, ...);
};

}  // namespace basekit
