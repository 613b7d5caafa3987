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
    HS_LINK_SIM,
    HS_LINK_SERIAL,
    HS_LINK_TCP,
    HS_STATUS_IDENTIFIED,
    HS_STATUS_UNIDENTIFIED,
    HS_NOTHING_ANSWERS,
    HS_STATUS_LOST,
    HS_STATUS_SILENT,
    HS_HEALTH,
    HS_NEVER,
    HS_SECONDS_AGO,
    HS_RECONNECT,
    HS_WIRE_LOG,
    HS_WIRE_LOG_FAILED,
    HS_WIRE_LOG_FILTER,
    HS_NAMES_MISSING,
    HS_TOUR_READINGS_FAILED,
    HS_CANNOT_CONNECT,
    HS_STATUS_RECONNECTING_NOW,
    // Following the receiver's reconfigured port
    HS_FOLLOWED,
    HS_WENT_BACK,
    HS_WENT_BACK_UNRESTORED,
    HS_FOLLOW_LOST,
    HS_CAPTION_FIRST,   // launcher captions follow, in the order of CFenkBinding's launcher table
};

const basekit::CResourceInstance& HostStrings();
basekit::ustring HostText(unsigned id);
