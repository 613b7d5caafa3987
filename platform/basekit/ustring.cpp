#include "platform/basekit/ustring.h"
#include "platform/basekit/CCLocaleScope.h"

#include <QString>
#include <cstdarg>
#include <cwchar>
#include <cwctype>
#include <vector>

#include "platform/basekit/CResourceInstance.h"

namespace basekit {

namespace {

// Wide printf takes "%s" as a narrow string; the library's patterns mean a wide one, so a
// conversion without a length modifier gets "l" added.
std::wstring WidenPattern(const wchar_t* format) {
    std::wstring out;
    out.reserve(std::wcslen(format) + 8);
    for (const wchar_t* p = format; *p; ++p) {
        out += *p;
        if (*p != L'%') continue;
        ++p;
        if (!*p) break;
        if (*p == L'%') { out += *p; continue; }
        bool hasLength = false;
        for (; *p && !std::wcschr(L"diouxXeEfFgGaAcspn", *p); ++p) {
            if (std::wcschr(L"hlLqjzt", *p)) hasLength = true;
            out += *p;
        }
        if (!*p) break;
        if ((*p == L's' || *p == L'c') && !hasLength) out += L'l';
        out += *p;
    }
    return out;
}

}  // namespace

std::wstring ustring::FormatImpl(const wchar_t* format, ...) {
    const std::wstring pattern = WidenPattern(format);
    const CCLocaleScope cLocale;
    std::vector<wchar_t> buffer(256);
    for (int attempt = 0; attempt < 24; ++attempt) {
        va_list args;
        va_start(args, format);
        const int n = std::vswprintf(buffer.data(), buffer.size(), pattern.c_str(), args);
        va_end(args);
        if (n >= 0 && static_cast<size_t>(n) < buffer.size()) return std::wstring(buffer.data(), n);
        buffer.resize(buffer.size() * 2);
    }
    return {};
}

ustring ustring::FromUtf8(std::string_view utf8) {
    return FromQString(QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size())));
}

ustring ustring::FromLatin1(std::string_view bytes) {
    ustring out;
    out.resize(bytes.size());
    for (size_t i = 0; i < bytes.size(); ++i) out[i] = static_cast<unsigned char>(bytes[i]);
    return out;
}

ustring ustring::FromQString(const QString& s) { return ustring(s.toStdWString()); }

std::string ustring::ToUtf8() const { return ToQString().toStdString(); }

QString ustring::ToQString() const { return QString::fromWCharArray(data(), static_cast<qsizetype>(size())); }

bool ustring::load(unsigned id) { return load(CResourceInstance::Current(), id); }

bool ustring::load(const CResourceInstance& instance, unsigned id) {
    const wchar_t* text = instance.Find(id);
    assign(text ? text : L"");
    return text != nullptr;
}

bool ustring::xload(unsigned id) { return xload(CResourceInstance::Current(), id); }

bool ustring::xload(const CResourceInstance& instance, unsigned id) {
    const bool found = load(instance, id);
    assign(CResourceInstance::Translate(*this));
    return found;
}

ustring ustring::fcvt(double value, int digits) { return Format(L"%.*f", digits, value); }

ustring& ustring::TrimLeft(wchar_t blank) {
    const size_t first = find_first_not_of(blank);
    erase(0, first == npos ? size() : first);
    return *this;
}

ustring& ustring::TrimRight(wchar_t blank) {
    const size_t last = find_last_not_of(blank);
    erase(last == npos ? 0 : last + 1);
    return *this;
}

bool ustring::EqualsNoCase(std::wstring_view other) const {
    if (size() != other.size()) return false;
    for (size_t i = 0; i < size(); ++i)
        if (std::towlower((*this)[i]) != std::towlower(other[i])) return false;
    return true;
}

}  // namespace basekit
