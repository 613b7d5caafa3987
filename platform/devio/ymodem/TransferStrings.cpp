#include "platform/devio/ymodem/TransferStrings.h"

namespace devio {

namespace {

constexpr basekit::StringEntry kTexts[] = {
    {kStrYmNoStart, L"The receiver did not ask for the file within %u seconds: it is not waiting in its loader"},
    {kStrYmNoAnswer, L"The receiver did not answer block %llu after %u tries"},
    {kStrYmRejected, L"The receiver refused block %llu %u times: the line is too noisy"},
    {kStrYmPeerCancelled, L"The receiver cancelled the transfer at block %llu"},
    {kStrYmFileRefused, L"The receiver took the whole file and then refused it (its own check found it wrong)"},
    {kStrYmCancelled, L"The transfer was cancelled after %llu of %llu bytes"},
    {kStrYmLinkLost, L"The link was lost at block %llu"},
    {kStrYmNoSender, L"No sender began a transfer within %u seconds"},
    {kStrYmTooManyErrors, L"More than %u bad blocks in a row: the line is too noisy"},
    {kStrYmOutOfSequence, L"A block came out of sequence after %llu bytes: the transfer was broken off"},
    {kStrYmTooLarge, L"The file is larger than %llu bytes"},
    {kStrYmSenderCancelled, L"The sender cancelled the transfer after %llu bytes"},
    {kStrImgUnreadable, L"The firmware image \"%s\" cannot be read"},
    {kStrImgEmpty, L"The file \"%s\" is empty: it is no firmware image"},
    {kStrImgTooLarge, L"The file \"%s\" holds %llu bytes, more than any firmware image (at most %llu)"},
    {kStrImgNotAnImage, L"The file \"%s\" is no firmware image (it does not start with an image header)"},
    {kStrImgUnknownFormat, L"The firmware image \"%s\" is of a later format than this program reads"},
    {kStrImgTruncatedHeader, L"The firmware image \"%s\" is cut short inside its header (%llu bytes)"},
    {kStrImgBadHeader, L"The header of the firmware image \"%s\" is damaged (its check sum does not match)"},
    {kStrImgTruncated, L"The firmware image \"%s\" is cut short: %llu of %llu bytes"},
    {kStrImgTrailingBytes, L"The firmware image \"%s\" has %llu bytes where its header announces %llu"},
    {kStrFwWrongModel, L"The image is for the model %s, but the receiver is a %s: nothing was sent"},
    {kStrFwNoLoader, L"The receiver did not enter its boot loader: it keeps its firmware %s"},
    {kStrFwNoRestart, L"The receiver took the image but did not answer within %u seconds after its restart"},
    {kStrFwWrongVersion, L"The receiver restarted with the firmware %s, not %s"},
    {kStrFwStaysInLoader, L"%s. The receiver waits in its boot loader with its firmware unchanged: try again"},
    {kStrImgBadPayload, L"The firmware image \"%s\" is damaged: the CRC-32 of its contents does not match its header"},
};

}  // namespace

const basekit::CResourceInstance& TransferStrings() {
    static const basekit::CResourceInstance instance("devio-transfer", kTexts);
    return instance;
}

basekit::ustring TransferText(unsigned id) {
    basekit::ustring s;
    s.load(TransferStrings(), id);
    return s;
}

}  // namespace devio
