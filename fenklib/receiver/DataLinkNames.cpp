#include "fenklib/receiver/CReceiverEnumWrapper.h"

namespace devio::vok {

namespace {

struct LetterName {
    wchar_t letter;
    const wchar_t* name;
};

constexpr LetterName kFormats[] = {{L'C', L"CMR"}, {L'J', L"VOK"}, {L'R', L"RTCM 2.x"}, {L'T', L"RTCM 3.0"}};
constexpr LetterName kPorts[] = {{L'A', L"ser/a"}, {L'B', L"ser/b"}, {L'C', L"ser/c"}, {L'D', L"ser/d"},
                                 {L'E', L"tcp/a"}, {L'F', L"tcp/b"}, {L'G', L"tcp/c"}, {L'H', L"tcp/d"},
                                 {L'I', L"tcp/e"}, {L'L', L"Bluetooth"}, {L'U', L"usb/a"}};

template <size_t N>
const wchar_t* Find(const LetterName (&table)[N], wchar_t letter) {
    for (const LetterName& row : table)
        if (row.letter == letter) return row.name;
    return nullptr;
}

}  // namespace

// An unknown format letter is shown as itself; an unknown port letter as nothing.
basekit::ustring DataLinkFormatName(wchar_t letter) {
    const wchar_t* name = Find(kFormats, letter);
    return name ? basekit::ustring(name) : basekit::ustring(1, letter);
}

basekit::ustring DataLinkPortName(wchar_t letter) {
    const wchar_t* name = Find(kPorts, letter);
    return name ? basekit::ustring(name) : basekit::ustring();
}

}  // namespace devio::vok
