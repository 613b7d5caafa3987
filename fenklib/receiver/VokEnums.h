#pragma once
#include "fenklib/receiver/KeywordTable.h"

// Receiver enumerations and their keywords. Each table is one row of data below; the wrapper in
// CReceiverEnumWrapper.h does the converting. The asymmetries between reading an unknown
// keyword and writing an out-of-range value are the receiver's and are kept.
namespace devio::vok {

enum EDIONMode : int { DION_OFF, DION_LOCAL, DION_SMOOTH };
enum EReceiverBehaviorOnStartUp : int { STARTUP_OFF, STARTUP_ON, STARTUP_ALWAYS };
enum EButtonDynamicMode : int { BUTTON_STATIC, BUTTON_DYNAMIC };
enum EFnKeyMode : int { FNKEY_LED, FNKEY_DYN };
enum ERTKDynamic : int { RTK_STATIC, RTK_KINEMATIC, RTK_STOPANDGO };
enum EMotionState : int { MOTION_UNKNOWN, MOTION_STATIC, MOTION_KINEMATIC };
enum EAmbiguityFixingLevel : int { AFL_LOW, AFL_MEDIUM, AFL_HIGH };
enum EPositionOutputMode : int { POSOUT_EXTRAP, POSOUT_DELAY };
enum EAntiJamming : int { AJM_GPS, AJM_GLO, AJM_L1, AJM_L2, AJM_AUTO, AJM_OFF, AJM_MANUAL };
enum ESlotState : int { SLOT_N, SLOT_Y, SLOT_ALWAYS };
enum EIonoCorrections : int { IONO_0, IONO_1, IONO_2 };
enum EPosComputationMode : int { POS_SP, POS_CD, POS_PF, POS_PD };
enum EAntenna : int { ANT_INT, ANT_EXT, ANT_AUTO };
enum EByteSize : int { BITS_5, BITS_6, BITS_7, BITS_8 };
enum EParity : int { PARITY_N, PARITY_ODD, PARITY_EVEN, PARITY_FODD, PARITY_FEVEN };
enum EStopBits : int { STOPS_1, STOPS_2 };
enum ERtsControl : int { RTS_OFF, RTS_ON };
enum EBaudRate : int {
    BAUD_300, BAUD_600, BAUD_1200, BAUD_2400, BAUD_4800, BAUD_9600, BAUD_19200, BAUD_38400,
    BAUD_57600, BAUD_115200, BAUD_153600, BAUD_230400, BAUD_460800, BAUD_921600
};
enum EModemMode : int { MODEM_OFF, MODEM_MASTER, MODEM_SLAVE, MODEM_GPRS };
enum EIMode : int { IMODE_NONE, IMODE_CMD, IMODE_ECHO, IMODE_RTCM, IMODE_RTCM3, IMODE_CMR, IMODE_QLS,
                    IMODE_OMNI, IMODE_DTP, IMODE_TERM };
enum EModem : int { MODEM_A, MODEM_B, MODEM_C, MODEM_D };
enum ECom : int { COM_A, COM_B, COM_C, COM_D };
// "pwr/switch/%d": the receiver's own words, not an enumeration of the library's tables.
enum EPowerSwitch : int { PWR_SWITCH_ON, PWR_SWITCH_OFF, PWR_SWITCH_AUTO };
enum EDev : int {
    DEV_NULL, CUR_TERM, DEV_SER_A, DEV_SER_B, DEV_SER_C, DEV_SER_D, DEV_USB_A,
    DEV_TCP_A, DEV_TCP_B, DEV_TCP_C, DEV_TCP_D, DEV_TCP_E,
    DEV_MVP_A, DEV_MVP_B, DEV_MVP_C, DEV_MVP_D, CUR_FILE_A, CUR_FILE_B
};

namespace keywords {
inline constexpr const wchar_t* kDIONMode[] = {L"off", L"local", L"smooth"};
inline constexpr const wchar_t* kStartUp[] = {L"off", L"on", L"always"};
inline constexpr const wchar_t* kButtonDynamic[] = {L"static", L"dynamic"};
inline constexpr const wchar_t* kFnKey[] = {L"led", L"dyn"};
inline constexpr const wchar_t* kRTKDynamic[] = {L"static", L"kinematic", L"stopandgo"};
inline constexpr const wchar_t* kMotion[] = {L"unknown", L"static", L"kinematic"};
inline constexpr const wchar_t* kAmbiguity[] = {L"low", L"medium", L"high"};
inline constexpr const wchar_t* kPosOutput[] = {L"extrap", L"delay"};
inline constexpr const wchar_t* kAntiJamming[] = {L"gps", L"glo", L"l1", L"l2", L"auto", L"off", L"manual"};
inline constexpr const wchar_t* kSlot[] = {L"n", L"y", L"always"};
inline constexpr const wchar_t* kIono[] = {L"0", L"1", L"2"};
inline constexpr const wchar_t* kPosMode[] = {L"sp", L"cd", L"pf", L"pd"};
inline constexpr const wchar_t* kAntenna[] = {L"int", L"ext", L"auto"};
inline constexpr const wchar_t* kByteSize[] = {L"5", L"6", L"7", L"8"};
inline constexpr const wchar_t* kParity[] = {L"N", L"odd", L"even", L"fodd", L"feven"};
inline constexpr const wchar_t* kStopBits[] = {L"1", L"2"};
inline constexpr const wchar_t* kRtsCts[] = {L"off", L"on"};
inline constexpr const wchar_t* kBaudRate[] = {L"300", L"600", L"1200", L"2400", L"4800", L"9600", L"19200",
                                               L"38400", L"57600", L"115200", L"153600", L"230400",
                                               L"460800", L"921600"};
inline constexpr const wchar_t* kModemMode[] = {L"off", L"master", L"slave", L"gprs"};
inline constexpr const wchar_t* kIMode[] = {L"none", L"cmd", L"echo", L"rtcm", L"rtcm3", L"cmr", L"qls",
                                            L"omni", L"dtp", L"term"};
inline constexpr const wchar_t* kModem[] = {L"modem/a", L"modem/b", L"modem/c", L"modem/d"};
inline constexpr const wchar_t* kCom[] = {L"com/a", L"com/b", L"com/c", L"com/d"};
inline constexpr const wchar_t* kPowerSwitch[] = {L"on", L"off", L"auto"};
inline constexpr const wchar_t* kDev[] = {
    L"dev/null", L"cur/term", L"dev/ser/a", L"dev/ser/b", L"dev/ser/c", L"dev/ser/d", L"dev/usb/a",
    L"dev/tcp/a", L"dev/tcp/b", L"dev/tcp/c", L"dev/tcp/d", L"dev/tcp/e",
    L"dev/mvp/a", L"dev/mvp/b", L"dev/mvp/c", L"dev/mvp/d", L"cur/file/a", L"cur/file/b"};
}  // namespace keywords

#define FENK_KEYWORD_TABLE(Enum, n, words, match, outOfRangeRow, fixedUnknown)              \
    template <>                                                                             \
    struct KeywordTableOf<Enum> {                                                           \
        static constexpr Enum kDefault = static_cast<Enum>(n);                              \
        static constexpr KeywordTable kTable{keywords::words, KeywordMatch::match, outOfRangeRow, fixedUnknown}; \
    };

//                 enumeration                 N  keywords         match      out of range  unknown
FENK_KEYWORD_TABLE(EDIONMode,                  0, kDIONMode,       Exact,     0,            -1)
FENK_KEYWORD_TABLE(EReceiverBehaviorOnStartUp, 0, kStartUp,        Exact,     0,            -1)
FENK_KEYWORD_TABLE(EButtonDynamicMode,         0, kButtonDynamic,  Exact,     0,            -1)
FENK_KEYWORD_TABLE(EFnKeyMode,                 0, kFnKey,          Exact,     0,            -1)
FENK_KEYWORD_TABLE(ERTKDynamic,                0, kRTKDynamic,     Exact,     0,            -1)
FENK_KEYWORD_TABLE(EMotionState,               0, kMotion,         Exact,     0,            -1)
FENK_KEYWORD_TABLE(EAmbiguityFixingLevel,      1, kAmbiguity,      Exact,     1,            -1)
FENK_KEYWORD_TABLE(EPositionOutputMode,        1, kPosOutput,      Exact,     0,            -1)
FENK_KEYWORD_TABLE(EAntiJamming,               4, kAntiJamming,    Exact,     0,            -1)
FENK_KEYWORD_TABLE(ESlotState,                 0, kSlot,           Exact,     0,            -1)
FENK_KEYWORD_TABLE(EIonoCorrections,           0, kIono,           Integer,   0,            -1)
FENK_KEYWORD_TABLE(EPosComputationMode,        0, kPosMode,        Exact,     0,            -1)
FENK_KEYWORD_TABLE(EAntenna,                   2, kAntenna,        Exact,     2,            -1)
FENK_KEYWORD_TABLE(EByteSize,                  3, kByteSize,       Exact,     3,            -1)
FENK_KEYWORD_TABLE(EParity,                    0, kParity,         Exact,     0,            -1)
FENK_KEYWORD_TABLE(EStopBits,                  0, kStopBits,       Exact,     0,            -1)
FENK_KEYWORD_TABLE(ERtsControl,                0, kRtsCts,         Exact,     0,            -1)
FENK_KEYWORD_TABLE(EBaudRate,                  9, kBaudRate,       Exact,     9,            -1)
FENK_KEYWORD_TABLE(EModemMode,                 0, kModemMode,      Exact,     0,            0)
FENK_KEYWORD_TABLE(EIMode,                     0, kIMode,          Exact,     0,            0)
FENK_KEYWORD_TABLE(EModem,                     0, kModem,          Substring, -1,           -1)
FENK_KEYWORD_TABLE(ECom,                       0, kCom,            Substring, -1,           -1)
FENK_KEYWORD_TABLE(EPowerSwitch,               0, kPowerSwitch,    Exact,     0,            -1)
FENK_KEYWORD_TABLE(EDev,                       0, kDev,            Substring, -1,           -1)

#undef FENK_KEYWORD_TABLE

}  // namespace devio::vok
