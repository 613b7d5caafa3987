#include "fenklib/receiver/CommandText.h"

#include "platform/basekit/BaseStrings.h"
#include "platform/basekit/CStdException.h"

namespace devio {

namespace {

bool IsControl(wchar_t c) { return c < 0x20 || c == 0x7F || (c >= 0x80 && c < 0xA0) || c == 0x2028 || c == 0x2029; }

[[noreturn]] void Refuse(const basekit::ustring& text) {
    basekit::ustring pattern;
    pattern.load(basekit::BaseStrings(), basekit::kStrBadCommandText);
    basekit::ustring shown;
    for (const wchar_t c : text) shown += IsControl(c) ? basekit::ustring::Format(L"<%02X>", static_cast<unsigned>(c)) : basekit::ustring(1, c);
    throw basekit::CStdException(basekit::ustring::Format(pattern.c_str(), shown), "CommandText", __LINE__);
}

}  // namespace

void CheckCommandArgument(const basekit::ustring& text, bool quoted) {
    for (const wchar_t c : text) {
        if (IsControl(c) || c == L'"') Refuse(text);
        if (!quoted && (c == L',' || c == L';' || c == L'{' || c == L'}')) Refuse(text);
    }
}

void CheckCommandLine(const basekit::ustring& command) {
    for (const wchar_t c : command)
        if (IsControl(c)) Refuse(command);
}

}  // namespace devio
