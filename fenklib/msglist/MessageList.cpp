#include "fenklib/msglist/MessageList.h"

#include <algorithm>

using basekit::ustring;

namespace fenkmsg {

namespace {
constexpr const wchar_t* kGroups[] = {L"qls", L"nmea", L"rtcm", L"rtcm3", L"cmr", L"binex"};
}

std::span<const wchar_t* const> CatalogueGroups() { return kGroups; }

ustring FullName(const ustring& group, const ustring& name) { return ustring::Format(L"%s/%s", group, name); }

ustring CanonicalName(const ustring& name) {
    std::size_t start = 0;
    while (start < name.size() && name[start] == L'/') ++start;
    if (name.compare(start, 4, L"msg/") == 0) start += 4;
    return name.substr(start);
}

bool Contains(const MessageList& list, const ustring& name) {
    const ustring wanted = CanonicalName(name);
    return std::any_of(list.begin(), list.end(), [&](const devio::vok::MSG& m) { return CanonicalName(m.name) == wanted; });
}

bool AddUnique(MessageList& list, const devio::vok::MSG& msg) {
    if (Contains(list, msg.name)) return false;
    list.push_back(msg);
    return true;
}

int MergeByName(MessageList& list, const MessageList& more) {
    int added = 0;
    for (const devio::vok::MSG& m : more) added += AddUnique(list, m) ? 1 : 0;
    return added;
}

void RemoveRows(MessageList& list, std::vector<int> rows) {
    std::sort(rows.begin(), rows.end());
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
    for (auto row = rows.rbegin(); row != rows.rend(); ++row)
        if (*row >= 0 && *row < static_cast<int>(list.size())) list.erase(list.begin() + *row);
}

}  // namespace fenkmsg
