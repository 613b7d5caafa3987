#pragma once
#include "platform/basekit/CResourceInstance.h"
#include "platform/basekit/ustring.h"

// The host program's own texts, apart from the library's table.
enum HostStringId : unsigned {
    HS_TITLE = 1,
    HS_MENU_DEVICE,
    HS_CONNECT,
    HS_DISCONNECT,
    HS_EXIT,
    HS_CONNECTION,
    HS_SIMULATOR,
    HS_SERIAL,
    HS_SERIAL_PORT,
    HS_BAUD_RATE,
    HS_TCP,
    HS_TCP_HOST,
    HS_TCP_PORT,
    HS_CONNECTED_TO,
    HS_NOT_CONNECTED,
    HS_CONNECT_FAILED,
    HS_LIBRARY_MISSING,
    HS_NAME_MISSING,
    HS_NAME_BOUND,
    HS_RECONNECTING,
    HS_TOUR_START,
    HS_TOUR_DIALOG,
    HS_TOUR_ROW,
    HS_TOUR_SHOT,
    HS_TOUR_RESULT,
    HS_TOUR_TIMEOUT,
    HS_TOUR_DONE,
    HS_TOUR_FAILED,
    HS_REFUSED_BY_HOOK,
};

const basekit::CResourceInstance& HostStrings();
basekit::ustring HostText(unsigned id);
