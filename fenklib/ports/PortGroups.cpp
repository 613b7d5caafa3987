#include "fenklib/ports/PortGroups.h"

#include "fenklib/resources/ImageIds.h"
#include "fenklib/resources/StringIds.h"

namespace {

// MVP and the script ports share the fourth image.
constexpr PORT_GROUP kGroups[] = {
    {IDS_PORT_GROUP_SERIAL, L"dev/ser", EPortKind::Serial, IDB_PORT_SERIAL},
    {IDS_PORT_GROUP_USB, L"dev/usb", EPortKind::Usb, IDB_PORT_USB},
    {IDS_PORT_GROUP_TCP, L"dev/tcp", EPortKind::Tcp, IDB_PORT_TCP},
    {IDS_PORT_GROUP_MVP, L"dev/mvp", EPortKind::Mvp, IDB_PORT_MVP},
    {IDS_PORT_GROUP_COM, L"com", EPortKind::Script, IDB_PORT_MVP},
};

}  // namespace

std::span<const PORT_GROUP> PortGroups() { return kGroups; }

const PORT_GROUP& PortGroupOf(EPortKind kind) {
    for (const PORT_GROUP& g : kGroups)
        if (g.kind == kind) return g;
    return kGroups[0];
}

std::vector<basekit::ustring> ListGroupPorts(devio::CVokReceiverMate& mate, const PORT_GROUP& group) {
    std::vector<basekit::ustring> keywords;
    if (group.kind == EPortKind::Script) {
        for (const devio::vok::ECom com : mate.ListScriptPorts()) keywords.push_back(devio::vok::ToKeyword(com));
    } else {
        for (const devio::vok::EDev dev : mate.ListPorts(group.path)) keywords.push_back(devio::vok::ToKeyword(dev));
    }
    return keywords;
}
