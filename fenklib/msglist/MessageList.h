#pragma once
#include <span>
#include <vector>

#include "fenklib/receiver/VokTypes.h"
#include "platform/basekit/ustring.h"

// Operations on a list of scheduled messages, shared by the message dialogs and the ports
// dialog. A list is ordered; a name appears in it at most once.
namespace fenkmsg {

using MessageList = std::vector<devio::vok::MSG>;

// The catalogue groups, in the order both pickers show them.
std::span<const wchar_t* const> CatalogueGroups();
// "nmea" + "GGA" -> "nmea/GGA".
basekit::ustring FullName(const basekit::ustring& group, const basekit::ustring& name);

// The receiver reports enabled messages as "/msg/nmea/GGA" and lists them as "nmea/GGA":
// both are "nmea/GGA" here, so a name is found however it was obtained.
basekit::ustring CanonicalName(const basekit::ustring& name);

bool Contains(const MessageList& list, const basekit::ustring& name);
// Appends msg unless its name is already listed; true when it was appended.
bool AddUnique(MessageList& list, const devio::vok::MSG& msg);
// Appends every message of more whose name is not yet listed, in its order; the number added.
int MergeByName(MessageList& list, const MessageList& more);
// Removes the rows at the given positions (any order, duplicates ignored).
void RemoveRows(MessageList& list, std::vector<int> rows);

}  // namespace fenkmsg
