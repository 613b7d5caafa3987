#pragma once

// Numbers of the library's icons and bitmaps (FenkIcon, FenkBitmap). Icons and bitmaps are
// numbered apart from the string table: bitmap 3247 and string 3247 are unrelated.
enum FenkIconId : unsigned {
    IDI_RECEIVER = 3002,         // receiver information rows: identity and versions
    IDI_RAM = 3003,
    IDI_FLASH = 3004,
    IDI_BATTERY = 3005,
    IDI_CPU = 3006,
    IDI_TOOLS_DIALOG = 3102,     // icon group of the controller tools dialog
    IDI_RECEIVER_INFO = 3104,    // icon group of the receiver information dialog
};

enum FenkBitmapId : unsigned {
    IDB_SATELLITE_SYMBOLS = 3114,   // two equal halves: used, not used; green template on magenta
    IDB_MESSAGE_TREE = 3247,        // 16x16 image of the message catalogue tree
    IDB_PORT_SERIAL = 3373,         // 16x16 port images on magenta
    IDB_PORT_USB = 3374,
    IDB_PORT_TCP = 3375,
    IDB_PORT_MVP = 3376,
};

// Magenta marks the transparent pixels of every bitmap.
inline constexpr unsigned kFenkBitmapTransparent = 0xFF00FFu;
