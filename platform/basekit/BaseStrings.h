#pragma once
#include "platform/basekit/CResourceInstance.h"

namespace basekit {

// The base library's own texts (error descriptions), apart from any module's table.
enum BaseStringId : unsigned {
    kStrCommError = 1,
    kStrWinError,
    kStrCancelled,
    kStrTimeout,
    kStrInternal,
    kStrLinkLost,
    kStrUnknownError,
    kStrBadCommandText,
    kStrFileNotFound,
    kStrAccessDenied,
    kStrInvalidParameter,
    kStrBusy,
    kStrIoDevice,
    kStrNotConnected,
    kStrConnectionRefused,
    kStrNetworkUnreachable,
    kStrHostUnreachable,
    kStrHostNotFound,
    kStrPlainCancelled,
    kStrPlainTimeout,
    kStrPlainInternal,
    kStrPlainLinkLost,
    kStrPlainFileNotFound,
    kStrPlainAccessDenied,
    kStrPlainInvalidParameter,
    kStrPlainBusy,
    kStrPlainIoDevice,
    kStrPlainConnectionRefused,
    kStrPlainUnreachable,
    kStrPlainHostNotFound,
    kStrPlainCommError,
    kStrInvalidData,
    kStrPlainInvalidData,
};

const CResourceInstance& BaseStrings();

}  // namespace basekit
