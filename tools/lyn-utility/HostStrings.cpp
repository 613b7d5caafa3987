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
    {HS_TOUR_TIMEOUT, L"   %s did not finish its work in time"},
    {HS_TOUR_DONE, L"Tour finished: %d windows shown, nothing failed"},
    {HS_TOUR_FAILED, L"Tour finished with %d failure(s)"},
    {HS_REFUSED_BY_HOOK, L"The library refused to open %s"},
    {HS_LINK_SIM, L"built-in simulator"},
    {HS_LINK_SERIAL, L"serial %s at %u bit/s"},
    {HS_LINK_TCP, L"TCP %s"},
    {HS_STATUS_IDENTIFIED, L"%s s/n %s, firmware %s \u00b7 %s"},
    {HS_STATUS_UNIDENTIFIED, L"Connected to %s (receiver not identified)"},
    {HS_NOTHING_ANSWERS, L"Nothing answers at %s: check the port, the cable and the baud rate, and that the receiver is on."},
    {HS_STATUS_LOST, L"Link lost: %s. Reconnecting in %d s"},
    {HS_STATUS_SILENT, L"The receiver stopped answering: %s"},
    {HS_HEALTH, L"in %.0f B/s \u00b7 out %.0f B/s \u00b7 last byte %s \u00b7 NMEA %.1f/s: %llu decoded, %llu ignored, %llu bad \u00b7 dropped frames %llu"},
    {HS_NEVER, L"never"},
    {HS_SECONDS_AGO, L"%.1f s ago"},
    {HS_RECONNECT, L"&Reconnect"},
    {HS_WIRE_LOG, L"Record &Wire Log..."},
    {HS_WIRE_LOG_FAILED, L"The wire log %s cannot be written: check the folder and its permissions."},
    {HS_WIRE_LOG_FILTER, L"Wire logs (*.log)|*.log|All files (*.*)|*.*||"},
    {HS_NAMES_MISSING, L"not in this library (not built): %s"},
    {HS_TOUR_READINGS_FAILED, L"   %s: %d reading(s) failed"},
    {HS_CANNOT_CONNECT, L"Cannot connect to %s. %s"},
    {HS_STATUS_RECONNECTING_NOW, L"Link lost: %s. Reconnecting..."},
    {HS_MENU_TOOLS, L"&Tools"},
    {HS_MENU_EDIT, L"&Edit"},
    {HS_PROGRESS_SAMPLE, L"Counting the steps of a sample job..."},
    {HS_TOUR_PAGE, L"   page %d \u00ab%s\u00bb"},
    {HS_TOUR_WINDOW, L"   %s: %d row(s) read, %d reading(s) failed, %d screenshot(s), returned %d"},
    {HS_TOUR_ITEM, L"   %s"},
    {HS_TOUR_OPENING, L"   opening %s \u00ab%s\u00bb"},
    {HS_FOLLOWED, L"The receiver's port was reconfigured; connected again: %s."},
    {HS_WENT_BACK, L"The receiver did not answer at the new settings (%s), so the link went back to %s, where it answers. "
                   L"The receiver's port was set back to its old settings: nothing was changed."},
    {HS_WENT_BACK_UNRESTORED, L"The receiver did not answer at the new settings (%s), so the link went back to %s, where it "
                              L"answers. Its port's old settings could not be written back: open Receiver Ports and check them."},
    {HS_FOLLOW_LOST, L"The receiver answers neither at the new settings (%s) nor at the old ones (%s). The link is closed: "
                     L"check the receiver's port settings and the cable, then connect again."},
    {HS_MENU_HELP, L"&Help"},
    {HS_USERS_GUIDE, L"&User's Guide"},
    {HS_COMMAND_LINE_HELP, L"&Command-Line Help"},
    {HS_ABOUT, L"&About Lyn Utility"},
    {HS_ABOUT_TITLE, L"About %s"},
    {HS_ABOUT_LIBRARY, L"Library: %s, version %s"},
    {HS_ABOUT_QT, L"Qt %s"},
    {HS_ABOUT_LICENCE, L"Licence:"},
    {HS_GUIDE_MISSING, L"Neither the user's guide nor the README is installed: looked for %s."},
    {HS_TOUR_UNKNOWN, L"The library has no window named %s."},
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
