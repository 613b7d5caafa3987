#include "platform/basekit/BaseStrings.h"

namespace basekit {

namespace {

constexpr StringEntry kTexts[] = {
    {kStrCommError, L"%s reported an error.\nCommand: %s\nReply: %s"},
    {kStrWinError, L"%s\n%s (error %u)"},
    {kStrCancelled, L"Operation canceled"},
    {kStrTimeout, L"Connection timed out"},
    {kStrInternal, L"Internal error"},
    {kStrLinkLost, L"Connection reset by peer"},
    {kStrUnknownError, L"Unknown error"},
    {kStrBadCommandText, L"This text cannot be sent to the receiver: \"%s\". Line breaks, other control "
                         L"characters and double quotes are not allowed, nor commas, semicolons and braces in names."},
    {kStrFileNotFound, L"No such file or directory"},
    {kStrAccessDenied, L"Permission denied"},
    {kStrInvalidParameter, L"Invalid argument"},
    {kStrBusy, L"Device or resource busy"},
    {kStrIoDevice, L"Input/output error"},
    {kStrNotConnected, L"No such device"},
    {kStrConnectionRefused, L"Connection refused"},
    {kStrNetworkUnreachable, L"Network is unreachable"},
    {kStrHostUnreachable, L"No route to host"},
    {kStrHostNotFound, L"Name or service not known"},
    {kStrPlainCancelled, L"The operation was cancelled."},
    {kStrPlainTimeout, L"The receiver did not answer in time: check the port and the baud rate."},
    {kStrPlainInternal, L"Something went wrong inside the program."},
    {kStrPlainLinkLost, L"The connection to the receiver was lost: check the cable or the network, then reconnect."},
    {kStrPlainFileNotFound, L"There is no such port or file: check its name."},
    {kStrPlainAccessDenied, L"This program may not open the port: check its permissions (for example the dialout group)."},
    {kStrPlainInvalidParameter, L"A setting is not valid: check what was entered."},
    {kStrPlainBusy, L"The port is in use by another program: close it there first."},
    {kStrPlainIoDevice, L"The device reported an input/output error: check the cable and the device."},
    {kStrPlainConnectionRefused, L"Nothing accepts connections at that address and port: check the port number and that the receiver is on."},
    {kStrPlainUnreachable, L"That address cannot be reached: check the network and the address."},
    {kStrPlainHostNotFound, L"The host name is not known: check its spelling, or use its IP address."},
    {kStrPlainCommError, L"The receiver refused the command."},
    {kStrInvalidData, L"Protocol error"},
    {kStrPlainInvalidData, L"The receiver refused the request."},
};

}  // namespace

const CResourceInstance& BaseStrings() {
    static const CResourceInstance instance("basekit", kTexts);
    return instance;
}

}  // namespace basekit
