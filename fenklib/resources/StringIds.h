#pragma once

// Numbers of the library's string-table entries (fenklib/resources/StringTable.cpp).
// Below 5000 the numbers are the ones the library has always used and hosts may rely on;
// from 5000 on they are this library's own, grouped by the dialog that shows them.
enum FenkStringId : unsigned {
    // Application texts
    IDS_APP_VERSION = 1,                       // "Version 2.3 [September 9, 2011]"
    IDS_APP_NAME = 3368,                       // "Lyn Utility"

    // Receiver information dialog
    IDS_COL_NAME = 3001,
    IDS_COL_VALUE = 3002,
    IDS_INFO_TXT = 3017,                       // default file name of a saved listing
    IDS_TXT_EXTENSION = 3018,
    IDS_TEXT_FILE_FILTER = 3019,
    IDS_FMT_POWER_BOARD_VERSION = 3139,        // "hw=%d, fw=%s"
    IDS_SAVING_RECEIVER_SETTINGS = 3435,
    IDS_CREATED_BY = 3440,

    // Satellite systems
    IDS_SYSTEM_GPS = 3026,
    IDS_SYSTEM_RESERVED = 3100,
    IDS_SYSTEM_UNUSED = 3166,
    IDS_SYSTEM_GLO = 3167,
    IDS_SYSTEM_SBAS = 3168,
    IDS_SYSTEM_QZSS = 3462,

    // Status sheet
    IDS_STATUS = 3152,
    IDS_CLOSE = 3153,
    IDS_STOP_REALTIME_LOGGING = 3436,

    // Hemispheres and units of position texts; IDS_NORTH is also the sky plot's north mark
    IDS_NORTH = 3169,
    IDS_SOUTH = 3170,
    IDS_EAST = 3171,
    IDS_WEST = 3172,
    IDS_METRES = 3220,

    // Satellite navigation status, named by status code (the numbers are not in code order)
    IDS_NAV_STATUS_00 = 3177,
    IDS_NAV_STATUS_01 = 3178,
    IDS_NAV_STATUS_02 = 3179,
    IDS_NAV_STATUS_03 = 3180,
    IDS_NAV_STATUS_04 = 3181,
    IDS_NAV_STATUS_05 = 3182,
    IDS_NAV_STATUS_06 = 3183,
    IDS_NAV_STATUS_07 = 3184,
    IDS_NAV_STATUS_08 = 3185,
    IDS_NAV_STATUS_09 = 3186,
    IDS_NAV_STATUS_10 = 3187,
    IDS_NAV_STATUS_11 = 3188,
    IDS_NAV_STATUS_12 = 3189,
    IDS_NAV_STATUS_13 = 3190,
    IDS_NAV_STATUS_14 = 3191,
    IDS_NAV_STATUS_15 = 3192,
    IDS_NAV_STATUS_16 = 3193,
    IDS_NAV_STATUS_17 = 3194,
    IDS_NAV_STATUS_18 = 3195,
    IDS_NAV_STATUS_19 = 3196,
    IDS_NAV_STATUS_20 = 3197,
    IDS_NAV_STATUS_22 = 3199,
    IDS_NAV_STATUS_23 = 3200,
    IDS_NAV_STATUS_24 = 3461,
    IDS_NAV_STATUS_26 = 3203,
    IDS_NAV_STATUS_27 = 3204,
    IDS_NAV_STATUS_28 = 3205,
    IDS_NAV_STATUS_29 = 3206,
    IDS_NAV_STATUS_30 = 3207,
    IDS_NAV_STATUS_31 = 3208,
    IDS_NAV_STATUS_32 = 3198,
    IDS_NAV_STATUS_51 = 3201,
    IDS_NAV_STATUS_52 = 3202,
    IDS_NAV_STATUS_53 = 3209,
    IDS_NAV_STATUS_54 = 3210,
    IDS_NAV_STATUS_55 = 3211,
    IDS_NAV_STATUS_56 = 3212,
    IDS_NAV_STATUS_63 = 3213,

    // Port hooks: an internal device is unpowered and may not be switched on by the library
    IDS_UNPOWERED_RECEIVER_ZED = 3214,
    IDS_UNPOWERED_MODEM = 3247,
    IDS_UNPOWERED_RECEIVER_BACKPACK = 3464,

    // ---- the library's own numbers ----

    // Power rules, library settings
    IDS_POWER_ON_CONNECT_RECEIVER = 5000,
    IDS_POWER_OFF_DISCONNECT_RECEIVER = 5001,
    IDS_POWER_OFF_ON_EXIT = 5002,
    IDS_POWER_ON_CONNECT_MODEM = 5003,
    IDS_POWER_OFF_DISCONNECT_MODEM = 5004,
    IDS_COORD_GEODETIC = 5005,
    IDS_COORD_CARTESIAN = 5006,
    IDS_GENERAL = 5007,                        // settings page and port page title
    IDS_COORDINATE_SYSTEM = 5008,
    IDS_MODEMS = 5009,
    IDS_MODEM_DETECTION_MODE = 5010,
    IDS_AUTODETECTION = 5011,
    IDS_MANUAL_SELECTION = 5012,
    IDS_OK = 5013,
    IDS_CANCEL = 5014,
    IDS_FMT_GEO_ANGLE = 5015,                  // "%02d°%02d'%.4f''%s; "
    IDS_FMT_GEO_HEIGHT = 5016,                 // "%.2f%s"

    // Status sheet pages and plots
    IDS_PAGE_POSITION = 5020,
    IDS_PAGE_DATA_LINK = 5021,
    IDS_PAGE_SVS_LIST = 5022,
    IDS_PAGE_SKY_PLOT = 5023,
    IDS_PAGE_SCATTER = 5024,
    IDS_PAGE_POSITION_IN_TIME = 5025,
    IDS_PAGE_POS_IN_TIME = 5026,               // wide-screen title
    IDS_PAGE_LOGGING = 5027,
    IDS_PAGE_LOG = 5028,                       // wide-screen title
    IDS_FMT_ELEVATION_RING = 5029,             // "%d°"
    IDS_DATALINK_CMR = 5030,
    IDS_DATALINK_VOK = 5031,
    IDS_DATALINK_RTCM2 = 5032,
    IDS_DATALINK_RTCM3 = 5033,
    IDS_DATALINK_BLUETOOTH = 5034,

    // Receiver information dialog
    IDS_RECEIVER_INFO = 5040,
    IDS_REFRESH = 5041,
    IDS_SAVE_TO_FILE = 5042,
    IDS_ROW_MODEL = 5043,
    IDS_ROW_ID = 5044,
    IDS_ROW_SERIAL_NUMBER = 5045,
    IDS_ROW_BOARD_VERSION = 5046,
    IDS_ROW_FIRMWARE_VERSION = 5047,
    IDS_ROW_HARDWARE_VERSION = 5048,
    IDS_ROW_AUX_FIRMWARE_VERSION = 5049,
    IDS_ROW_AUX_HARDWARE_VERSION = 5050,
    IDS_ROW_POWER_BOARD_VERSION = 5051,
    IDS_ROW_VENDOR = 5052,
    IDS_ROW_CPU_FREQ = 5053,
    IDS_ROW_RAM_SIZE = 5054,
    IDS_ROW_FLASH_TOTAL = 5055,
    IDS_ROW_FLASH_AVAILABLE = 5056,
    IDS_ROW_FLASH_FREE = 5057,
    IDS_ROW_BATTERY_A = 5058,
    IDS_ROW_BATTERY_B = 5059,
    IDS_ROW_CHARGER = 5060,
    IDS_ROW_POWER_SUPPLY = 5061,
    IDS_ROW_POWER_BOARD = 5062,

    // Receiver ports dialog and port sheets
    IDS_RECEIVER_PORTS = 5070,
    IDS_PORT_GROUP_SERIAL = 5071,              // also the serial page's title
    IDS_PORT_GROUP_USB = 5072,
    IDS_PORT_GROUP_TCP = 5073,
    IDS_PORT_GROUP_MVP = 5074,
    IDS_PORT_GROUP_COM = 5075,
    IDS_PROPERTIES = 5076,
    IDS_PAGE_DRIVER = 5077,
    IDS_PAGE_ADVANCED = 5078,
    IDS_INPUT_MODE = 5079,
    IDS_OUTPUT_MODE = 5080,
    IDS_PERIOD_S = 5081,
    IDS_MESSAGES = 5082,                       // button and list dialog title
    IDS_BAUD_RATE = 5083,
    IDS_BYTE_SIZE = 5084,
    IDS_STOP_BITS = 5085,
    IDS_PARITY = 5086,
    IDS_RTS_CTS = 5087,
    IDS_DEVICE_ID = 5088,
    IDS_DRIVER_NAME = 5089,
    IDS_DRIVER_VERSION = 5090,
    IDS_DRIVER_DESCRIPTION = 5091,
    IDS_DRIVER_DETAILS = 5092,
    IDS_UPDATE_DRIVER = 5093,
    IDS_UNINSTALL = 5094,
    IDS_NOTE_DRIVER_DETAILS = 5095,
    IDS_NOTE_UPDATE_DRIVER = 5096,
    IDS_NOTE_UNINSTALL = 5097,
    IDS_VARIABLES = 5098,
    IDS_CONTROL = 5099,
    IDS_NOTE_VARIABLES = 5100,
    IDS_NOTE_CONTROL = 5101,
    IDS_OUTPUT_MODE_NONE = 5102,
    IDS_OUTPUT_MODE_USER_DEFINED = 5103,
    IDS_CONFIRM_DELETE_DRIVER = 5104,

    // Output message dialogs
    IDS_FLAG_OUT = 5130,
    IDS_FLAG_CHANGE = 5131,
    IDS_FLAG_OUT_ON_ADD = 5132,
    IDS_FLAG_NOTENA = 5133,
    IDS_FLAG_FIX_PER = 5134,
    IDS_FLAG_FIX_PH = 5135,
    IDS_FLAG_FIX_CNT = 5136,
    IDS_FLAG_FIX_FL = 5137,
    IDS_RECEIVER_MESSAGE_LIST = 5138,
    IDS_COL_MESSAGE = 5139,
    IDS_COL_PERIOD = 5140,
    IDS_COL_PHASE = 5141,
    IDS_COL_COUNT = 5142,
    IDS_COL_FLAGS = 5143,
    IDS_COL_DESCRIPTION = 5144,
    IDS_CONFIRM_DELETION = 5145,
    IDS_RECEIVER_MESSAGE = 5146,
    IDS_BROWSE = 5147,                         // "..."
    IDS_PHASE_S = 5148,
    IDS_COUNT = 5149,
    IDS_FLAGS = 5150,
    IDS_SCHEDULE_GROUP = 5151,
    IDS_MENU_ADD = 5152,
    IDS_MENU_EDIT = 5153,
    IDS_MENU_DELETE = 5154,

    // Automatic file rotation page
    IDS_PAGE_AFRM = 5170,
    IDS_ENABLE_AFRM = 5171,
    IDS_REMOVE_OLD_FILES = 5172,
    IDS_ROTATION_PERIOD = 5173,
    IDS_ROTATION_PHASE = 5174,
    IDS_ROTATION_COUNTER = 5175,
    IDS_ROTATION_RUNNING_COUNTER = 5176,
    IDS_FORCE_FILE_ROTATION = 5177,

    // Channel picker
    IDS_CHANNELS = 5190,

    // Site configuration dialog
    IDS_SITE_CONFIGURATION = 5200,
    IDS_SITE_NAME = 5201,
    IDS_DESCRIPTION_LABEL = 5202,
    IDS_SITE_PARAMETERS = 5203,
    IDS_ANTENNA_TYPE = 5204,
    IDS_HEIGHT_M = 5205,
    IDS_SLANT = 5206,
    IDS_STATIC = 5207,
    IDS_DYNAMIC = 5208,
    IDS_DYNAMICS = 5209,
    IDS_ANTENNA_PARAMETERS = 5210,

    // Receiver information: a row whose reading failed
    IDS_ROW_READ_FAILED = 5300,
    IDS_SETTINGS_SET_ASIDE = 5301,
    IDS_SAVED_TO = 5302,
    IDS_COPY_VALUE = 5303,
    IDS_STALE_SINCE = 5304,

    // Receiver configuration sheets: receiver tools
    IDS_RECEIVER_TOOLS = 6000,
    IDS_INIT_PARAMETERS = 6001,
    IDS_INIT_PARAMETERS_HINT = 6002,
    IDS_INIT_NVRAM = 6003,
    IDS_INIT_NVRAM_HINT = 6004,
    IDS_RESET_RECEIVER = 6005,
    IDS_RESET_RECEIVER_HINT = 6006,
    IDS_CONFIRM_INIT_PARAMETERS = 6007,
    IDS_CONFIRM_INIT_NVRAM = 6008,
    IDS_CONFIRM_RESET_RECEIVER = 6009,
    IDS_WAITING_FOR_RECEIVER = 6010,

    // Receiver configuration sheets: raw measurements
    IDS_RAW_MEASUREMENT = 6020,
    IDS_RAW_INTERVAL_MS = 6021,
    IDS_RAW_CLP_STATIC = 6022,
    IDS_MULTIPATH_GROUP = 6023,
    IDS_MP_CODE = 6024,
    IDS_MP_CARRIER = 6025,
    IDS_READING_SETTINGS = 6026,

    // Each window family numbers its unnumbered texts in its own hundred, so that families
    // added side by side never collide: status 5400, output messages 5500, ports 5600,
    // receiver files 5700, site and coordinates 5800, settings and controller tools 5900,
    // receiver configuration sheets 6000, modems and channels 6100.
};
