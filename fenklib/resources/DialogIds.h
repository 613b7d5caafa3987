#pragma once

// Numbers of the library's dialog layouts. A page with a wide-screen layout has two numbers;
// most wide ones are the normal number plus one (uikit's ChooseTemplate), but not all:
// 3099/3101, 3105/3117 and 3253/3263 must be chosen explicitly with IsWideScreen().
// Layout numbers are apart from string numbers: dialog 3100 is not string 3100.
enum FenkDialogId : unsigned {
    // Receiver status sheet pages
    IDD_STATUS_POSITION = 3099,
    IDD_STATUS_POSITION_WIDE = 3101,
    IDD_STATUS_SAT_LIST = 3100,
    IDD_STATUS_SKY_PLOT = 3102,
    IDD_STATUS_SCATTER = 3103,
    IDD_STATUS_SCATTER_WIDE = 3104,
    IDD_STATUS_POSITION_IN_TIME = 3105,
    IDD_STATUS_POSITION_IN_TIME_WIDE = 3117,
    IDD_STATUS_DATA_LINK = 3266,
    IDD_STATUS_LOGGING = 3267,
    IDD_STATUS_LOGGING_WIDE = 3268,

    // Output message dialogs
    IDD_RCV_MESSAGE = 3253,
    IDD_RCV_MESSAGE_WIDE = 3263,
    IDD_RCV_MESSAGE_LIST = 3254,
    IDD_MESSAGE_LIST = 3287,
    IDD_RCV_MESSAGE_MUL_LIST = 3414,
    IDD_RCV_MESSAGE_MUL_LIST_WIDE = 3415,
    IDD_LOGGING_MESSAGES = 5500,   // the library's number: the logging messages dialog has no layout of its own

    // Receiver ports dialog and port pages
    IDD_RECEIVER_PORTS = 3369,
    IDD_PORT_GENERAL = 3283,
    IDD_PORT_GENERAL_WIDE = 3284,
    IDD_PORT_SERIAL = 3416,
    IDD_PORT_SERIAL_WIDE = 3417,
    IDD_PORT_COM_GENERAL = 3372,
    IDD_PORT_COM_GENERAL_WIDE = 3373,
    IDD_PORT_COM_DRIVER = 3374,
    IDD_PORT_COM_DRIVER_WIDE = 3375,
    IDD_PORT_COM_ADVANCED = 3377,
    IDD_PORT_COM_ADVANCED_WIDE = 3378,
    IDR_PORT_LIST_MENU = 3380,

    // Automatic file rotation page
    IDD_EXPLORER_AFRM = 3276,
    IDD_EXPLORER_AFRM_WIDE = 3277,

    // Receiver file explorer and its dialogs (the library's own numbers)
    IDD_EXPLORER_FILES = 5700,
    IDD_EXPLORER_FILES_WIDE = 5701,
    IDD_EXPLORER_LOGS = 5702,
    IDD_EXPLORER_LOGS_WIDE = 5703,
    IDD_EXPLORER_FRONT_PANEL = 5704,
    IDD_EXPLORER_FRONT_PANEL_WIDE = 5705,
    IDD_COPY_FILE = 5706,
    IDD_FILE_SYSTEM_INFO = 5707,
    IDD_PROGRESS = 5708,

    // Channel picker
    IDD_CHANNELS_LIST = 3368,

    // Site configuration
    IDD_SITE_CONFIGURATION = 3270,
    IDD_SITE_CONFIGURATION_WIDE = 3271,
    // Coordinate editors (numbers of the site family's own)
    IDD_XYZ_COORD_EDIT = 5800,
    IDD_GEO_COORD_EDIT = 5801,
    // Automatic base set-up
    IDD_AUTO_SEED = 5830,
    IDD_AUTO_SEED_POINT_LIST = 5832,
    IDD_AUTO_SEED_NEW_POINT = 5834,

    // Receiver information (its layout is named "Receiver Info"; the number is the library's)
    IDD_RECEIVER_INFO = 5300,
    IDD_RECEIVER_INFO_WIDE = 5301,

    // Settings and controller tools: the pages have a normal and a wide layout
    IDD_SETUP_GENERAL = 5900,
    IDD_SETUP_GENERAL_WIDE = 5901,
    IDD_SETUP_MODEMS = 5902,
    IDD_SETUP_MODEMS_WIDE = 5903,
    IDD_TOOLS_POWER = 5904,
    IDD_TOOLS_POWER_WIDE = 5905,
    IDD_TOOLS_LASER = 5906,
    IDD_TOOLS_LASER_WIDE = 5907,
    IDD_TOOLS_CAMERA = 5908,
    IDD_TOOLS_CAMERA_WIDE = 5909,
    IDD_TOOLS_COMPASS = 5910,
    IDD_TOOLS_COMPASS_WIDE = 5911,
    IDD_COMPASS_CALIBRATION = 5912,
    // Receiver configuration dialogs and sheets
    IDD_RECEIVER_TOOLS = 6000,
    IDD_RAW_MEASUREMENT = 6002,
    IDD_POSITIONING_GENERAL = 6004,
    IDD_POSITIONING_PD = 6006,
    IDD_TRACKING_LOCKS = 6008,
    IDD_TRACKING_SBAS = 6010,
    IDD_RECEIVER_POWER = 6012,
    IDD_BLUETOOTH = 6014,
    IDD_VOLUME_CONTROL = 6016,
    IDD_MASTER_VOLUME = 6018,
    // Their wide-screen layouts: the normal number plus one
    IDD_RECEIVER_TOOLS_WIDE = 6001,
    IDD_RAW_MEASUREMENT_WIDE = 6003,
    IDD_POSITIONING_GENERAL_WIDE = 6005,
    IDD_POSITIONING_PD_WIDE = 6007,
    IDD_TRACKING_LOCKS_WIDE = 6009,
    IDD_TRACKING_SBAS_WIDE = 6011,
    IDD_RECEIVER_POWER_WIDE = 6013,
    IDD_BLUETOOTH_WIDE = 6015,
    IDD_VOLUME_CONTROL_WIDE = 6017,
    IDD_MASTER_VOLUME_WIDE = 6019,
    // Universal modem sheet
    IDD_MODEM_GENERAL = 6100,
    IDD_MODEM_GENERAL_WIDE = 6101,
    IDD_MODEM_RADIO = 6102,
    IDD_MODEM_RADIO_WIDE = 6103,
    IDD_MODEM_CHANNELS = 6104,
    IDD_MODEM_CHANNELS_WIDE = 6105,
    IDD_MODEM_CELLULAR = 6106,
    IDD_MODEM_CELLULAR_WIDE = 6107,
    // COM script-port dialogs
    IDD_COM_FILES = 6300,
    IDD_COM_VARIABLES = 6302,
    IDD_COM_CONTROL = 6304,
    IDD_COM_UPDATE_DRIVER = 6306,
};
