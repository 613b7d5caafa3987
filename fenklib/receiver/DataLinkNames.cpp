#include "fenklib/receiver/CReceiverEnumWrapper.h"

namespace devio::vok {

basekit::ustring DataLinkFormatName(wchar_t letter) {
    switch (letter) {
        case L'C': return L"CMR";
        case L'J': return L"VOK";
        case L'R': return L"RTCM 2.x";
        case L'T': return L"RTCM 3.0";
        default: return basekit::ustring(1, letter);
    }
}

basekit::ustring DataLinkPortName(wchar_t letter) {
    switch (letter) {
        case L'A': return L"ser/a";
        case L'B': return L"ser/b";
        case L'C': return L"ser/c";
        case L'D': return L"ser/d";
        case L'E': return L"tcp/a";
        case L'F': return L"tcp/b";
        case L'G': return L"tcp/c";
        case L'H': return L"tcp/d";
        case L'I': return L"tcp/e";
        case L'L': return L"Bluetooth";
        case L'U': return L"usb/a";
        default: return {};
    }
}

}  // namespace devio::vok
