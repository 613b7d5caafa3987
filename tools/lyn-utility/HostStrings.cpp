#include "tools/lyn-utility/HostStrings.h"

namespace {

constexpr basekit::StringEntry kTexts[] = {
    {HS_TITLE, L"Lyn Utility"},
    {HS_MENU_DEVICE, L"&Device"},
    {HS_CONNECT, L"&Connect..."},
    {HS_DISCONNECT, L"&Disconnect"},
    {HS_EXIT, L"E&xit"},
    {HS_CONNECTION, L"Connection"},
    {HS_SIMULATOR, L"Built-in simulated receiver"},
    {HS_SERIAL, L"Serial port"},
    {HS_SERIAL_PORT, L"Port:"},
    {HS_BAUD_RATE, L"Baud rate:"},
    {HS_TCP, L"TCP"},
    {HS_TCP_HOST, L"Host:"},
    {HS_TCP_PORT, L"Port:"},
    {HS_CONNECTED_TO, L"Connected to %s"},
    {HS_NOT_CONNECTED, L"Not connected"},
    {HS_CONNECT_FAILED, L"Cannot connect to %s:\n%s"},
    {HS_LIBRARY_MISSING, L"The library %s cannot be loaded: %s"},
    {HS_NAME_MISSING, L"not in the library: %s"},
    {HS_NAME_BOUND, L"bound: %s"},
    {HS_RECONNECTING, L"The receiver's port was reconfigured; reconnecting to %s"},
    {HS_TOUR_START, L"Headless tour: receiver %s, screenshots in %s"},
    {HS_TOUR_DIALOG, L"== %s"},
    {HS_TOUR_ROW, L"   %s: %s"},
    {HS_TOUR_SHOT, L"   screenshot %s"},
    {HS_TOUR_RESULT, L"   %s returned %d"},
    {HS_TOUR_TIMEOUT, L"   %s did not finish its work in time"},
    {HS_TOUR_DONE, L"Tour finished: %d windows shown, nothing failed"},
    {HS_TOUR_FAILED, L"Tour finished with %d failure(s)"},
    {HS_REFUSED_BY_HOOK, L"The library refused to open %s"},
};

}  // namespace

const basekit::CResourceInstance& HostStrings() {
    static const basekit::CResourceInstance instance("lyn-utility", kTexts);
    return instance;
}

basekit::ustring HostText(unsigned id) {
    basekit::ustring s;
    s.load(HostStrings(), id);
    return s;
}
