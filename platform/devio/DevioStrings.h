#pragma once
#include "platform/basekit/CResourceInstance.h"
#include "platform/basekit/ustring.h"

namespace devio {

// The device layer's own texts: why a link text names no link, why a link takes no command.
enum DevioStringId : unsigned {
    kStrLinkUnknownKind = 1,
    kStrLinkUnknownOption,
    kStrLinkNoSerialPath,
    kStrLinkBadNumber,
    kStrLinkNoHostOrPort,
    kStrLinkNoCapturePath,
    kStrLinkNoGpsdHost,
    kStrLinkNmeaOnly,
};

const basekit::CResourceInstance& DevioStrings();
basekit::ustring DevioText(unsigned id);

}  // namespace devio
