#pragma once
#include <span>

#include "fenklib/receiver/CVokReceiverMate.h"

// One row of the receiver information list: its label, its icon and how its value is read.
// Separator rows have no label, no icon and an empty value.
struct RECEIVER_INFO_ROW {
    unsigned labelId;    // 0 for a separator
    unsigned iconId;     // 0 for none
    basekit::ustring (*read)(devio::CVokReceiverMate& mate);   // nullptr for a separator
};

std::span<const RECEIVER_INFO_ROW> ReceiverInfoRows();
