#pragma once
#include "platform/basekit/CResourceInstance.h"
#include "platform/basekit/ustring.h"

namespace devio {

// Why a YMODEM transfer ended early, or why a file is no usable firmware image, in words.
enum TransferStringId : unsigned {
    kStrYmNoStart = 1,
    kStrYmNoAnswer,
    kStrYmRejected,
    kStrYmPeerCancelled,
    kStrYmFileRefused,
    kStrYmCancelled,
    kStrYmLinkLost,
    kStrYmNoSender,
    kStrYmTooManyErrors,
    kStrYmOutOfSequence,
    kStrYmTooLarge,
    kStrYmSenderCancelled,
    // Firmware images.
    kStrImgUnreadable = 20,
    kStrImgEmpty,
    kStrImgTooLarge,
    kStrImgNotAnImage,
    kStrImgUnknownFormat,
    kStrImgTruncatedHeader,
    kStrImgBadHeader,
    kStrImgTruncated,
    kStrImgTrailingBytes,
    kStrImgBadPayload,
    // Firmware uploads.
    kStrFwWrongModel = 40,
    kStrFwNoLoader,
    kStrFwNoRestart,
    kStrFwWrongVersion,
    kStrFwStaysInLoader,
};

const basekit::CResourceInstance& TransferStrings();
basekit::ustring TransferText(unsigned id);

}  // namespace devio
