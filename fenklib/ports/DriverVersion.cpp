#include "fenklib/ports/DriverVersion.h"

#include <vector>

using basekit::ustring;

namespace {

std::vector<ustring> Split(const ustring& text, wchar_t at) {
    std::vector<ustring> parts;
    size_t from = 0;
    for (size_t cut = text.find(at); cut != ustring::npos; cut = text.find(at, from)) {
        parts.push_back(text.substr(from, cut - from));
        from = cut + 1;
    }
    parts.push_back(text.substr(from));
    return parts;
}

// A file written by hand may end its entries with line ends or pad them with blanks.
ustring Clean(ustring text) {
    for (const wchar_t blank : {L'\r', L'\n', L'\t', L' '}) text.Trim(blank);
    for (const wchar_t blank : {L'\r', L'\n', L'\t', L' '}) text.Trim(blank);
    return text;
}

}  // namespace

DRIVER_VERSION ParseDriverVersion(std::string_view fileBytes) {
    struct FIELD {
        const wchar_t* key;
        ustring DRIVER_VERSION::*member;
    };
    static constexpr FIELD kFields[] = {
        {L"name", &DRIVER_VERSION::name},
        {L"version", &DRIVER_VERSION::version},
        {L"description", &DRIVER_VERSION::description},
    };
    DRIVER_VERSION result;
    for (const ustring& entry : Split(ustring::FromUtf8(fileBytes), L';')) {
        const std::vector<ustring> parts = Split(entry, L'=');
        if (parts.size() != 2) continue;
        const ustring key = Clean(parts[0]);
        for (const FIELD& field : kFields)
            if (key.EqualsNoCase(field.key)) result.*field.member = Clean(parts[1]);
    }
    return result;
}
