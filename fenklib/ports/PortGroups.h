#pragma once
#include <span>
#include <vector>

#include "fenklib/receiver/CVokReceiverMate.h"

// The receiver's port groups in the order the ports tree shows them. The kind is what each
// port's tree item carries and decides which sheet opens for it.
enum class EPortKind : int { None = 0, Serial = 1, Usb = 2, Tcp = 3, Mvp = 4, Script = 5 };

struct PORT_GROUP {
    unsigned captionId;
    const wchar_t* path;   // the class listed with "list,/par/%s"
    EPortKind kind;
    unsigned imageId;
};

std::span<const PORT_GROUP> PortGroups();
const PORT_GROUP& PortGroupOf(EPortKind kind);

// The keywords of a group's ports ("dev/ser/a" ...), in the receiver's order, each once; empty
// when the receiver does not know the group.
std::vector<basekit::ustring> ListGroupPorts(devio::CVokReceiverMate& mate, const PORT_GROUP& group);
