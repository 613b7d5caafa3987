#pragma once
#include <QByteArray>
#include <vector>

#include "fenklib/msglist/MessageList.h"

namespace fenkmsg {

// A named list of messages the ports dialog offers as an output mode. A message whose period
// is 0 takes the period of the port page.
struct MESSAGE_SET {
    basekit::ustring name;
    MessageList messages;
    bool operator==(const MESSAGE_SET&) const = default;
};

// Reads the sets of a "PredefinedMessageSets" document: any child of the root is a set named
// by its "Name"; its "Message" children give "Name" and "Period" (phase, count and flags 0).
// A root of another name or a document that is not well-formed gives no sets.
std::vector<MESSAGE_SET> ParsePredefinedMessageSets(const QByteArray& xml);

// The library-wide sets, read once from "PredefinedMessageSets.xml" in the data folder;
// empty when the file is missing or unreadable.
const std::vector<MESSAGE_SET>& PredefinedMessageSets();

}  // namespace fenkmsg
